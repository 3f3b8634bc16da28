#include "Models/FontResolution.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QHash>
#include <QMutex>
#include <QStringList>

#include <cmath>

namespace tessara {

namespace {

QString systemFamily()
{
    return QStringLiteral("Inter");
}
QString tabularFamily()
{
    return QStringLiteral("Inter Tabular");
}

// Named, so that every machine falls back to the same faces.
QStringList withFallbacks(QStringList families)
{
    return families << QStringLiteral("Noto Sans Thai") << QStringLiteral("Noto Sans Arabic")
                    << QStringLiteral("Noto Sans") << QStringLiteral("Noto Color Emoji");
}

SizedFont makeFont(const QStringList &families, double size, QFont::Weight weight)
{
    constexpr double largest = 10000; // px; no canvas shows more of a letter
    const double drawn = std::isfinite(size) && size > 0 ? std::min(size, largest) : 1;
    const int whole = std::max(1, int(std::ceil(drawn)));
    QFont face;
    face.setFamilies(withFallbacks(families));
    face.setWeight(weight);
    face.setPixelSize(whole);
    // Glyphs keep their shape at every size and at every fraction of a slide.
    face.setHintingPreference(QFont::PreferNoHinting);
    return {face, drawn / whole};
}

/// One face of a family, by its style's name.
struct FontFace
{
    QString style;
    QFont::Weight weight = QFont::Normal; // for what the fallbacks have to draw
    bool isItalic = false;
};

struct InstalledFont
{
    QString family;
    std::optional<FontFace> face; // none: any of the family
};

bool isSameName(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

QString withoutBlanks(QString name)
{
    return name.remove(QLatin1Char(' '));
}

/// The face of that full name ("Inter Semi Bold Italic") or PostScript name
/// ("Inter-SemiBoldItalic"); the PostScript name of a regular face may be the family's alone.
std::optional<InstalledFont> faceNamed(const QString &name)
{
    for (const QString &family : QFontDatabase::families()) {
        const QString squeezed = withoutBlanks(family);
        if (isSameName(name, squeezed))
            return InstalledFont{family, {}};
        if (!name.startsWith(family, Qt::CaseInsensitive)
            && !name.startsWith(squeezed, Qt::CaseInsensitive))
            continue;
        for (const QString &style : QFontDatabase::styles(family)) {
            if (isSameName(name, family + QLatin1Char(' ') + style)
                || isSameName(name, squeezed + QLatin1Char('-') + withoutBlanks(style)))
                return InstalledFont{
                    family, FontFace{style, QFont::Weight(QFontDatabase::weight(family, style)),
                                     QFontDatabase::italic(family, style)}};
        }
    }
    return std::nullopt;
}

/// What there is of a name, from memory: the platform goes through all of its rules for each
/// answer. Fonts that come later are noticed.
class InstalledFonts
{
public:
    using Answer = std::optional<InstalledFont>;

    InstalledFonts()
    {
        QObject::connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, qGuiApp, [this] {
            const QMutexLocker lock(&m_mutex);
            m_answers.clear();
            ++m_changes;
        });
    }

    Answer find(const QString &name)
    {
        int changes = 0;
        {
            const QMutexLocker lock(&m_mutex);
            const auto known = m_answers.constFind(name);
            if (known != m_answers.constEnd())
                return *known;
            changes = m_changes;
        }
        const Answer answer =
            QFontDatabase::hasFamily(name) ? InstalledFont{name, {}} : faceNamed(name);
        const QMutexLocker lock(&m_mutex);
        if (m_answers.size() >= mostAnswers)
            m_answers.clear();
        if (changes == m_changes)
            m_answers.insert(name, answer);
        return answer;
    }

private:
    static constexpr qsizetype mostAnswers = 1000; // to names, as somebody types them

    QMutex m_mutex; // previews are drawn on a thread of their own
    QHash<QString, Answer> m_answers;
    int m_changes = 0;
};

std::optional<InstalledFont> installedFont(const QString &name)
{
    static InstalledFonts fonts;
    const std::optional<InstalledFont> found = fonts.find(name);
    if (!found && isSameName(name, QStringLiteral("Arial")))
        return fonts.find(QStringLiteral("Liberation Sans")); // of the same metrics
    return found;
}

} // namespace

SizedFont systemFont(double size, QFont::Weight weight)
{
    return makeFont({systemFamily()}, size, weight);
}

SizedFont monospacedDigitSystemFont(double size, QFont::Weight weight)
{
    SizedFont font = makeFont({tabularFamily(), systemFamily()}, size, weight);
    font.face.setKerning(false); // a 4 beside a colon must not move in
    return font;
}

std::optional<SizedFont> familyFont(const QString &family, double size, QFont::Weight weight)
{
    const std::optional<InstalledFont> installed = installedFont(family);
    if (!installed)
        return std::nullopt;
    if (!installed->face)
        return makeFont({installed->family}, size,
                        weight >= QFont::Bold ? QFont::Bold : QFont::Normal);
    SizedFont font = makeFont({installed->family}, size, installed->face->weight);
    font.face.setItalic(installed->face->isItalic);
    font.face.setStyleName(installed->face->style);
    return font;
}

} // namespace tessara
