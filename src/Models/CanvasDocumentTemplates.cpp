#include "Models/CanvasDocument.h"

#include <QFileInfo>

#include <algorithm>

namespace tessara {

// The bare frame of presets and template fields on this branch, for its windows to stand on.

namespace {

QString normalized(const QString &key)
{
    return key.trimmed().toLower().replace(QLatin1Char(' '), QLatin1Char('_'));
}

QString keyOf(const TextLayer &layer)
{
    return normalized(layer.fieldKey().value_or(layer.name()));
}

QString keyOf(const ImageLayer &layer)
{
    return normalized(layer.placeholderKey().value_or(QString()));
}

} // namespace

void CanvasDocument::addTextPreset(const TextPreset &preset)
{
    const QUuid group = QUuid::createUuid();
    m_presetGroupNames[group] = preset.name;
    for (const PresetRectEntry &entry : preset.rects) {
        auto *shape = new ShapeLayer(QUuid::createUuid(), entry.name, entry.kind, entry.position,
                                     entry.size);
        shape->setColor(entry.color);
        shape->setCornerRadius(entry.cornerRadius);
        shape->setOpacity(entry.opacity);
        shape->setPresetGroupID(group);
        addLayer(CanvasLayerItem(shape));
    }
    for (const PresetImageEntry &entry : preset.images) {
        ImageLayerOptions options;
        options.placeholderKey = entry.placeholderKey;
        options.contentMode = entry.contentMode;
        options.presetGroupID = group;
        addLayer(CanvasLayerItem(new ImageLayer(
            QUuid::createUuid(), entry.name,
            Picture(QImage::fromData(entry.pngData().value_or(QByteArray()))),
            QUrl::fromLocalFile(QStringLiteral("/template/%1.png").arg(entry.name)), entry.position,
            entry.size, options)));
    }
    for (const TextPresetEntry &entry : preset.entries) {
        auto *title = new TextLayer(QUuid::createUuid(), entry.name, entry.text, entry.position);
        title->setFontSize(entry.fontSize);
        title->setFontWeight(entry.fontWeight);
        title->setColor(entry.color);
        title->setFieldKey(entry.fieldKey);
        title->setFieldKind(entry.fieldKind);
        title->setTextBoxSize(entry.textBoxSize);
        title->setPresetGroupID(group);
        addLayer(CanvasLayerItem(title));
    }
    emit presetGroupsChanged();
    selectPresetGroup(group);
}

QList<DynamicTemplateField> CanvasDocument::dynamicTemplateFields() const
{
    QMap<QString, DynamicTemplateField> fields;
    for (const TextLayer *layer : layersOf<TextLayer>()) {
        const QString key = keyOf(*layer);
        if (layer->fieldKind() && !key.isEmpty() && !fields.contains(key))
            fields.insert(key, {key, *layer->fieldKind(), layer->text()});
    }
    for (const ImageLayer *layer : layersOf<ImageLayer>()) {
        const QString key = keyOf(*layer);
        if (!key.isEmpty() && !fields.contains(key))
            fields.insert(key, {key, TemplateFieldKind::image, layer->sourceURL().fileName()});
    }
    return fields.values();
}

void CanvasDocument::setDynamicTemplateFieldValue(const QString &value, const QString &key)
{
    for (TextLayer *layer : layersOf<TextLayer>()) {
        if (layer->fieldKind() && keyOf(*layer) == normalized(key))
            layer->setText(value);
    }
}

tl::expected<void, CanvasDocumentError>
CanvasDocument::replaceDynamicImageField(const QString &key, const QUrl &url)
{
    const auto picture = Picture::load(url.toLocalFile());
    if (!picture)
        return tl::unexpected(picture.error());
    for (ImageLayer *layer : layersOf<ImageLayer>()) {
        if (keyOf(*layer) != normalized(key))
            continue;
        layer->setImage(*picture);
        layer->setSourceURL(url);
        layer->setCropRectNormalized(std::nullopt);
    }
    return {};
}

ImageLayerContentMode CanvasDocument::dynamicImageContentMode(const QString &key) const
{
    for (const ImageLayer *layer : layersOf<ImageLayer>()) {
        if (keyOf(*layer) == normalized(key))
            return layer->contentMode();
    }
    return ImageLayerContentMode::fitInside;
}

void CanvasDocument::setDynamicImageContentMode(ImageLayerContentMode mode, const QString &key)
{
    for (ImageLayer *layer : layersOf<ImageLayer>()) {
        if (keyOf(*layer) == normalized(key))
            layer->setContentMode(mode);
    }
}

void CanvasDocument::nudgeDynamicImageCrop(const QString &key, double deltaX, double deltaY)
{
    for (ImageLayer *layer : layersOf<ImageLayer>()) {
        if (keyOf(*layer) != normalized(key)
            || layer->contentMode() != ImageLayerContentMode::fillCrop)
            continue;
        QRectF crop = layer->normalizedCropRect(layer->size());
        crop.moveTo(std::clamp(crop.x() + deltaX, 0.0, std::max(0.0, 1 - crop.width())),
                    std::clamp(crop.y() + deltaY, 0.0, std::max(0.0, 1 - crop.height())));
        layer->setCropRectNormalized(crop);
    }
}

void CanvasDocument::resetDynamicImageCrop(const QString &key)
{
    for (ImageLayer *layer : layersOf<ImageLayer>()) {
        if (keyOf(*layer) == normalized(key))
            layer->setCropRectNormalized(std::nullopt);
    }
}

void CanvasDocument::adjustDynamicTemplateScore(const QString &key, int delta)
{
    for (const DynamicTemplateField &field : dynamicTemplateFields()) {
        if (field.key == normalized(key))
            setDynamicTemplateFieldValue(
                QString::number(std::max(0, field.value.trimmed().toInt() + delta)), key);
    }
}

} // namespace tessara
