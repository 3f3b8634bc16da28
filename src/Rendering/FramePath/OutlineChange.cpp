#include "Rendering/FramePath/OutlineChange.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

/// Some of the elements of a path.
struct Elements
{
    int begin = 0;
    int end = 0;
};

// Whole polygons: a line more or less changes the one that it belongs to.
Elements withWholePolygons(const QPainterPath &path, Elements elements)
{
    elements.begin = std::max(elements.begin - 1, 0);
    while (elements.begin > 0 && !path.elementAt(elements.begin).isMoveTo())
        --elements.begin;
    while (elements.end < path.elementCount() && !path.elementAt(elements.end).isMoveTo())
        ++elements.end;
    return elements;
}

/// Two paths, element by element; notes whether it met a curve.
class Comparison
{
public:
    Comparison(const QPainterPath &before, const QPainterPath &after)
        : m_before(before)
        , m_after(after)
    {
        const int shorter = std::min(before.elementCount(), after.elementCount());
        int first = 0;
        while (first < shorter && isSame(first, first))
            ++first;
        m_gone = {first, before.elementCount()};
        m_come = {first, after.elementCount()};
        while (m_gone.end > first && m_come.end > first && isSame(m_gone.end - 1, m_come.end - 1)) {
            --m_gone.end;
            --m_come.end;
        }
        m_areEqual = m_gone.end == first && m_come.end == first;
        if (!m_areEqual) {
            measure(before, withWholePolygons(before, m_gone));
            measure(after, withWholePolygons(after, m_come));
        }
    }

    bool areEqual() const { return m_areEqual; }
    bool isStraight() const { return m_isStraight; }
    double low() const { return m_low; }
    double high() const { return m_high; }

private:
    bool isSame(int gone, int come)
    {
        const QPainterPath::Element left = m_before.elementAt(gone);
        const QPainterPath::Element right = m_after.elementAt(come);
        m_isStraight = m_isStraight && !left.isCurveTo() && !right.isCurveTo();
        return left.type == right.type && left.x == right.x && left.y == right.y;
    }
    void measure(const QPainterPath &path, const Elements &elements)
    {
        for (int index = elements.begin; index < elements.end; ++index) {
            const QPainterPath::Element element = path.elementAt(index);
            m_isStraight = m_isStraight && !element.isCurveTo();
            m_low = std::min(m_low, element.y);
            m_high = std::max(m_high, element.y);
        }
    }

    const QPainterPath &m_before;
    const QPainterPath &m_after;
    Elements m_gone;
    Elements m_come;
    bool m_areEqual = false;
    bool m_isStraight = true;
    double m_low = std::numeric_limits<double>::infinity();
    double m_high = -std::numeric_limits<double>::infinity();
};

} // namespace

std::optional<OutlineRows> changedRows(const QPainterPath &before, const QPainterPath &after,
                                       const QTransform &toPixels)
{
    const bool isUpright = toPixels.type() <= QTransform::TxScale && toPixels.m22() > 0;
    if (!isUpright || before.fillRule() != after.fillRule())
        return std::nullopt;
    const Comparison comparison(before, after);
    if (!comparison.isStraight())
        return std::nullopt;
    if (comparison.areEqual())
        return OutlineRows{};
    constexpr int rim = 1;      // px, for points are rounded on their way
    constexpr double far = 1e6; // px
    const auto rowOf = [&](double y) {
        return int(std::floor(std::clamp(toPixels.m22() * y + toPixels.dy(), -far, far)));
    };
    return OutlineRows{rowOf(comparison.low()) - rim, rowOf(comparison.high()) + rim};
}

} // namespace tessara
