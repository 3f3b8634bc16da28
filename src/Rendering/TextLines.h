// The lines of a text, laid out as far as somebody looks.
#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QPointF>
#include <QRawFont>
#include <QRectF>
#include <QString>

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace tessara {

/// All measures are px at the face's size, down and to the right from where the first line begins.
/// What lies above the rows that are looked at takes no more than its height to know, which plain
/// letters tell without being laid out; what lies below takes nothing.
class TextLines
{
public:
    struct Line
    {
        double top = 0;
        double height = 0;
        double width = 0;    // without the blanks at which it was wrapped
        QPointF runsBegin{}; // where the runs' positions count from, seen from the line's beginning
        std::vector<QGlyphRun> runs{};
    };

    /// Without `wrapWidth` the text keeps its own line breaks and never wraps. Lines that begin at
    /// a given place grow from there: of a long one the end may be spared.
    TextLines(const QString &text, const QFont &face, std::optional<double> wrapWidth,
              bool beginsAtLeft);

    /// Lays out all that reaches into `seen`, as far as it isn't yet.
    void layOut(const QRectF &seen);
    /// Of the lines that are laid out.
    double widest() const { return m_widest; }
    /// From the top to the end of the last line that was looked at.
    double height() const { return m_height; }
    /// How high the same text stands that never wraps, at a scale.
    double unwrappedHeight(double scale);

    /// Each line that reaches into `seen`, which was laid out, with its top; from the highest.
    template <typename Work>
    void forEachLine(const QRectF &seen, const Work &work) const
    {
        for (const Paragraph &paragraph : m_paragraphs) {
            if (paragraph.top > seen.bottom() + m_overhang)
                return;
            for (const Line &line : paragraph.lines) {
                const double top = paragraph.top + line.top;
                if (top <= seen.bottom() + m_overhang
                    && top + line.height >= seen.top() - m_overhang)
                    work(line, top);
            }
        }
    }
    /// How many characters were laid out, those laid out again among them.
    qsizetype laidOutCharacters() const { return m_laidOutCharacters; }

private:
    /// How far a line reaches, all of whose parts stand on one base line.
    struct Extent
    {
        double ascent = 0;
        double descent = 0;
        double ascentAndLeading = 0;

        double height() const { return descent + std::max(ascentAndLeading, ascent); }
        Extent united(const Extent &other) const;
    };
    /// Laid out by itself, since the direction of writing is found by the paragraph.
    struct Paragraph
    {
        QString text;
        double top = std::numeric_limits<double>::infinity(); // as long as nobody looked so far
        double height = 0;                                    // of the lines
        double reach = -1; // how far it is laid out: down, or to the right where nothing wraps
        Extent oneLine{};  // of all lines
        std::optional<bool> isPlain{};
        std::vector<Line> lines{};
    };

    void layOut(Paragraph &paragraph, double reach);
    void take(Paragraph &paragraph, const QString &text, double reach);
    bool isPlain(Paragraph &paragraph);
    const Extent &plainExtent();

    QFont m_face;
    std::optional<double> m_wrapWidth;
    bool m_mayCutLines;
    double m_overhang; // of glyphs beyond their lines
    std::vector<Paragraph> m_paragraphs;
    std::optional<QRawFont> m_rawFace;
    std::optional<Extent> m_plainExtent;
    double m_widest = 0;
    double m_height = 0;
    qsizetype m_laidOutCharacters = 0;
};

} // namespace tessara
