// Values to JSON and back, by their types.
#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

#include "Base/UuidText.h"

#include <tl/expected.hpp>

namespace tessara {

/// A point is [x, y], a size [width, height], a rectangle both; a colour and any other record an
/// object; an enumeration the name of its case; an absent value null; a layer its UUID. An error is
/// the value's own (an operation that failed), or tells that the type has no JSON form.
tl::expected<QJsonValue, QString> encodeValue(const QVariant &value);

/// An error tells what was wanted.
tl::expected<QVariant, QString> decodeValue(const QJsonValue &json, QMetaType wanted);

/// What a script-only operation answers.
using ScriptResult = tl::expected<QJsonValue, QString>;

} // namespace tessara
