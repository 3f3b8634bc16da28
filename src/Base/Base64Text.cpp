#include "Base/Base64Text.h"

#include <array>

namespace tessara {

namespace {

constexpr quint32 notInAlphabet = 1u << 31;

constexpr std::array<quint32, 256> makeValues()
{
    std::array<quint32, 256> values{};
    values.fill(notInAlphabet);
    constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (quint32 value = 0; value < 64; ++value)
        values[quint8(alphabet[value])] = value;
    return values;
}
constexpr std::array<quint32, 256> values = makeValues();

quint32 valueOf(QChar character)
{
    const char16_t code = character.unicode();
    return code < values.size() ? values[code] : notInAlphabet;
}

} // namespace

std::optional<QByteArray> bytesFromBase64(QStringView text)
{
    constexpr qsizetype group = 4;
    if (text.size() % group != 0)
        return std::nullopt;
    const qsizetype padding = text.endsWith(u"==") ? 2 : text.endsWith(u'=') ? 1 : 0;
    QByteArray bytes(text.size() / group * 3, Qt::Uninitialized);
    auto *target = reinterpret_cast<quint8 *>(bytes.data());
    const qsizetype characters = text.size() - padding;
    const QChar *source = text.data();
    quint32 seen = 0;
    const auto at = [&](qsizetype index) {
        return index < characters ? valueOf(source[index]) : 0;
    };
    for (qsizetype index = 0; index < text.size(); index += group) {
        const quint32 word =
            at(index) << 18 | at(index + 1) << 12 | at(index + 2) << 6 | at(index + 3);
        seen |= at(index) | at(index + 1) | at(index + 2) | at(index + 3);
        *target++ = quint8(word >> 16);
        *target++ = quint8(word >> 8);
        *target++ = quint8(word);
    }
    if ((seen & notInAlphabet) != 0)
        return std::nullopt;
    bytes.chop(padding);
    return bytes;
}

} // namespace tessara
