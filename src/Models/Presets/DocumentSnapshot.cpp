#include "Models/Presets/DocumentSnapshot.h"

#include "Models/CanvasDocument.h"

#include <QBuffer>

namespace tessara {

namespace {

TextPresetEntry entryOf(const TextLayer &layer)
{
    return {.name = layer.name(),
            .text = layer.text(),
            .fontSize = layer.fontSize(),
            .fontFamily = layer.fontFamily(),
            .fontWeight = layer.fontWeight(),
            .color = layer.color(),
            .outlineColor = layer.outlineColor(),
            .outlineWidth = layer.outlineWidth(),
            .position = layer.position(),
            .textBoxSize = layer.textBoxSize(),
            .horizontalAlignment = layer.horizontalAlignment(),
            .fieldKey = layer.fieldKey(),
            .fieldKind = layer.fieldKind()};
}

PresetRectEntry entryOf(const ShapeLayer &layer)
{
    return {.name = layer.name(),
            .position = layer.position(),
            .size = layer.size(),
            .color = layer.color(),
            .cornerRadius = layer.cornerRadius(),
            .opacity = layer.opacity(),
            .kind = layer.kind()};
}

QByteArray pngOf(const Picture &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (picture.isNull() || !picture.image().save(&buffer, "PNG"))
        return {};
    return bytes;
}

std::optional<PresetImageEntry> entryOf(const ImageLayer &layer)
{
    const QByteArray png = pngOf(layer.image());
    if (png.isEmpty())
        return std::nullopt;
    return PresetImageEntry{.name = layer.name(),
                            .position = layer.position(),
                            .size = layer.size(),
                            .opacity = layer.opacity(),
                            .isAspectRatioLocked = layer.isAspectRatioLocked(),
                            .cropRectNormalized = layer.cropRectNormalized(),
                            .placeholderKey = layer.placeholderKey(),
                            .contentMode = layer.contentMode(),
                            .maskShape = layer.maskShape(),
                            .maskPadding = layer.maskPadding(),
                            .pngBase64 = QString::fromLatin1(png.toBase64())};
}

} // namespace

TextPreset presetOf(const CanvasDocument &document, const QString &id, const QString &name)
{
    TextPreset preset{.id = id, .name = name};
    for (const CanvasLayerItem &item : document.orderedLayers())
        std::visit(
            Overloaded{[&](const TextLayer *text) { preset.entries.append(entryOf(*text)); },
                       [&](const ShapeLayer *shape) { preset.rects.append(entryOf(*shape)); },
                       [&](const ImageLayer *image) {
                           if (const std::optional<PresetImageEntry> entry = entryOf(*image))
                               preset.images.append(*entry);
                       },
                       [](const ScoreLayer *) {}, [](const WebLayer *) {},
                       [](const Model3DLayer *) {}, [](const WindowCaptureLayer *) {},
                       [](const CountdownLayer *) {}},
            item);
    return preset;
}

} // namespace tessara
