// The properties of a layer that history and macros follow, by the keys that both spell.
#pragma once

#include "Models/CanvasLayerItem.h"
#include "Models/PropertyText.h"

#include <span>

namespace tessara {

/// One property of one kind of layer. A position and a size have two rows each, which share their
/// property.
struct LayerPropertyRow
{
    QLatin1String key;
    const char *property;              // of the layer's meta-object; its notice tells of changes
    int debounceMs;                    // how long a value must stand to count as one change
    QLatin1String undoName;            // the change, as the undo button names it
    QVariant (*value)(const Layer &);  // as it is, to see whether it has changed
    QString (*text)(const QVariant &); // of such a value
    void (*apply)(Layer &, const QString &);

    QString encode(const Layer &layer) const { return text(value(layer)); }
};

/// The rows of the layer's kind. The functions take a layer of this kind only.
std::span<const LayerPropertyRow> layerPropertyRows(const CanvasLayerItem &item);

/// Stores the value as it stands, within no limits. A key that the kind doesn't have and a value
/// that can't be read or isn't finite change nothing; an unreadable font weight clears the weight.
void applyLayerProperty(const CanvasLayerItem &item, const QString &key, const QString &value);

/// The layer's kind, as an "add" step of a macro spells it.
inline QString layerTypeOf(const CanvasLayerItem &item)
{
    return kindName(item);
}

} // namespace tessara
