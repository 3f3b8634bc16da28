#include "Rendering/TextBlockCache.h"

#include "Rendering/DrawnText.h"

#include <algorithm>

namespace tessara {

size_t qHash(const TextBlockCache::Key &key, size_t seed)
{
    return qHashMulti(seed, key.text, key.font.face.pixelSize(), key.font.face.weight(),
                      key.font.scale, int(key.alignment), key.wrapWidth.value_or(-1));
}

TextBlockCache::TextBlockCache(qsizetype capacity)
    : m_blocks(capacity)
{
}

std::shared_ptr<const TextBlock> TextBlockCache::block(const QString &text, const SizedFont &font,
                                                       TextLayerHorizontalAlignment alignment,
                                                       std::optional<double> wrapWidth)
{
    const Key key{drawnText(text), font, alignment, wrapWidth};
    if (const auto *known = m_blocks.object(key))
        return *known;
    const auto made =
        std::make_shared<const TextBlock>(key.text, font, alignment, wrapWidth, m_shapes);
    constexpr qsizetype costOfAny = 16; // characters
    m_blocks.insert(key, new std::shared_ptr<const TextBlock>(made),
                    std::min(costOfAny + key.text.size(), m_blocks.maxCost()));
    return made;
}

} // namespace tessara
