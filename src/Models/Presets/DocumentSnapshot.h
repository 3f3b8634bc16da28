// The content of a document as a preset.
#pragma once

#include "Models/Presets/TextPreset.h"

namespace tessara {

class CanvasDocument;

/// Texts, shapes and pictures, each kind back to front; other layers stay out, and so does a
/// picture without content. Hidden and locked states, free outlines and run settings are not kept.
TextPreset presetOf(const CanvasDocument &document, const QString &id, const QString &name);

} // namespace tessara
