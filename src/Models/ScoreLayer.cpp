#include "Models/ScoreLayer.h"

#include "Models/LayerGeometry.h"

namespace tessara {

namespace {

struct SportValues
{
    const char *homeTeam;
    const char *awayTeam;
    qint64 homeScore;
    qint64 awayScore;
    const char *period;
    const char *clock;
};

SportValues valuesOf(ScoreSportPreset preset)
{
    switch (preset) {
    case ScoreSportPreset::football:
        return {"HOME", "AWAY", 1, 0, "1ST", "12:34"};
    case ScoreSportPreset::basketball:
        return {"LAL", "BOS", 98, 101, "Q4", "02:15"};
    case ScoreSportPreset::volleyball:
        return {"THA", "JPN", 2, 1, "SET 3", "18-17"};
    case ScoreSportPreset::badminton:
        return {"CHN", "INA", 21, 19, "GAME 1", "-"};
    case ScoreSportPreset::futsal:
        return {"BKK FC", "CNX FC", 3, 2, "2ND", "08:41"};
    case ScoreSportPreset::baseball:
        return {"YAN", "LAD", 4, 5, "TOP 8", "B2 S1 O1"};
    }
    Q_UNREACHABLE();
}

ScorePalette titleBarPalette(ScoreSportPreset preset)
{
    ScorePalette palette;
    palette.background = {0.03, 0.03, 0.05, 1};
    palette.center = {0.07, 0.08, 0.1, 1};
    if (preset == ScoreSportPreset::basketball) {
        palette.home = {0.35, 0.16, 0.62, 1};
        palette.away = {0.03, 0.42, 0.16, 1};
    } else {
        palette.home = {0.16, 0.3, 0.74, 1};
        palette.away = {0.7, 0.14, 0.22, 1};
    }
    return palette;
}

ScorePalette stripPalette(ScoreSportPreset preset)
{
    ScorePalette palette;
    palette.background = {0.02, 0.03, 0.05, 1};
    palette.center = {0.13, 0.14, 0.17, 1};
    if (preset == ScoreSportPreset::baseball) {
        palette.home = {0.11, 0.36, 0.72, 1};
        palette.away = {0.78, 0.2, 0.22, 1};
    } else if (preset == ScoreSportPreset::badminton) {
        palette.home = {0.1, 0.4, 0.9, 1};
        palette.away = {0.78, 0.15, 0.24, 1};
    } else {
        palette.home = {0.17, 0.31, 0.79, 1};
        palette.away = {0.72, 0.12, 0.21, 1};
    }
    return palette;
}

} // namespace

ScoreLayer::ScoreLayer(const QUuid &id, const QString &name, ScoreTemplate scoreTemplate,
                       ScoreSportPreset sportPreset, QPointF position, QSizeF size,
                       const std::optional<QRectF> &cropRectNormalized)
    : AspectLockedLayer(id, name, position, size)
    , m_sportPreset(sportPreset)
    , m_template(scoreTemplate)
{
    if (cropRectNormalized)
        m_cropRectNormalized = sanitizedNormalizedRect(*cropRectNormalized);
    setLockedAspectRatio(aspectRatio(size).value_or(standardAspectRatio));
    applySportPreset();
}

void ScoreLayer::setScoreTemplate(ScoreTemplate scoreTemplate)
{
    if (replaceValue(m_template, scoreTemplate))
        emit templateChanged();
}

QSizeF ScoreLayer::templateSize(ScoreTemplate scoreTemplate)
{
    switch (scoreTemplate) {
    case ScoreTemplate::wideBroadcast:
        return {960, 128};
    case ScoreTemplate::compactStrip:
        return {900, 102};
    case ScoreTemplate::titleBar:
        return {1180, 132};
    }
    Q_UNREACHABLE();
}

void ScoreLayer::applySportPreset()
{
    const SportValues values = valuesOf(m_sportPreset);
    setHomeTeam(QString::fromLatin1(values.homeTeam));
    setAwayTeam(QString::fromLatin1(values.awayTeam));
    setHomeScore(values.homeScore);
    setAwayScore(values.awayScore);
    setPeriod(QString::fromLatin1(values.period));
    setClock(QString::fromLatin1(values.clock));
}

void ScoreLayer::applyTemplateSize()
{
    setSize(templateSize(m_template));
    if (isAspectRatioLocked())
        setLockedAspectRatio(aspectRatio(size()).value_or(standardAspectRatio));
}

ScorePalette ScoreLayer::palette() const
{
    if (m_customPalette)
        return *m_customPalette;
    return m_template == ScoreTemplate::titleBar ? titleBarPalette(m_sportPreset)
                                                 : stripPalette(m_sportPreset);
}

} // namespace tessara
