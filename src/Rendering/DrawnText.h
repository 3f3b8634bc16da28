// How much of a text is drawn.
#pragma once

#include <QString>

namespace tessara {

/// No canvas shows as many in a size that can be read, and a list of names that rolls through has
/// a tenth of them.
constexpr qsizetype mostDrawnCharacters = 100'000;
/// Symbols that fonts have as pictures, each of which the platform unpacks anew to lay it out.
constexpr qsizetype mostDrawnSymbols = 1'000;
/// Upon one letter. Languages have up to four, and ornaments some dozens.
constexpr qsizetype mostDrawnMarks = 250;

/// What is drawn of `text`: its beginning, with line breaks of one character, without other
/// control characters, and without the marks and symbols that are too many.
QString drawnText(const QString &text);

/// False where something is left out that has a shape.
bool isDrawnWhole(const QString &text);

/// The largest number of combining marks that follow each other.
qsizetype mostMarksInARow(const QString &text);

} // namespace tessara
