// A preset by itself, as small as a card of it.
#pragma once

#include <QImage>

#include <functional>

namespace tessara {

struct TextPreset;

/// The canvas that presets are made on, in canvas units.
constexpr QSizeF presetCanvas{1920, 1080};

/// Shapes, pictures and texts, upright on a dark ground; a picture that can't be read is left out,
/// and so is one too large to be decoded for that.
/// For any thread: nothing is shared but the preset, which nobody writes. Between two layers
/// `isWanted` is asked, and with a no the picture is null.
QImage drawPreset(
    const TextPreset &preset, QSize size,
    const std::function<bool()> &isWanted = [] { return true; });

} // namespace tessara
