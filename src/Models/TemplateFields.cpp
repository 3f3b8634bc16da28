#include "Models/TemplateFields.h"

#include "Models/ImageLayer.h"
#include "Models/LayerGeometry.h"
#include "Models/TextLayer.h"

#include <algorithm>

namespace tessara {

namespace {

// What filling the frame shows by itself; the whole picture where there is nothing to fill.
QRectF crop(const ImageLayer &layer)
{
    if (const std::optional<QRectF> own = layer.cropRectNormalized())
        return sanitizedNormalizedRect(*own);
    return aspectFillRect(layer.image().size(), layer.size());
}

} // namespace

QString normalizedFieldKey(const QString &key)
{
    return key.trimmed().toLower().replace(QLatin1Char(' '), QLatin1Char('_'));
}

QString fieldKeyOf(const TextLayer &layer)
{
    if (!layer.fieldKind())
        return {};
    return normalizedFieldKey(layer.fieldKey().value_or(layer.name()));
}

QString fieldKeyOf(const ImageLayer &layer)
{
    return normalizedFieldKey(layer.placeholderKey().value_or(QString()));
}

qint64 scoreIn(const QString &text)
{
    bool isNumber = false;
    const qint64 number = text.trimmed().toLongLong(&isNumber);
    return isNumber ? number : 0;
}

QRectF nudgedCrop(const ImageLayer &layer, double deltaX, double deltaY)
{
    const QRectF shown = crop(layer);
    const double x = std::max(std::min(shown.x() + deltaX, 1 - shown.width()), 0.0);
    const double y = std::max(std::min(shown.y() + deltaY, 1 - shown.height()), 0.0);
    return sanitizedNormalizedRect({x, y, shown.width(), shown.height()});
}

} // namespace tessara
