#include "Rendering/PresetDrawing.h"

#include "Models/Presets/TextPreset.h"
#include "Rendering/LayerDrawing.h"
#include "Rendering/TextBlockCache.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <memory>

namespace tessara {

namespace {

const QColor ground = QColor::fromRgbF(0.06, 0.06, 0.07);
constexpr double leastPictureSide = 24; // canvas units

double finiteOr(double value, double otherwise)
{
    return std::isfinite(value) ? value : otherwise;
}

Picture decoded(const PresetImageEntry &entry)
{
    QByteArray bytes = entry.pngData().value_or(QByteArray());
    QBuffer file(&bytes);
    QImageReader reader(&file);
    const QSize size = reader.size();
    // Asked before decoding: a small file can claim a raster that no memory holds.
    if (size.width() > Picture::largestSide || size.height() > Picture::largestSide)
        return {};
    return Picture(reader.read());
}

ImageLayerOptions optionsOf(const PresetImageEntry &entry)
{
    ImageLayerOptions options;
    options.opacity = std::clamp(finiteOr(entry.opacity, 0), 0.0, 1.0);
    options.cropRectNormalized = entry.cropRectNormalized;
    options.placeholderKey = entry.placeholderKey;
    options.contentMode = entry.contentMode;
    options.maskShape = entry.maskShape.value_or(ImageLayerMaskShape::rectangle);
    options.maskPadding = std::max(finiteOr(entry.maskPadding.value_or(0), 0), 0.0);
    return options;
}

// Layers of no document: made, drawn and gone on one thread.

std::unique_ptr<ShapeLayer> layerOf(const PresetRectEntry &entry)
{
    auto layer = std::make_unique<ShapeLayer>(QUuid(), entry.name, entry.kind, entry.position,
                                              entry.size);
    layer->setColor(entry.color);
    layer->setCornerRadius(entry.cornerRadius);
    layer->setOpacity(entry.opacity);
    return layer;
}

std::unique_ptr<ImageLayer> layerOf(const PresetImageEntry &entry)
{
    const QPointF position(finiteOr(entry.position.x(), 0), finiteOr(entry.position.y(), 0));
    const QSizeF size(finiteOr(entry.size.width(), 0), finiteOr(entry.size.height(), 0));
    return std::make_unique<ImageLayer>(QUuid(), entry.name, decoded(entry), QUrl(), position,
                                        size.expandedTo({leastPictureSide, leastPictureSide}),
                                        optionsOf(entry));
}

std::unique_ptr<TextLayer> layerOf(const TextPresetEntry &entry)
{
    auto layer = std::make_unique<TextLayer>(QUuid(), entry.name, entry.text, entry.position);
    layer->setFontSize(entry.fontSize);
    layer->setFontFamily(entry.fontFamily);
    layer->setFontWeight(entry.fontWeight);
    layer->setColor(entry.color);
    layer->setOutlineColor(entry.outlineColor);
    layer->setOutlineWidth(entry.outlineWidth);
    layer->setTextBoxSize(entry.textBoxSize);
    layer->setHorizontalAlignment(entry.horizontalAlignment);
    return layer;
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
    const bool isWhole = drawAll(painter, preset.rects, texts, isWanted)
                         && drawAll(painter, preset.images, texts, isWanted)
                         && drawAll(painter, preset.entries, texts, isWanted);
    painter.end();
    return isWhole ? picture : QImage();
}

} // namespace tessara
