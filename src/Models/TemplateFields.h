// The rules of template fields: their keys, their scores and their crops.
#pragma once

#include <QRectF>
#include <QString>

namespace tessara {

class ImageLayer;
class TextLayer;

/// Trimmed, in lower case, each blank a "_". Two keys are one field when this is the same.
QString normalizedFieldKey(const QString &key);

/// The key under which the layer is a field; empty for one that is none. A text without a key of
/// its own goes by its name.
QString fieldKeyOf(const TextLayer &layer);
QString fieldKeyOf(const ImageLayer &layer);

/// A whole number with or without a sign; 0 for any other text.
qint64 scoreIn(const QString &text);

/// The part of the picture that is shown, moved by fractions of the picture and kept inside it.
QRectF nudgedCrop(const ImageLayer &layer, double deltaX, double deltaY);

} // namespace tessara
