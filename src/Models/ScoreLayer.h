// A score bar.
#pragma once

#include "Models/Layer.h"
#include "Models/LayerEnums.h"
#include "Models/RGBAColor.h"

namespace tessara {

/// The colours of a score bar.
struct ScorePalette
{
    Q_GADGET
    Q_PROPERTY(tessara::RGBAColor background MEMBER background FINAL)
    Q_PROPERTY(tessara::RGBAColor home MEMBER home FINAL)
    Q_PROPERTY(tessara::RGBAColor center MEMBER center FINAL)
    Q_PROPERTY(tessara::RGBAColor away MEMBER away FINAL)
    Q_PROPERTY(tessara::RGBAColor badge MEMBER badge FINAL)
    Q_PROPERTY(tessara::RGBAColor text MEMBER text FINAL)

public:
    RGBAColor background;
    RGBAColor home;
    RGBAColor center;
    RGBAColor away;
    RGBAColor badge{0.95, 0.95, 0.96, 1};
    RGBAColor text;

    bool operator==(const ScorePalette &) const = default;
};

class ScoreLayer : public AspectLockedLayer
{
    Q_OBJECT
    // The template of the bar; `template` is no name that C++ lets us have.
    Q_PROPERTY(tessara::ScoreTemplate template READ scoreTemplate WRITE setScoreTemplate NOTIFY
                   templateChanged FINAL)
    TESSARA_OBSERVABLE(tessara::ScoreSportPreset, sportPreset, setSportPreset)
    TESSARA_OBSERVABLE(QString, homeTeam, setHomeTeam, QStringLiteral("HOME"))
    TESSARA_OBSERVABLE(QString, awayTeam, setAwayTeam, QStringLiteral("AWAY"))
    TESSARA_OBSERVABLE(qint64, homeScore, setHomeScore, 0)
    TESSARA_OBSERVABLE(qint64, awayScore, setAwayScore, 0)
    TESSARA_OBSERVABLE(QString, period, setPeriod, QStringLiteral("1ST"))
    TESSARA_OBSERVABLE(QString, clock, setClock, QStringLiteral("12:00"))
    TESSARA_OBSERVABLE(std::optional<tessara::ScorePalette>, customPalette, setCustomPalette)
    TESSARA_OBSERVABLE(std::optional<QRectF>, cropRectNormalized, setCropRectNormalized)
    Q_PROPERTY(tessara::ScorePalette palette READ palette FINAL)

public:
    /// Teams, scores, period and clock are those of `sportPreset`.
    ScoreLayer(const QUuid &id, const QString &name, ScoreTemplate scoreTemplate,
               ScoreSportPreset sportPreset, QPointF position, QSizeF size,
               const std::optional<QRectF> &cropRectNormalized = {});

    ScoreTemplate scoreTemplate() const { return m_template; }
    void setScoreTemplate(ScoreTemplate scoreTemplate);

    /// The size that a template is drawn for, in canvas units.
    static QSizeF templateSize(ScoreTemplate scoreTemplate);

    /// Overwrites teams, scores, period and clock.
    Q_INVOKABLE void applySportPreset();
    Q_INVOKABLE void applyTemplateSize();
    /// The custom palette, or the one of template and sport.
    ScorePalette palette() const;

    Q_SIGNAL void templateChanged();

private:
    ScoreTemplate m_template;
};

} // namespace tessara
