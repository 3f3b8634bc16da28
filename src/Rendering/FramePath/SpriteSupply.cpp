#include "Rendering/FramePath/SpriteSupply.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>

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

std::shared_ptr<const Sprite> SpriteSupply::made(const Wanted &wanted)
{
    return Sprite::make(wanted.primitive, wanted.canvasToDevice, wanted.area, wanted.similar.get());
}

// What was made for a part that has gone meanwhile may still serve another.
void SpriteSupply::keep(const std::vector<Wanted> &wanted, const Sprites &sprites)
{
    for (std::size_t index = 0; index < sprites.size(); ++index) {
        wanted[index].part.give(sprites[index]);
        m_kept.insert(wanted[index].key, sprites[index]);
    }
}

void SpriteSupply::makeNow()
{
    if (m_wanted.empty())
        return;
    Sprites sprites(m_wanted.size());
    m_workers.run(int(m_wanted.size()), m_workers.threads() - 1, [&](int piece, int) {
        sprites[std::size_t(piece)] = made(m_wanted[std::size_t(piece)]);
    });
    keep(m_wanted, sprites);
    m_wanted.clear();
}

bool SpriteSupply::takeMade()
{
    if (!m_making.valid())
        return true;
    if (m_making.wait_for(std::chrono::seconds{0}) == std::future_status::timeout)
        return false;
    keep(*m_promised, m_making.get());
    m_promised.reset();
    return true;
}

// At ordinary priority: below it, a lock that it holds could keep the frames waiting. A system that
// has no thread left has them made when they are taken.
void SpriteSupply::makeBeside()
{
    if (m_wanted.empty())
        return;
    Q_ASSERT(!m_making.valid());
    m_promised = std::make_shared<const std::vector<Wanted>>(std::exchange(m_wanted, {}));
    m_making = std::async(std::launch::async | std::launch::deferred, [promised = m_promised] {
        Sprites sprites;
        std::ranges::transform(*promised, std::back_inserter(sprites), &made);
        return sprites;
    });
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
