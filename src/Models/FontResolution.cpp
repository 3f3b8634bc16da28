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

/// Whether a family is there, from memory: the platform goes through all of its rules for each
/// answer. Fonts that come later are noticed.
class InstalledFamilies
{
public:
    InstalledFamilies()
    {
        QObject::connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, qGuiApp, [this] {
            const QMutexLocker lock(&m_mutex);
            m_answers.clear();
            ++m_changes;
        });
    }

    bool contains(const QString &family)
    {
        int changes = 0;
        {
            const QMutexLocker lock(&m_mutex);
            const auto known = m_answers.constFind(family);
            if (known != m_answers.constEnd())
                return *known;
            changes = m_changes;
        }
        const bool answer = QFontDatabase::hasFamily(family);
        const QMutexLocker lock(&m_mutex);
        if (m_answers.size() >= mostAnswers)
            m_answers.clear();
        if (changes == m_changes)
            m_answers.insert(family, answer);
        return answer;
    }

private:
    static constexpr qsizetype mostAnswers = 1000; // to names, as somebody types them

    QMutex m_mutex; // previews are drawn on a thread of their own
    QHash<QString, bool> m_answers;
    int m_changes = 0;
};

bool isInstalled(const QString &family)
{
    static InstalledFamilies families;
    return families.contains(family);
}

std::optional<QString> installedFamily(const QString &family)
{
    if (isInstalled(family))
        return family;
    const QString metricDouble = QStringLiteral("Liberation Sans");
    if (family.compare(QStringLiteral("Arial"), Qt::CaseInsensitive) == 0
        && isInstalled(metricDouble))
        return metricDouble;
    return std::nullopt;
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
    const std::optional<QString> installed = installedFamily(family);
    if (!installed)
        return std::nullopt;
    return makeFont({*installed}, size, weight >= QFont::Bold ? QFont::Bold : QFont::Normal);
}

} // namespace tessara
