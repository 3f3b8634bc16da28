#include "Automation/DocumentState.h"

#include "Automation/ScriptCall.h"
#include "Models/CanvasDocument.h"

#include <QMetaProperty>

namespace tessara {

namespace {

QJsonObject layerState(const CanvasLayerItem &item)
{
    const Layer *layer = layerOf(item);
    const QMetaObject *type = layer->metaObject();
    QJsonObject state{{QStringLiteral("kind"), kindName(item)}};
    // A property of a kind may be of the name `kind` itself: a shape's.
    for (int index = QObject::staticMetaObject.propertyCount(); index < type->propertyCount();
         ++index) {
        const QString name = QLatin1String(type->property(index).name());
        const ScriptResult value = readProperty(layer, name);
        const QString key = name == QStringLiteral("kind") ? QStringLiteral("shapeKind") : name;
        state.insert(key, value.value_or(QJsonValue()));
    }
    return state;
}

} // namespace

QJsonObject documentState(const CanvasDocument &document)
{
    QJsonArray layers;
    for (const CanvasLayerItem &item : document.orderedLayers())
        layers.append(layerState(item));
    QJsonObject state{{QStringLiteral("layers"), layers}};
    for (const char *name :
         {"size", "layerOrder", "selectedLayerIDs", "cueTargets", "layerRunSettings",
          "layerVisibility", "presetGroupNames", "isDrawingCustomShape"})
        state.insert(QLatin1String(name),
                     readProperty(&document, QLatin1String(name)).value_or(QJsonValue()));
    return state;
}

} // namespace tessara
