#include "Models/WebLayer.h"

namespace tessara {

WebLayer::WebLayer(const QUuid &id, const QString &name, const QString &urlString, QPointF position,
                   QSizeF size)
    : AspectLockedLayer(id, name, position, size)
    , m_urlString(urlString)
{
}

} // namespace tessara
