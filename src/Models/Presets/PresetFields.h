// The keys of a preset file, each beside its field: one list for the reader and the writer.
#pragma once

#include "Models/Presets/TextPreset.h"

#include <concepts>
#include <type_traits>

namespace tessara {

/// The record, to be read or to be written.
template <typename Record, typename Type>
concept Is = std::same_as<std::remove_const_t<Record>, Type>;

// `fields` takes a field in one of three ways. `required` must be there; the preset's own value
// stands for a missing or null `defaulted`, which is always written; `optional` may be absent.

template <typename Fields, Is<RGBAColor> Color>
void visitFields(Fields &fields, Color &color)
{
    fields.required("red", color.red);
    fields.required("green", color.green);
    fields.required("blue", color.blue);
    fields.required("alpha", color.alpha);
}

template <typename Fields, Is<TextPresetEntry> Entry>
void visitFields(Fields &fields, Entry &entry)
{
    fields.required("name", entry.name);
    fields.required("text", entry.text);
    fields.required("fontSize", entry.fontSize);
    fields.optional("fontFamily", entry.fontFamily);
    fields.optional("fontWeight", entry.fontWeight);
    fields.required("color", entry.color);
    fields.defaulted("outlineColor", entry.outlineColor);
    fields.defaulted("outlineWidth", entry.outlineWidth);
    fields.required("position", entry.position);
    fields.optional("textBoxSize", entry.textBoxSize);
    fields.defaulted("horizontalAlignment", entry.horizontalAlignment);
    fields.optional("fieldKey", entry.fieldKey);
    fields.optional("fieldKind", entry.fieldKind);
}

template <typename Fields, Is<PresetRectEntry> Entry>
void visitFields(Fields &fields, Entry &entry)
{
    fields.required("name", entry.name);
    fields.required("position", entry.position);
    fields.required("size", entry.size);
    fields.required("color", entry.color);
    fields.required("cornerRadius", entry.cornerRadius);
    fields.required("opacity", entry.opacity);
    fields.defaulted("kind", entry.kind);
}

template <typename Fields, Is<PresetImageEntry> Entry>
void visitFields(Fields &fields, Entry &entry)
{
    fields.required("name", entry.name);
    fields.required("position", entry.position);
    fields.required("size", entry.size);
    fields.required("opacity", entry.opacity);
    fields.required("isAspectRatioLocked", entry.isAspectRatioLocked);
    fields.optional("cropRectNormalized", entry.cropRectNormalized);
    fields.optional("placeholderKey", entry.placeholderKey);
    fields.optional("contentMode", entry.contentMode);
    fields.optional("maskShape", entry.maskShape);
    fields.optional("maskPadding", entry.maskPadding);
    fields.required("pngBase64", entry.pngBase64);
}

template <typename Fields, Is<TextPreset> Preset>
void visitFields(Fields &fields, Preset &preset)
{
    fields.required("id", preset.id);
    fields.required("name", preset.name);
    fields.optional("templateType", preset.templateType);
    fields.optional("templateCategory", preset.templateCategory);
    fields.defaulted("templateTags", preset.templateTags);
    fields.optional("hasLogoPlaceholder", preset.hasLogoPlaceholder);
    fields.optional("language", preset.language);
    fields.defaulted("styleKeywords", preset.styleKeywords);
    fields.optional("preferredRunTransitionStyle", preset.preferredRunTransitionStyle);
    fields.optional("preferredRunDuration", preset.preferredRunDuration);
    fields.defaulted("rects", preset.rects);
    fields.defaulted("images", preset.images);
    fields.defaulted("entries", preset.entries);
}

} // namespace tessara
