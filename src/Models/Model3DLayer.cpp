#include "Models/Model3DLayer.h"

namespace tessara {

Model3DLayer::Model3DLayer(const QUuid &id, const QString &name, QPointF position, QSizeF size)
    : SizedLayer(id, name, position, size)
{
}

} // namespace tessara
