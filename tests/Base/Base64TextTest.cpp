#include "Base/Base64Text.h"

#include <QString>

#include <gtest/gtest.h>

namespace tessara {
namespace {

TEST(Base64TextTest, BytesOfAnyLengthComeBack)
{
    QByteArray bytes;
    for (int length = 0; length < 300; ++length) {
        EXPECT_EQ(bytesFromBase64(QString::fromLatin1(bytes.toBase64())), bytes) << length;
        bytes.append(char(length * 37 + length / 7));
    }
}

TEST(Base64TextTest, AnyOtherTextGivesNothing)
{
    for (const char16_t *text :
         {u"A", u"AB", u"ABC", u"ABCDE", u"AB=C", u"=ABC", u"A===", u"====", u"AB D", u"AB\nCDEF",
          u"ABC\u0e01", u"ABC\u0141", u"AB-_", u"QUJD\n"})
        EXPECT_EQ(bytesFromBase64(QStringView(text)), std::nullopt)
            << QString::fromUtf16(text).toStdString();
}

TEST(Base64TextTest, NoTextIsNoBytes)
{
    EXPECT_EQ(bytesFromBase64(u""), QByteArray());
}

} // namespace
} // namespace tessara
