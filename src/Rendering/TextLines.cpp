#include "Rendering/TextLines.h"

#include <QTextLayout>

#include "Rendering/DrawnText.h"

#include <limits>

namespace tessara {

namespace {

constexpr double endless = std::numeric_limits<double>::infinity();
// The platform shapes as many at a time, so that what follows changes nothing in them.
constexpr qsizetype shapedAtOnce = 4096; // characters

QTextOption textOption(bool wraps)
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    option.setUseDesignMetrics(true);
    if (!wraps)
        option.setFlags(QTextOption::IncludeTrailingSpaces);
    return option;
}

// Letters of left-to-right writing that stand side by side, whatever their neighbours are.
bool standsAlone(QChar letter)
{
    constexpr char16_t firstSymbol = 0x2100; // of those that may be little pictures
    const bool isLatin =
        letter.script() == QChar::Script_Latin || letter.script() == QChar::Script_Common;
    return letter.unicode() < firstSymbol && isLatin
           && (letter.isLetterOrNumber() || letter.isPunct() || letter.isSymbol()
               || letter.category() == QChar::Separator_Space);
}

} // namespace

TextLines::Extent TextLines::Extent::united(const Extent &other) const
{
    return {std::max(ascent, other.ascent), std::max(descent, other.descent),
            std::max(ascentAndLeading, other.ascentAndLeading)};
}

TextLines::TextLines(const QString &text, const QFont &face, std::optional<double> wrapWidth,
                     bool beginsAtLeft)
    : m_face(face)
    , m_wrapWidth(wrapWidth)
    , m_mayCutLines(beginsAtLeft && !wrapWidth)
{
    constexpr double ofLetters = 2; // em, of the most ornate
    constexpr double ofMark = 0.5;  // em that it may stand above the one below it
    m_overhang = (ofLetters + ofMark * double(mostMarksInARow(text))) * face.pixelSize();
    for (const QString &paragraph : text.split(QLatin1Char('\n')))
        m_paragraphs.push_back({paragraph});
}

void TextLines::layOut(const QRectF &seen)
{
    double top = 0;
    for (Paragraph &paragraph : m_paragraphs) {
        if (top > seen.bottom() + m_overhang)
            break;
        paragraph.top = top;
        const double reach =
            m_wrapWidth ? seen.bottom() + m_overhang - top : seen.right() + m_overhang;
        if (paragraph.reach < reach) {
            const bool isOneLine = !m_wrapWidth && isPlain(paragraph);
            const double oneLine = isOneLine ? plainExtent().height() : endless;
            if (top + oneLine < seen.top() - m_overhang)
                paragraph.height = oneLine;
            else
                layOut(paragraph, reach);
        }
        top += paragraph.height;
        m_height = std::max(m_height, top);
    }
}

// A wrapped line shows its height only when it is laid out.
double TextLines::unwrappedHeight(double scale)
{
    double height = 0;
    for (Paragraph &paragraph : m_paragraphs) {
        const bool isKnown = paragraph.reach == endless;
        if (!isKnown && !isPlain(paragraph))
            layOut(paragraph, endless);
        const Extent &extent = paragraph.reach == endless ? paragraph.oneLine : plainExtent();
        height += extent.height() * scale;
    }
    return height;
}

void TextLines::layOut(Paragraph &paragraph, double reach)
{
    qsizetype characters = paragraph.text.size();
    if (m_mayCutLines && characters > shapedAtOnce && isPlain(paragraph))
        characters = shapedAtOnce;
    take(paragraph, paragraph.text.left(characters), reach);
    while (characters < paragraph.text.size() && paragraph.lines.front().width < reach) {
        characters *= 2;
        take(paragraph, paragraph.text.left(characters), reach);
    }
    if (characters < paragraph.text.size())
        paragraph.reach = paragraph.lines.front().width;
}

void TextLines::take(Paragraph &paragraph, const QString &text, double reach)
{
    paragraph.lines.clear();
    paragraph.oneLine = {};
    m_laidOutCharacters += text.size();
    QTextLayout layout(text, m_face);
    layout.setCacheEnabled(true);
    layout.setTextOption(textOption(m_wrapWidth.has_value()));
    layout.beginLayout();
    constexpr double unlimited = 1e6; // px
    const double bottom = m_wrapWidth ? reach : endless;
    double top = 0;
    bool isWhole = false;
    while (top <= bottom) {
        QTextLine line = layout.createLine();
        isWhole = !line.isValid();
        if (isWhole)
            break;
        line.setLineWidth(m_wrapWidth.value_or(unlimited));
        const Extent extent{line.ascent(), line.descent(), line.ascent() + line.leading()};
        paragraph.lines.push_back({top, extent.height(), line.naturalTextWidth()});
        top += extent.height();
        paragraph.oneLine = paragraph.oneLine.united(extent);
        m_widest = std::max(m_widest, line.naturalTextWidth());
    }
    layout.endLayout();
    for (std::size_t index = 0; index < paragraph.lines.size(); ++index) {
        const QTextLine laidOut = layout.lineAt(int(index));
        paragraph.lines[index].runsBegin = {-laidOut.x(), -laidOut.y()};
        const QList<QGlyphRun> runs = laidOut.glyphRuns();
        paragraph.lines[index].runs.assign(runs.begin(), runs.end());
    }
    paragraph.height = top;
    paragraph.reach = isWhole ? endless : reach;
}

bool TextLines::isPlain(Paragraph &paragraph)
{
    if (!paragraph.isPlain) {
        if (!m_rawFace)
            m_rawFace = QRawFont::fromFont(m_face);
        const QString &text = paragraph.text;
        paragraph.isPlain = std::all_of(text.begin(), text.end(), [this](QChar letter) {
            return standsAlone(letter) && m_rawFace->supportsCharacter(letter);
        });
    }
    return *paragraph.isPlain;
}

const TextLines::Extent &TextLines::plainExtent()
{
    if (!m_plainExtent) {
        Paragraph letter{QStringLiteral("x")};
        const double widest = m_widest;
        take(letter, letter.text, endless);
        m_widest = widest;
        m_plainExtent = letter.oneLine;
    }
    return *m_plainExtent;
}

} // namespace tessara
