#include "Rendering/DrawnText.h"

#include <QStringView>

#include <algorithm>

namespace tessara {

namespace {

/// A letter in one or two characters, and what came with it so far.
struct Letter
{
    QStringView characters;
    bool isSymbol = false;
    qsizetype marks = 0;   // that follow each other up to it
    qsizetype symbols = 0; // from the beginning
};

bool isSymbol(char32_t code)
{
    constexpr char32_t keycap = 0x20e3;
    constexpr char32_t firstPicture = 0x2300;
    const QChar::Category category = QChar::category(code);
    return code == keycap
           || (code >= firstPicture
               && (category == QChar::Symbol_Other || category == QChar::Symbol_Modifier));
}

/// Calls `work(letter)` for each from the beginning.
template <typename Work>
void forEachLetter(QStringView text, const Work &work)
{
    Letter letter;
    for (qsizetype index = 0; index < text.size(); index += letter.characters.size()) {
        const bool isPair = index + 1 < text.size() && text[index].isHighSurrogate()
                            && text[index + 1].isLowSurrogate();
        letter.characters = text.mid(index, isPair ? 2 : 1);
        const char32_t code = isPair ? QChar::surrogateToUcs4(text[index], text[index + 1])
                                     : char32_t(text[index].unicode());
        letter.marks = QChar::isMark(code) ? letter.marks + 1 : 0;
        letter.isSymbol = isSymbol(code);
        letter.symbols += letter.isSymbol ? 1 : 0;
        work(letter);
    }
}

bool isDrawn(const Letter &letter)
{
    return letter.marks <= mostDrawnMarks
           && (!letter.isSymbol || letter.symbols <= mostDrawnSymbols);
}

QString withoutTooMany(const QString &text)
{
    bool hasTooMany = false;
    forEachLetter(text, [&](const Letter &letter) { hasTooMany = hasTooMany || !isDrawn(letter); });
    if (!hasTooMany)
        return text;
    QString fewer;
    fewer.reserve(text.size());
    forEachLetter(text, [&](const Letter &letter) {
        if (isDrawn(letter))
            fewer += letter.characters;
    });
    return fewer;
}

void cutTo(qsizetype characters, QString &text)
{
    if (text.size() <= characters)
        return;
    const bool isInPair = text[characters - 1].isHighSurrogate();
    text.truncate(isInPair ? characters - 1 : characters);
}

// Breaks of a line that other programs write (UAX #14, classes BK and NL).
bool isForeignBreak(QChar letter)
{
    return letter == QLatin1Char('\v') || letter == QLatin1Char('\f') || letter == QChar(0x85);
}

// Fonts have no shape for it. The platform draws a blank or a box, and the letters after it in one
// font or another, by what it happens to have loaded.
bool isShapeless(QChar letter)
{
    return letter.category() == QChar::Other_Control && letter != QLatin1Char('\n')
           && letter != QLatin1Char('\r') && letter != QLatin1Char('\t');
}

/// With line breaks of one character and without other control characters.
QString withPlainControls(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (std::any_of(text.cbegin(), text.cend(), isShapeless)) {
        std::replace_if(text.begin(), text.end(), isForeignBreak, QLatin1Char('\n'));
        text.removeIf(isShapeless);
    }
    return text;
}

} // namespace

qsizetype mostMarksInARow(const QString &text)
{
    qsizetype most = 0;
    forEachLetter(text, [&](const Letter &letter) { most = std::max(most, letter.marks); });
    return most;
}

QString drawnText(const QString &text)
{
    QString drawn = text;
    cutTo(2 * mostDrawnCharacters, drawn); // a line break may be two
    drawn = withPlainControls(drawn);
    cutTo(mostDrawnCharacters, drawn);
    return withoutTooMany(drawn);
}

bool isDrawnWhole(const QString &text)
{
    return text.size() <= 2 * mostDrawnCharacters
           && drawnText(text).size() == withPlainControls(text).size();
}

} // namespace tessara
