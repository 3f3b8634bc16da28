#include "Models/Layer.h"

#include "Models/LayerGeometry.h"

namespace tessara {

Layer::Layer(const QUuid &id, const QString &name, QPointF position)
    : m_name(name)
    , m_position(mended(position))
    , m_id(id)
{
}

SizedLayer::SizedLayer(const QUuid &id, const QString &name, QPointF position, QSizeF size)
    : Layer(id, name, position)
    , m_size(mended(size))
{
}

void AspectLockedLayer::setAspectRatioLocked(bool locked)
{
    if (locked && !m_isAspectRatioLocked)
        m_lockedAspectRatio = aspectRatio(size()).value_or(standardAspectRatio);
    setIsAspectRatioLocked(locked);
}

void AspectLockedLayer::setIsAspectRatioLocked(bool locked)
{
    if (replaceValue(m_isAspectRatioLocked, locked))
        emit isAspectRatioLockedChanged();
}

} // namespace tessara
