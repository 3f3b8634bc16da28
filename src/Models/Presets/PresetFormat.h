// Presets as JSON: the same in the user's files, in the built-in list and in an exported file.
#pragma once

#include "Models/Presets/TextPreset.h"

#include <QJsonObject>

namespace tessara {

/// Indented, the keys sorted: equal presets give equal bytes. An error names the number that isn't
/// finite, for JSON has none.
tl::expected<QByteArray, QString> encodePreset(const TextPreset &preset);
tl::expected<QJsonObject, QString> presetToJson(const TextPreset &preset);

/// An error says where the file breaks the format. Keys that are unknown are passed over; points,
/// sizes and rectangles come in any form that `PresetGeometry` reads.
tl::expected<TextPreset, QString> decodePreset(const QByteArray &json);
tl::expected<TextPreset, QString> presetFromJson(const QJsonValue &json);
/// All presets of an array, or the first error.
tl::expected<QList<TextPreset>, QString> decodePresets(const QByteArray &json);

} // namespace tessara
