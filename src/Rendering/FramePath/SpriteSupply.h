// Where the sprites of a scene come from.
#pragma once

#include "Base/ForkJoin.h"
#include "Rendering/FramePath/SceneLayer.h"
#include "Rendering/FramePath/SpriteMaker.h"

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
        SpriteMaker::Order order;
        PartToken part;
        std::shared_ptr<const Sprite> similar; // or none
    };
    void want(Wanted wanted) { m_wanted.push_back(std::move(wanted)); }
    std::size_t wanted() const { return m_wanted.size(); }

    /// Makes all that is wanted, shared among the threads.
    void makeNow();
    /// True when the thread beside has nothing to do, and what it has made is in place.
    bool isIdle();
    /// Gives all that is wanted to the thread beside, which has to be idle.
    void makeBeside();

    /// Of what nobody sees only so much is kept; who was seen long ago gives up first.
    static void forgetHidden(std::vector<SceneLayer> &layers);

private:
    /// A sprite in the maker's hands, whose part may be gone when it is done.
    struct Promise
    {
        SpriteKey key;
        PartToken part;
    };

    void keep(const SpriteKey &key, const PartToken &part,
              const std::shared_ptr<const Sprite> &sprite);

    ForkJoin &m_workers;
    SpriteCache m_kept;
    std::vector<Wanted> m_wanted;
    SpriteMaker m_maker;
    std::vector<Promise> m_promises; // in the order of the maker's batch
};

} // namespace tessara
