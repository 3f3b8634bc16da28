// Points, sizes and rectangles as preset files hold them: written as arrays, read as arrays or,
// from the hand of people and tools, as objects.
#pragma once

#include <QJsonArray>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <tl/expected.hpp>

namespace tessara {

QJsonArray geometryToJson(QPointF point); // [x, y]
QJsonArray geometryToJson(QSizeF size);   // [width, height]
QJsonArray geometryToJson(QRectF rect);   // [[x, y], [width, height]]

// The array is tried first, what follows its two elements is passed over. An error says what an
// object would have to hold.

/// An object needs both `x` and `y`.
tl::expected<QPointF, QString> pointFromJson(const QJsonValue &json);
/// An object needs both `width` and `height`.
tl::expected<QSizeF, QString> sizeFromJson(const QJsonValue &json);
/// An object gives `origin` and `size`, themselves objects. Unless it has both, it gives `x`, `y`,
/// `width` and `height`, each 0 when missing.
tl::expected<QRectF, QString> rectFromJson(const QJsonValue &json);

} // namespace tessara
