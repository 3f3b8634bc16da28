// Texts that were laid out before and are likely to be drawn again.
#pragma once

#include <QCache>

#include "Rendering/TextBlock.h"

#include <memory>

namespace tessara {

/// Laying a text out takes many times as long as drawing it, and most texts stand for many frames.
/// Holds the latest used up to `capacity` characters; a text longer than that is kept alone.
class TextBlockCache
{
public:
    static constexpr qsizetype standardCapacity = 16'000; // characters, each drawn one up to 6 KB

    explicit TextBlockCache(qsizetype capacity = standardCapacity);

    /// The same block for the same arguments as long as it is held.
    std::shared_ptr<const TextBlock>
    block(const QString &text, const SizedFont &font,
          TextLayerHorizontalAlignment alignment = TextLayerHorizontalAlignment::leading,
          std::optional<double> wrapWidth = {});

private:
    struct Key
    {
        QString text;
        SizedFont font;
        TextLayerHorizontalAlignment alignment;
        std::optional<double> wrapWidth;

        bool operator==(const Key &) const = default;
    };
    friend size_t qHash(const Key &key, size_t seed);

    std::shared_ptr<GlyphShapes> m_shapes = std::make_shared<GlyphShapes>();
    QCache<Key, std::shared_ptr<const TextBlock>> m_blocks;
};

} // namespace tessara
