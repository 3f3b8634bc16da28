#include "Rendering/FramePath/OutlineChange.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

std::optional<OutlineRows> changedRows(const OutlineParts &before, const OutlineParts &after,
                                       const QTransform &toPixels)
{
    const bool isUpright = toPixels.type() <= QTransform::TxScale && toPixels.m22() > 0;
    if (!isUpright || !before || !after)
        return std::nullopt;
    const auto isSame = [](const OutlinePart &left, const OutlinePart &right) {
        return left.isSameAs(right);
    };
    const auto [gone, come] =
        std::mismatch(before->begin(), before->end(), after->begin(), after->end(), isSame);
    const auto [goneEnd, comeEnd] =
        std::mismatch(before->rbegin(), std::reverse_iterator(gone), after->rbegin(),
                      std::reverse_iterator(come), isSame);
    if (gone == goneEnd.base() && come == comeEnd.base())
        return OutlineRows{};
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    const auto measure = [&](const OutlinePart &part) {
        low = std::min(low, part.box.top());
        high = std::max(high, part.box.bottom());
    };
    std::for_each(gone, goneEnd.base(), measure);
    std::for_each(come, comeEnd.base(), measure);
    constexpr int rim = 1;      // px, for points are rounded on their way
    constexpr double far = 1e6; // px
    const auto rowOf = [&](double y) {
        return int(std::floor(std::clamp(toPixels.m22() * y + toPixels.dy(), -far, far)));
    };
    return OutlineRows{rowOf(low) - rim, rowOf(high) + rim};
}

} // namespace tessara
