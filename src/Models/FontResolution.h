// Fonts by family and weight, as the platform has them.
#pragma once

#include <QFont>

#include <optional>

namespace tessara {

/// A font of any size, fractions included. Qt's own pixel sizes are whole, so the face is taken at
/// the next whole size and drawn at `scale`.
struct SizedFont
{
    QFont face;
    double scale = 1; // above 0, to 1 from a size of 1 up

    bool operator==(const SizedFont &) const = default;
};

/// The face of a text that asks for none; `size` in canvas units.
SizedFont systemFont(double size, QFont::Weight weight);

/// The system face with digits of one width, so that a running time does not dance.
SizedFont monospacedDigitSystemFont(double size, QFont::Weight weight);

/// The face of a family: bold from `QFont::Bold` up, else regular. A name that is no family may be
/// a face's own, full or PostScript, and then is that face at any weight. Nothing for what is not
/// installed. Arial is found in any spelling, and by its metric double where it is missing.
std::optional<SizedFont> familyFont(const QString &family, double size, QFont::Weight weight);

} // namespace tessara
