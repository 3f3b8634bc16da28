#include "Rendering/FramePath/SpriteSupply.h"

#include <algorithm>
#include <ranges>

namespace tessara {

namespace {

qsizetype bytesOf(const SceneLayer &layer)
{
    qsizetype bytes = 0;
    for (const ScenePart &part : *layer.parts)
        bytes += part.placed.sprite ? part.placed.sprite->bytes() : 0;
    return bytes;
}

} // namespace

void SpriteSupply::keep(const SpriteKey &key, const PartToken &part,
                        const std::shared_ptr<const Sprite> &sprite)
{
    part.give(sprite);
    m_kept.insert(key, sprite);
}

void SpriteSupply::makeNow()
{
    if (m_wanted.empty())
        return;
    std::vector<std::shared_ptr<const Sprite>> made(m_wanted.size());
    m_workers.run(int(m_wanted.size()), m_workers.threads() - 1, [&](int piece, int) {
        const Wanted &wanted = m_wanted[std::size_t(piece)];
        const SpriteMaker::Order &order = wanted.order;
        made[std::size_t(piece)] =
            Sprite::make(order.primitive, order.canvasToDevice, order.area, wanted.similar.get());
    });
    for (std::size_t index = 0; index < made.size(); ++index)
        keep(m_wanted[index].key, m_wanted[index].part, made[index]);
    m_wanted.clear();
}

// What was made for a part that has gone meanwhile may still serve another.
bool SpriteSupply::isIdle()
{
    if (m_maker.isDone()) {
        const std::vector<std::shared_ptr<const Sprite>> made = m_maker.takeResults();
        Q_ASSERT(made.size() == m_promises.size());
        for (std::size_t index = 0; index < made.size(); ++index)
            keep(m_promises[index].key, m_promises[index].part, made[index]);
        m_promises.clear();
    }
    return m_maker.isIdle();
}

void SpriteSupply::makeBeside()
{
    if (m_wanted.empty())
        return;
    Q_ASSERT(m_maker.isIdle() && m_promises.empty());
    std::vector<SpriteMaker::Order> orders;
    for (Wanted &wanted : m_wanted) {
        orders.push_back(std::move(wanted.order));
        m_promises.push_back({wanted.key, wanted.part});
    }
    m_wanted.clear();
    m_maker.start(std::move(orders));
}

void SpriteSupply::forgetHidden(std::vector<SceneLayer> &layers)
{
    constexpr qsizetype room = 256LL << 20; // bytes
    const auto mayGo = [](const SceneLayer &layer) {
        return !layer.isSeen() && !layer.parts->empty();
    };
    qsizetype bytes = 0;
    for (const SceneLayer &layer : layers)
        bytes += mayGo(layer) ? bytesOf(layer) : 0;
    while (bytes > room) {
        auto hidden = layers | std::views::filter(mayGo);
        SceneLayer &oldest = *std::ranges::min_element(hidden, {}, &SceneLayer::lastSeen);
        bytes -= bytesOf(oldest);
        oldest.replaceParts(SceneLayer::Content::forgotten);
    }
}

} // namespace tessara
