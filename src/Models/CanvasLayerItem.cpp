#include "Models/CanvasLayerItem.h"

namespace tessara {

QString kindName(const CanvasLayerItem &item)
{
    return std::visit(
        Overloaded{[](const TextLayer *) { return QStringLiteral("text"); },
                   [](const ImageLayer *) { return QStringLiteral("image"); },
                   [](const ShapeLayer *) { return QStringLiteral("shape"); },
                   [](const ScoreLayer *) { return QStringLiteral("score"); },
                   [](const WebLayer *) { return QStringLiteral("web"); },
                   [](const Model3DLayer *) { return QStringLiteral("model"); },
                   [](const WindowCaptureLayer *) { return QStringLiteral("windowCapture"); },
                   [](const CountdownLayer *) { return QStringLiteral("countdown"); }},
        item);
}

std::optional<QUuid> presetGroupID(const CanvasLayerItem &item)
{
    using Group = std::optional<QUuid>;
    return std::visit(Overloaded{[](const TextLayer *text) { return text->presetGroupID(); },
                                 [](const ImageLayer *image) { return image->presetGroupID(); },
                                 [](const ShapeLayer *shape) { return shape->presetGroupID(); },
                                 [](const ScoreLayer *) { return Group(); },
                                 [](const WebLayer *web) { return web->presetGroupID(); },
                                 [](const Model3DLayer *model) { return model->presetGroupID(); },
                                 [](const WindowCaptureLayer *) { return Group(); },
                                 [](const CountdownLayer *) { return Group(); }},
                      item);
}

void setPresetGroupID(const CanvasLayerItem &item, const std::optional<QUuid> &groupID)
{
    std::visit(Overloaded{[&](TextLayer *text) { text->setPresetGroupID(groupID); },
                          [&](ImageLayer *image) { image->setPresetGroupID(groupID); },
                          [&](ShapeLayer *shape) { shape->setPresetGroupID(groupID); },
                          [](ScoreLayer *) {},
                          [&](WebLayer *web) { web->setPresetGroupID(groupID); },
                          [&](Model3DLayer *model) { model->setPresetGroupID(groupID); },
                          [](WindowCaptureLayer *) {}, [](CountdownLayer *) {}},
               item);
}

double layerOpacity(const CanvasLayerItem &item)
{
    return std::visit(Overloaded{[](const TextLayer *) { return 1.0; },
                                 [](const SizedLayer *layer) { return layer->opacity(); }},
                      item);
}

} // namespace tessara
