#include "Rendering/SparseImage.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessara {
namespace {

bool isAll(const QImage &image, int firstRow, int rows, uchar value)
{
    const uchar *begin = image.constScanLine(firstRow);
    return std::all_of(begin, begin + rows * image.bytesPerLine(),
                       [value](uchar byte) { return byte == value; });
}

TEST(SparseImage, IsTransparentAtFirst)
{
    for (const QImage::Format format :
         {QImage::Format_ARGB32_Premultiplied, QImage::Format_Alpha8}) {
        const SparseImage sparse({332, 77}, format);

        EXPECT_EQ(sparse.image().size(), QSize(332, 77));
        EXPECT_EQ(sparse.image().format(), format);
        EXPECT_TRUE(isAll(sparse.image(), 0, 77, 0));
    }
}

TEST(SparseImage, KeepsWhatLiesBesideTheRowsGivenBack)
{
    SparseImage sparse({504, 300}, QImage::Format_Alpha8);
    sparse.image().fill(200);

    sparse.giveBack(100, 150);

    EXPECT_TRUE(isAll(sparse.image(), 0, 100, 200));
    EXPECT_TRUE(isAll(sparse.image(), 250, 50, 200));
    EXPECT_FALSE(isAll(sparse.image(), 100, 150, 200));
    sparse.giveBack(0, 0);
    EXPECT_TRUE(isAll(sparse.image(), 0, 100, 200));
}

TEST(SparseImage, TakesNoMemoryForWhatIsNotTouched)
{
    SparseImage huge({30000, 30000}, QImage::Format_ARGB32_Premultiplied);

    huge.image().setPixel(29999, 29999, 0xff123456);

    EXPECT_EQ(huge.image().pixel(29999, 29999), 0xff123456);
    EXPECT_EQ(huge.image().pixel(0, 0), 0u);
}

} // namespace
} // namespace tessara
