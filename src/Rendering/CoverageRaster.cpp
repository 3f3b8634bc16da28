#include "Rendering/CoverageRaster.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace tessara {

namespace {

constexpr int one = 256; // parts of a pixel

int pixelOf(int place)
{
    return place >> 8;
}

struct Division
{
    int quotient;
    int remainder; // never below 0
};

Division divided(qint64 value, int by)
{
    const bool isSmall = value == int(value); // nearly always, and much cheaper
    int quotient = isSmall ? int(value) / by : int(value / by);
    int remainder = isSmall ? int(value) - quotient * by : int(value - qint64(quotient) * by);
    if (remainder < 0) {
        --quotient;
        remainder += by;
    }
    return {quotient, remainder};
}

/// Steps of equal size whose sum is exact, as far as whole numbers go.
class Steps
{
public:
    Steps(qint64 total, int by, int remainder)
        : m_step(divided(total, by))
        , m_by(by)
        , m_remainder(remainder - by)
    {
    }
    int next()
    {
        m_remainder += m_step.remainder;
        if (m_remainder < 0)
            return m_step.quotient;
        m_remainder -= m_by;
        return m_step.quotient + 1;
    }

private:
    Division m_step;
    int m_by;
    int m_remainder;
};

template <CoverageRaster::Rule rule>
int coverageOf(int area)
{
    int coverage = std::abs(area >> 9);
    if constexpr (rule == CoverageRaster::Rule::oddEven) {
        coverage &= 511;
        coverage = std::min(coverage, 512 - coverage);
    }
    return std::min(coverage, 255);
}

} // namespace

void CoverageRaster::begin(const QRect &pixels)
{
    m_pixels = pixels;
    m_blocks = (pixels.width() + blockWidth - 1) / blockWidth;
    const auto blocks = std::size_t(m_blocks) * std::size_t(pixels.height());
    if (blocks > m_touched.size()) {
        m_touched.resize(blocks);
        m_cells.resize(blocks * blockWidth);
    }
}

void CoverageRaster::addPolygon(const Point *points, std::size_t count)
{
    const auto place = [](int sixtyFourths) { return sixtyFourths * 4; };
    for (std::size_t index = 0; index < count; ++index) {
        const Point &from = points[index];
        const Point &to = points[index + 1 < count ? index + 1 : 0];
        addLine(place(from.x), place(from.y), place(to.x), place(to.y));
    }
}

void CoverageRaster::addLine(int fromX, int fromY, int toX, int toY)
{
    const int lastRow = pixelOf(toY);
    int row = pixelOf(fromY);
    if (std::min(row, lastRow) > m_pixels.bottom() || std::max(row, lastRow) < m_pixels.top())
        return;
    int partY = fromY - row * one;
    const int lastPartY = toY - lastRow * one;
    if (row == lastRow) {
        addInRow(row, fromX, partY, toX, lastPartY);
        return;
    }
    const bool goesDown = toY > fromY;
    const int edge = goesDown ? one : 0; // where a row is left
    const int step = goesDown ? 1 : -1;
    const int height = std::abs(toY - fromY);
    const qint64 width = toX - fromX;
    const Division first = divided(width * (goesDown ? one - partY : partY), height);
    int x = fromX + first.quotient;
    addInRow(row, fromX, partY, x, edge);
    row += step;
    if (row != lastRow) {
        Steps steps(width * one, height, first.remainder);
        for (; row != lastRow; row += step) {
            const int next = x + steps.next();
            addInRow(row, x, one - edge, next, edge);
            x = next;
        }
    }
    addInRow(row, x, one - edge, toX, lastPartY);
}

void CoverageRaster::addInRow(int row, int fromX, int fromY, int toX, int toY)
{
    if (fromY == toY || row < m_pixels.top() || row > m_pixels.bottom())
        return;
    const auto firstBlock = std::size_t(row - m_pixels.top()) * std::size_t(m_blocks);
    Cell *const cells = m_cells.data() + firstBlock * blockWidth;
    uchar *const touched = m_touched.data() + firstBlock;
    const auto add = [&](int place, int cover, int area) {
        if (place >= m_pixels.width())
            return;
        // What lies to the left covers all pixels of the row.
        const auto cell = unsigned(std::max(place, 0));
        touched[cell / blockWidth] = 1;
        cells[cell].cover += cover;
        cells[cell].area += place < 0 ? 0 : area;
    };
    const int left = m_pixels.left();
    int column = pixelOf(fromX) - left;
    const int lastColumn = pixelOf(toX) - left;
    const int partX = fromX - (column + left) * one;
    const int lastPartX = toX - (lastColumn + left) * one;
    if (column == lastColumn) {
        add(column, toY - fromY, (partX + lastPartX) * (toY - fromY));
        return;
    }
    const bool goesRight = toX > fromX;
    const int edge = goesRight ? one : 0; // where a column is left
    const int step = goesRight ? 1 : -1;
    const int width = std::abs(toX - fromX);
    const int height = toY - fromY;
    const Division first = divided(qint64(height) * (goesRight ? one - partX : partX), width);
    add(column, first.quotient, (partX + edge) * first.quotient);
    column += step;
    int y = fromY + first.quotient;
    if (column != lastColumn) {
        Steps steps(qint64(height) * one, width, first.remainder);
        for (; column != lastColumn; column += step) {
            const int part = steps.next();
            add(column, part, one * part);
            y += part;
        }
    }
    add(column, toY - y, (lastPartX + one - edge) * (toY - y));
}

void CoverageRaster::takeRows(Rule rule, uchar *rows, qsizetype rowBytes)
{
    for (int row = 0; row < m_pixels.height(); ++row) {
        if (rule == Rule::winding)
            takeRow<Rule::winding>(row, rows + row * rowBytes);
        else
            takeRow<Rule::oddEven>(row, rows + row * rowBytes);
    }
}

template <CoverageRaster::Rule rule>
void CoverageRaster::takeRow(int row, uchar *target)
{
    const auto firstBlock = std::size_t(row) * std::size_t(m_blocks);
    uchar *const touched = m_touched.data() + firstBlock;
    int cover = 0; // of all pixels to the left
    for (int block = 0; block < m_blocks; ++block) {
        const int first = block * blockWidth;
        const auto width = std::size_t(std::min(blockWidth, m_pixels.width() - first));
        if (!touched[block]) {
            std::memset(target + first, coverageOf<rule>(cover * 2 * one), width);
            continue;
        }
        touched[block] = 0;
        Cell *cells = m_cells.data() + (firstBlock + std::size_t(block)) * blockWidth;
        int areas[blockWidth];
        for (int index = 0; index < blockWidth; ++index) {
            cover += cells[index].cover;
            areas[index] = cover * 2 * one - cells[index].area;
            cells[index] = Cell();
        }
        uchar coverage[blockWidth];
        for (int index = 0; index < blockWidth; ++index)
            coverage[index] = uchar(coverageOf<rule>(areas[index]));
        std::memcpy(target + first, coverage, width);
    }
}

} // namespace tessara
