#include "Rendering/PresetDrawing.h"

#include "Models/Presets/PresetLayers.h"
#include "Models/Presets/PresetPictures.h"
#include "Rendering/LayerDrawing.h"
#include "Rendering/TextBlockCache.h"

#include <QPainter>

#include <algorithm>
#include <memory>

namespace tessara {

namespace {

const QColor ground = QColor::fromRgbF(0.06, 0.06, 0.07);

// Layers of no document: made, drawn and gone on one thread.

template <typename Entry>
auto layerOf(const Entry &entry)
{
    using Made = std::remove_pointer_t<decltype(makePresetLayer(entry, 1, QUuid()))>;
    return std::unique_ptr<Made>(makePresetLayer(entry, 1, QUuid()));
}
auto layerOf(const PresetImageEntry &entry)
{
    // Not worth its memory on a card.
    const bool isTooLarge = decodedBytes(entry) > PresetPictures::mostAhead;
    const auto picture =
        Picture::fromData(isTooLarge ? QByteArray() : entry.pngData().value_or(QByteArray()));
    return std::unique_ptr<ImageLayer>(
        makePresetLayer(entry, picture.value_or(Picture()), QUuid()));
}

template <typename Entry>
bool drawAll(QPainter &painter, const QList<Entry> &entries, TextBlockCache &texts,
             const std::function<bool()> &isWanted)
{
    return std::all_of(entries.begin(), entries.end(), [&](const Entry &entry) {
        const auto layer = layerOf(entry);
        drawLayer(painter, CanvasLayerItem(layer.get()), DrawingStyle::canvas, texts);
        return isWanted();
    });
}

} // namespace

QImage drawPreset(const TextPreset &preset, QSize size, const std::function<bool()> &isWanted)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return {};
    picture.fill(ground);
    QPainter painter(&picture);
    painter.scale(size.width() / presetCanvas.width(), size.height() / presetCanvas.height());
    TextBlockCache texts;
    // A preset that can't be applied isn't decoded to be looked at.
    const QList<PresetImageEntry> images =
        PresetPictures::areWithinBounds(preset.images) ? preset.images : QList<PresetImageEntry>();
    const bool isWhole = drawAll(painter, preset.rects, texts, isWanted)
                         && drawAll(painter, images, texts, isWanted)
                         && drawAll(painter, preset.entries, texts, isWanted);
    painter.end();
    return isWhole ? picture : QImage();
}

} // namespace tessara
