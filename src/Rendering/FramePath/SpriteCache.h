// Sprites that were made before and may serve again.
#pragma once

#include "Rendering/FramePath/Sprite.h"

#include <QPoint>

#include <unordered_map>

namespace tessara {

/// What a sprite shows, wherever on the frame: a move by whole pixels, an opacity or a colour makes
/// no other.
class SpriteKey
{
public:
    SpriteKey(const Primitive &primitive, const QTransform &canvasToDevice);

    /// The whole pixels that were taken out of the place.
    QPoint origin() const { return m_origin; }
    /// Memory of its outline. A picture's isn't counted: the document has it.
    qsizetype bytes() const;
    std::size_t hash() const;
    bool operator==(const SpriteKey &other) const;

private:
    std::variant<QPainterPath, PlacedPicture> m_what;
    QTransform m_toDevice; // without whole pixels
    QPoint m_origin;
    std::optional<QRect> m_clip; // from the origin
};

/// A sprite and where it lies.
struct PlacedSprite
{
    std::shared_ptr<const Sprite> sprite;
    QPoint shift; // px that the sprite lies from where it was made

    QRect bounds() const { return sprite->bounds().translated(shift); }
    QRect area() const { return sprite->area().translated(shift); }
};

/// Finds sprites by what they show. One that nobody uses any more stays for a while, up to a number
/// of bytes for all of them.
class SpriteCache
{
public:
    static constexpr qsizetype standardSpare = 32LL << 20; // bytes

    explicit SpriteCache(qsizetype spare = standardSpare);

    /// All that show the same, in different parts of the frame.
    template <typename Fits>
    std::optional<PlacedSprite> find(const SpriteKey &key, const Fits &fits)
    {
        const auto [begin, end] = m_entries.equal_range(key.hash());
        for (auto entry = begin; entry != end; ++entry) {
            if (!(entry->second.key == key))
                continue;
            const PlacedSprite placed{entry->second.sprite,
                                      key.origin() - entry->second.key.origin()};
            if (!fits(placed))
                continue;
            entry->second.lastUse = ++m_uses;
            return placed;
        }
        return std::nullopt;
    }
    void insert(const SpriteKey &key, const std::shared_ptr<const Sprite> &sprite);

private:
    struct Entry
    {
        SpriteKey key;
        std::shared_ptr<const Sprite> sprite;
        quint64 lastUse = 0;

        qsizetype bytes() const { return key.bytes() + sprite->bytes(); }
    };

    void trim();

    qsizetype m_spare;
    qsizetype m_added = 0; // bytes since the last trim
    quint64 m_uses = 0;
    std::unordered_multimap<std::size_t, Entry> m_entries;
};

} // namespace tessara
