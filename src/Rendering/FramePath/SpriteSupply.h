// Where the sprites of a scene come from.
#pragma once

#include "Base/ForkJoin.h"
#include "Rendering/FramePath/SceneLayer.h"

#include <future>

namespace tessara {

/// A part takes a kept sprite that shows the same. What there is none for is noted, and made either
/// at once or beside this thread: one of the two has to follow.
class SpriteSupply
{
    Q_DISABLE_COPY_MOVE(SpriteSupply)

public:
    explicit SpriteSupply(ForkJoin &workers)
        : m_workers(workers)
    {
    }

    /// A kept one that shows the same and suits `fits`.
    template <typename Fits>
    std::optional<PlacedSprite> find(const SpriteKey &key, const Fits &fits)
    {
        return m_kept.find(key, fits);
    }
    /// A sprite that is to be made.
    struct Wanted
    {
        SpriteKey key;
        PartToken part;
        Primitive primitive;
        QTransform canvasToDevice;
        QRect area;
        std::shared_ptr<const Sprite> similar; // or none
    };
    void want(Wanted wanted) { m_wanted.push_back(std::move(wanted)); }
    std::size_t wanted() const { return m_wanted.size(); }

    /// Makes all that is wanted, shared among the threads.
    void makeNow();
    /// Takes what a thread beside has made; false while there is one that isn't done.
    bool takeMade();
    /// Gives all that is wanted to a thread beside; none may be at work.
    void makeBeside();

    /// Of what nobody sees only so much is kept; who was seen long ago gives up first.
    static void forgetHidden(std::vector<SceneLayer> &layers);

private:
    using Sprites = std::vector<std::shared_ptr<const Sprite>>;

    static std::shared_ptr<const Sprite> made(const Wanted &wanted);
    void keep(const std::vector<Wanted> &wanted, const Sprites &sprites);

    ForkJoin &m_workers;
    SpriteCache m_kept;
    std::vector<Wanted> m_wanted;
    // Last, for it ends when its thread does. The parts may be gone by then.
    std::shared_ptr<const std::vector<Wanted>> m_promised;
    std::future<Sprites> m_making;
};

} // namespace tessara
