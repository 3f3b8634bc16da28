// The document's operations on template fields.
#include "Models/CanvasDocument.h"

#include "Models/LayerGeometry.h"
#include "Models/TemplateFields.h"

#include <algorithm>

namespace tessara {

QList<DynamicTemplateField> CanvasDocument::dynamicTemplateFields() const
{
    QMap<QString, DynamicTemplateField> fields;
    const auto note = [&](const QString &key, TemplateFieldKind kind, const QString &value) {
        if (!key.isEmpty() && !fields.contains(key))
            fields.insert(key, {key, kind, value});
    };
    for (const TextLayer *layer : layersOf<TextLayer>())
        note(fieldKeyOf(*layer), layer->fieldKind().value_or(TemplateFieldKind::text),
             layer->text());
    for (const ImageLayer *layer : layersOf<ImageLayer>())
        note(fieldKeyOf(*layer), TemplateFieldKind::image, layer->sourceURL().fileName());
    return fields.values();
}

void CanvasDocument::setDynamicTemplateFieldValue(const QString &value, const QString &key)
{
    const QString wanted = normalizedFieldKey(key);
    for (TextLayer *layer : layersOf<TextLayer>()) {
        if (!wanted.isEmpty() && fieldKeyOf(*layer) == wanted)
            layer->setText(value);
    }
}

void CanvasDocument::adjustDynamicTemplateScore(const QString &key, qint64 delta)
{
    const QString wanted = normalizedFieldKey(key);
    const QList<DynamicTemplateField> fields = dynamicTemplateFields();
    const auto field = std::find_if(fields.begin(), fields.end(),
                                    [&](const auto &each) { return each.key == wanted; });
    const qint64 score = field == fields.end() ? 0 : scoreIn(field->value);
    qint64 sum = 0;
    if (__builtin_add_overflow(score, delta, &sum))
        sum = delta > 0 ? std::numeric_limits<qint64>::max() : 0;
    setDynamicTemplateFieldValue(QString::number(std::max(sum, qint64(0))), wanted);
}

// Pictures

QList<ImageLayer *> CanvasDocument::imageLayersOfField(const QString &key) const
{
    const QString wanted = normalizedFieldKey(key);
    QList<ImageLayer *> layers;
    for (ImageLayer *layer : layersOf<ImageLayer>()) {
        if (!wanted.isEmpty() && fieldKeyOf(*layer) == wanted)
            layers.append(layer);
    }
    return layers;
}

CanvasDocument::FieldResult CanvasDocument::replaceDynamicImageField(const QString &key,
                                                                     const QUrl &url)
{
    const tl::expected<Picture, CanvasDocumentError> picture = Picture::load(url.toLocalFile());
    if (!picture)
        return tl::unexpected(picture.error());
    for (ImageLayer *layer : imageLayersOfField(key))
        fillSlot(*layer, *picture, url);
    return std::monostate();
}

// The picture comes to the top, whole; a masked slot gets a margin when it is first filled.
void CanvasDocument::fillSlot(ImageLayer &layer, const Picture &picture, const QUrl &url)
{
    constexpr double leastPadding = 0.001; // canvas units
    constexpr double slotPadding = 12;     // canvas units
    layer.setImage(picture);
    layer.setSourceURL(url);
    layer.setLockedAspectRatio(aspectRatio(picture.size()).value_or(standardAspectRatio));
    layer.setCropRectNormalized(std::nullopt);
    const bool isSlot = !layer.placeholderKey().value_or(QString()).trimmed().isEmpty();
    if (isSlot && layer.maskShape() != ImageLayerMaskShape::rectangle
        && layer.maskPadding() <= leastPadding)
        layer.setMaskPadding(slotPadding);
    moveInLayerOrder(layer.id(), m_layerOrder.size());
}

ImageLayerContentMode CanvasDocument::dynamicImageContentMode(const QString &key) const
{
    const QList<ImageLayer *> layers = imageLayersOfField(key);
    return layers.isEmpty() ? ImageLayerContentMode::fitInside : layers.first()->contentMode();
}

void CanvasDocument::setDynamicImageContentMode(ImageLayerContentMode mode, const QString &key)
{
    for (ImageLayer *layer : imageLayersOfField(key))
        layer->setContentMode(mode);
}

void CanvasDocument::nudgeDynamicImageCrop(const QString &key, double deltaX, double deltaY)
{
    for (ImageLayer *layer : imageLayersOfField(key)) {
        if (layer->contentMode() == ImageLayerContentMode::fillCrop)
            layer->setCropRectNormalized(nudgedCrop(*layer, deltaX, deltaY));
    }
}

void CanvasDocument::resetDynamicImageCrop(const QString &key)
{
    for (ImageLayer *layer : imageLayersOfField(key))
        layer->setCropRectNormalized(std::nullopt);
}

// Texts that carry a key, whether they are fields of the form or not

int CanvasDocument::textLayerCount(const QString &fieldKey) const
{
    return int(textLayersWithKey(fieldKey).size());
}

void CanvasDocument::setTextValue(const QString &value, const QString &fieldKey)
{
    for (TextLayer *layer : textLayersWithKey(fieldKey))
        layer->setText(value);
}

QList<TextLayer *> CanvasDocument::textLayersWithKey(const QString &fieldKey) const
{
    const QString wanted = normalizedFieldKey(fieldKey);
    QList<TextLayer *> layers;
    for (TextLayer *layer : layersOf<TextLayer>()) {
        if (!wanted.isEmpty()
            && normalizedFieldKey(layer->fieldKey().value_or(QString())) == wanted)
            layers.append(layer);
    }
    return layers;
}

} // namespace tessara
