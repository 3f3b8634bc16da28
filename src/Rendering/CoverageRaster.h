// Polygons as 8-bit coverage, for outlines of many short lines.
#pragma once

#include <QRect>

#include <vector>

namespace tessara {

/// Adds up what lines cover of each pixel, in 256ths across and down, by the area that lies beside
/// them: the same sums, and the same remainders of each division, as the platform's painter makes,
/// so that the result is its own to the byte. A painter keeps what a row crosses in lists; here it
/// lies in rows of memory, of which only what was touched is looked at.
class CoverageRaster
{
public:
    /// Only `pixels` are seen of what is added from now on. Only while it is empty; memory is kept
    /// for the next time.
    void begin(const QRect &pixels);

    /// In 64ths of a pixel.
    struct Point
    {
        int x = 0;
        int y = 0;
    };
    /// Closed by itself.
    void addPolygon(const Point *points, std::size_t count);

    enum class Rule { winding, oddEven };
    /// Writes all rows of coverage, and is empty again.
    void takeRows(Rule rule, uchar *rows, qsizetype rowBytes);

private:
    struct Cell
    {
        int cover = 0;
        int area = 0;
    };
    static constexpr int blockWidth = 16; // px

    void addLine(int fromX, int fromY, int toX, int toY);
    void addInRow(int row, int fromX, int fromY, int toX, int toY);
    template <Rule rule>
    void takeRow(int row, uchar *target);

    QRect m_pixels;
    int m_blocks = 0; // a row
    std::vector<Cell> m_cells;
    std::vector<uchar> m_touched; // blocks
};

} // namespace tessara
