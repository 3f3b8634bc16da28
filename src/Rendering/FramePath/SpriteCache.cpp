#include "Rendering/FramePath/SpriteCache.h"

#include <QHashFunctions>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

bool isSameElement(const QPainterPath::Element &left, const QPainterPath::Element &right)
{
    return left.type == right.type && left.x == right.x && left.y == right.y;
}

// The platform compares paths with a tolerance in which a small change would be lost.
bool isSamePath(const QPainterPath &left, const QPainterPath &right)
{
    if (left.elementCount() != right.elementCount() || left.fillRule() != right.fillRule())
        return false;
    for (int index = 0; index < left.elementCount(); ++index) {
        if (!isSameElement(left.elementAt(index), right.elementAt(index)))
            return false;
    }
    return true;
}

bool isSameMask(const std::optional<QPainterPath> &left, const std::optional<QPainterPath> &right)
{
    return left.has_value() == right.has_value() && (!left || isSamePath(*left, *right));
}

bool isSameBox(const QRectF &left, const QRectF &right)
{
    return left.x() == right.x() && left.y() == right.y() && left.width() == right.width()
           && left.height() == right.height();
}

std::size_t hashOf(const QPainterPath &path)
{
    constexpr int samples = 32;
    std::size_t hash = std::size_t(path.elementCount());
    const int step = std::max(1, path.elementCount() / samples);
    for (int index = 0; index < path.elementCount(); index += step) {
        const QPainterPath::Element element = path.elementAt(index);
        hash = qHashMulti(hash, element.x, element.y);
    }
    return hash;
}

// How a painter draws such a picture hangs on the last bit of its place.
bool isThin(const PlacedPicture &picture, const QTransform &toDevice)
{
    constexpr double thin = 2; // px
    const QRectF drawn = toDevice.mapRect(picture.box);
    return std::min(drawn.width(), drawn.height()) < thin;
}

} // namespace

SpriteKey::SpriteKey(const Primitive &primitive, const QTransform &canvasToDevice)
    : m_toDevice(primitive.toCanvas * canvasToDevice)
{
    if (const auto *fill = std::get_if<FilledPath>(&primitive.what))
        m_what = fill->path;
    else
        m_what = std::get<PlacedPicture>(primitive.what);
    // A hair below a whole pixel counts as the pixel, or a place would depend on how it was
    // reached.
    constexpr double hair = 1e-7; // px
    const double across = std::floor(m_toDevice.dx() + hair);
    const double down = std::floor(m_toDevice.dy() + hair);
    const auto *picture = std::get_if<PlacedPicture>(&m_what);
    const bool isMovable = !picture || !isThin(*picture, m_toDevice);
    if (isMovable && std::abs(across) < 1e9 && std::abs(down) < 1e9)
        m_origin = QPoint(int(across), int(down));
    m_toDevice *= QTransform::fromTranslate(-m_origin.x(), -m_origin.y());
    if (primitive.clip)
        m_clip = clipInPixels(*primitive.clip, canvasToDevice).translated(-m_origin);
}

qsizetype SpriteKey::bytes() const
{
    const auto *path = std::get_if<QPainterPath>(&m_what);
    const std::optional<QPainterPath> mask =
        path ? std::nullopt : std::get<PlacedPicture>(m_what).mask;
    const int elements = (path ? path->elementCount() : 0) + (mask ? mask->elementCount() : 0);
    return qsizetype(sizeof *this) + elements * qsizetype(sizeof(QPainterPath::Element));
}

std::size_t SpriteKey::hash() const
{
    const auto *path = std::get_if<QPainterPath>(&m_what);
    const auto *picture = std::get_if<PlacedPicture>(&m_what);
    return path ? hashOf(*path)
                : qHashMulti(1, picture->image.cacheKey(), picture->box.width(),
                             picture->box.height(), picture->mask.has_value());
}

bool SpriteKey::operator==(const SpriteKey &other) const
{
    constexpr double hair = 1e-6; // px
    const auto isNear = [](double left, double right) { return std::abs(left - right) < hair; };
    if (m_what.index() != other.m_what.index() || m_clip != other.m_clip
        || m_toDevice.m11() != other.m_toDevice.m11() || m_toDevice.m22() != other.m_toDevice.m22()
        || !isNear(m_toDevice.dx(), other.m_toDevice.dx())
        || !isNear(m_toDevice.dy(), other.m_toDevice.dy()))
        return false;
    if (const auto *path = std::get_if<QPainterPath>(&m_what))
        return isSamePath(*path, std::get<QPainterPath>(other.m_what));
    const auto &picture = std::get<PlacedPicture>(m_what);
    const auto &another = std::get<PlacedPicture>(other.m_what);
    return picture.image.cacheKey() == another.image.cacheKey()
           && isSameBox(picture.box, another.box) && isSameMask(picture.mask, another.mask);
}

SpriteCache::SpriteCache(qsizetype spare)
    : m_spare(spare)
{
}

void SpriteCache::insert(const SpriteKey &key, const std::shared_ptr<const Sprite> &sprite)
{
    const auto entry = m_entries.emplace(key.hash(), Entry{key, sprite, ++m_uses});
    // Every entry is looked at to trim them, so that it is left until some room may be gained.
    m_added += entry->second.bytes();
    if (m_added > m_spare / 8)
        trim();
}

void SpriteCache::trim()
{
    m_added = 0;
    qsizetype unused = 0;
    std::vector<decltype(m_entries)::iterator> candidates;
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        if (entry->second.sprite.use_count() > 1)
            continue;
        unused += entry->second.bytes();
        candidates.push_back(entry);
    }
    std::ranges::sort(candidates, {}, [](const auto &entry) { return entry->second.lastUse; });
    constexpr std::size_t mostUnused = 256;
    std::size_t left = candidates.size();
    for (const auto &entry : candidates) {
        if (unused <= m_spare && left <= mostUnused)
            return;
        unused -= entry->second.bytes();
        --left;
        m_entries.erase(entry);
    }
}

} // namespace tessara
