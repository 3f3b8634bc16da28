#include "Rendering/FramePath/ScenePlacing.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

// In 256ths of a pixel. Nothing that is seen slides further than the limit.
int inSteps(double pixels)
{
    constexpr double far = 4e5;
    return int(std::round(std::clamp(pixels, -far, far) * 256));
}

/// The only rows in which `item` may look otherwise than `old`, which was drawn in its place;
/// nothing is told of two that were made apart.
std::optional<OutlineRows> rowsBetween(const DrawItem &old, const DrawItem &item)
{
    const std::optional<Sprite::Kinship> &kinship = item.sprite->kinship();
    if (!kinship || kinship->serial != old.sprite->serial() || old.slides() || item.slides()
        || old.color != item.color)
        return std::nullopt;
    const QPoint shift = item.place.topLeft() - item.sprite->bounds().topLeft();
    if (shift != old.place.topLeft() - kinship->bounds.topLeft())
        return std::nullopt;
    return OutlineRows{kinship->changed.top + shift.y(), kinship->changed.bottom + shift.y()};
}

void addChange(TileDamage &damage, const DrawItem &old, const DrawItem &item)
{
    const std::optional<OutlineRows> rows = rowsBetween(old, item);
    for (const QRect &bounds : {old.bounds(), item.bounds()})
        damage.add(rows ? bounds
                              & QRect(QPoint(bounds.left(), rows->top),
                                      QPoint(bounds.right(), rows->bottom))
                        : bounds);
}

/// Nothing where nothing of the part shows.
std::optional<DrawItem> itemOf(const ScenePart &part, double opacity, QPointF slide)
{
    const QRect bounds = part.placed.bounds();
    const quint32 color = part.color ? blendedColor(*part.color, part.fading, opacity) : 0;
    const int share = part.color ? 255 : blendedOpacity(part.fading, opacity);
    const bool shows = part.color ? color != 0 : share > 0;
    if (!shows || bounds.isEmpty())
        return std::nullopt;
    const QPoint steps(inSteps(slide.x()), inSteps(slide.y()));
    return DrawItem{part.placed.sprite,
                    bounds.translated(steps.x() >> 8, steps.y() >> 8),
                    steps.x() & 255,
                    steps.y() & 255,
                    color,
                    share};
}

} // namespace

void placeItems(SceneLayer &layer, TileDamage &damage)
{
    std::size_t count = 0;
    const auto put = [&](const DrawItem &item) {
        if (count == layer.items.size()) {
            layer.items.push_back(item);
            damage.add(item.bounds());
        } else if (DrawItem &old = layer.items[count]; !(old == item)) {
            addChange(damage, old, item);
            old = item;
        }
        ++count;
    };
    if (layer.isSeen()) {
        for (const ScenePart &part : *layer.parts) {
            Q_ASSERT(part.placed.sprite);
            if (const std::optional<DrawItem> item = itemOf(part, layer.opacity, layer.slide))
                put(*item);
        }
    }
    for (std::size_t index = count; index < layer.items.size(); ++index)
        damage.add(layer.items[index].bounds());
    layer.items.resize(count);
}

} // namespace tessara
