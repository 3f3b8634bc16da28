// Shows that benchmarks read from files.
#pragma once

#include "Core/Macros/Macro.h"
#include "Models/CanvasDocument.h"

namespace tessara {

/// A show drawn for a canvas 1920 wide.
struct ShowFiles
{
    /// Of the files at these paths; an empty path stands for none. Ends the program with a word
    /// about a file that can't be read.
    static ShowFiles read(const QString &presetPath, const QString &macrosPath);

    bool isEmpty() const { return !preset && macros.isEmpty(); }
    /// Adds its layers to a document whose canvas is larger by `scale`.
    void addTo(CanvasDocument &document, double scale = 1) const;

    std::optional<TextPreset> preset;
    QList<Macro> macros; // for the layers that they add
};

/// The same preset on a canvas larger by `scale`.
TextPreset scaledPreset(TextPreset preset, double scale);

/// Of the file at this path, as `ShowFiles::read` does.
std::optional<TextPreset> presetOf(const QString &path);

/// Ends the program.
[[noreturn]] void refuse(const QString &reason);

} // namespace tessara
