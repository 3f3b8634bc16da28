// A layer as a map of texts: what an "add" step of a macro and the undo of a delete hold.
#pragma once

#include "Models/CanvasLayerItem.h"

#include <QMap>

namespace tessara {

struct CapturedLayer
{
    QString type;
    QMap<QString, QString> props;

    bool operator==(const CapturedLayer &) const = default;
};

/// More than the property table holds, since a new layer needs more than a changed one; yet not all
/// of a layer: its crop, its mask or a page's volume are not captured.
CapturedLayer captureLayerProps(const CanvasLayerItem &item);

/// A visible layer in no document and in no group; the caller owns it. Missing and unreadable
/// values get the layer's values at the start or 0, and an opacity of 0 comes back as 1. Nothing
/// for an unknown type, and for a picture whose file can't be loaded.
std::optional<CanvasLayerItem> makeLayerFromProps(Clock &clock, const QUuid &id,
                                                  const QString &type,
                                                  const QMap<QString, QString> &props);

} // namespace tessara
