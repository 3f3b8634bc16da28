#include "Models/PresetGroupTakes.h"

#include "Models/CanvasDocument.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

constexpr Seconds groupStagger{0.055}; // between neighbours, presetReveal only

} // namespace

void PresetGroupTakes::setGroupOnAir(const QUuid &groupID, bool onAir, bool useRunTransition)
{
    const QList<QUuid> ids = inTakeOrder(m_document.layerIDsInPresetGroup(groupID));
    for (qsizetype index = 0; index < ids.size(); ++index) {
        const QUuid id = ids[index];
        const bool isReveal =
            m_document.runSettings(id).transitionStyle == LayerRunTransitionStyle::presetReveal;
        const qsizetype place = onAir ? index : ids.size() - 1 - index;
        const Seconds delay =
            useRunTransition && isReveal ? groupStagger * double(place) : Seconds{0};
        m_document.takes().setLayerOnAir(
            id, onAir, {.useRunTransition = useRunTransition, .initialDelay = delay});
    }
}

bool PresetGroupTakes::isOnAir(const QUuid &groupID) const
{
    const QList<QUuid> ids = m_document.layerIDsInPresetGroup(groupID);
    return std::any_of(ids.begin(), ids.end(), [this](const QUuid &id) {
        const std::optional<CanvasLayerItem> item = m_document.layerItem(id);
        const double visibility = m_document.layerVisibility().value(id, 1);
        return (!item || !layerOf(*item)->isHidden()) && std::isfinite(visibility)
               && visibility > LayerTakes::leastVisibility;
    });
}

double PresetGroupTakes::transitionOrderingMetric(const QUuid &id) const
{
    const std::optional<CanvasLayerItem> item = m_document.layerItem(id);
    if (!item)
        return std::numeric_limits<double>::max();
    const QPointF center = m_document.layerFrame(*item).center();
    const QSizeF canvas = m_document.size();
    return std::abs(center.x() - 0.5 * canvas.width())
           + 0.35 * std::abs(center.y() - 0.32 * canvas.height());
}

QList<QUuid> PresetGroupTakes::inTakeOrder(QList<QUuid> ids) const
{
    const auto key = [this](const QUuid &id) {
        return std::pair(transitionOrderingMetric(id), id.toString());
    };
    std::sort(ids.begin(), ids.end(),
              [&](const QUuid &left, const QUuid &right) { return key(left) < key(right); });
    return ids;
}

} // namespace tessara
