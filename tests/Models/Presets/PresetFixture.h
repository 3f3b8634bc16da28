// Presets to write, read and break.
#pragma once

#include "Models/Presets/PresetFormat.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tessara {

inline TextPresetEntry fullText()
{
    return {.name = "Headline",
            .text = "สวัสดี \"news\"\n",
            .fontSize = 98.25,
            .fontFamily = "Sarabun",
            .fontWeight = 700,
            .color = {0.1, 0.2, 0.3, 0.4},
            .outlineColor = {0.5, 0.6, 0.7, 0.8},
            .outlineWidth = 4.5,
            .position = {0.1 + 0.2, -12.75},
            .textBoxSize = QSizeF(640, 120.5),
            .horizontalAlignment = TextLayerHorizontalAlignment::center,
            .fieldKey = "headline",
            .fieldKind = TemplateFieldKind::text};
}

inline PresetRectEntry fullRect()
{
    return {.name = "Bar",
            .position = {10, 20},
            .size = {400, 1.0 / 3},
            .color = {1, 0, 0, 0.5},
            .cornerRadius = 8,
            .opacity = 0.75,
            .kind = ShapeKind::star};
}

inline PresetImageEntry fullImage()
{
    return {.name = "Logo",
            .position = {5, 6},
            .size = {64, 32},
            .opacity = 0.9,
            .isAspectRatioLocked = false,
            .cropRectNormalized = QRectF(0.1, 0.2, 0.3, 0.4),
            .placeholderKey = " logo ",
            .contentMode = ImageLayerContentMode::fitInside,
            .maskShape = ImageLayerMaskShape::hexagon,
            .maskPadding = 12,
            .pngBase64 = "iVBORw0KGgo="};
}

/// Every key of the format, with no value that stands for a missing one.
inline TextPreset fullPreset()
{
    return {.id = "News Bar/1",
            .name = "News bar",
            .templateType = "lowerThird",
            .templateCategory = "news",
            .templateTags = {"a", "b"},
            .hasLogoPlaceholder = true,
            .language = "th",
            .styleKeywords = {"flat"},
            .preferredRunTransitionStyle = LayerRunTransitionStyle::presetReveal,
            .preferredRunDuration = 0.48,
            .rects = {fullRect()},
            .images = {fullImage()},
            .entries = {fullText()}};
}

inline QJsonObject jsonOf(const TextPreset &preset)
{
    return presetToJson(preset).value_or(QJsonObject());
}

inline QByteArray bytesOf(const QJsonObject &json)
{
    return QJsonDocument(json).toJson();
}

/// The lists of a preset that hold objects.
inline const QStringList listKeys{"rects", "images", "entries"};

/// The full preset, with one key of the first object of `list` changed; of the preset itself when
/// `list` is empty. An undefined value takes the key away.
inline QJsonObject changed(const QString &list, const QString &key, const QJsonValue &value)
{
    QJsonObject preset = jsonOf(fullPreset());
    QJsonArray items = preset[list].toArray();
    QJsonObject object = list.isEmpty() ? preset : items.at(0).toObject();
    if (value.isUndefined())
        object.remove(key);
    else
        object[key] = value;
    if (list.isEmpty())
        return object;
    items[0] = object;
    preset[list] = items;
    return preset;
}

/// Why the changed preset can't be read; empty when it can.
inline QString errorOf(const QString &list, const QString &key, const QJsonValue &value)
{
    const auto preset = presetFromJson(changed(list, key, value));
    return preset ? QString() : preset.error();
}

} // namespace tessara
