// A document by chance, what happens to it between two ticks, and who wants its frames.
#pragma once

#include "Core/Macros/MacroManager.h"
#include "Models/DocumentHistory.h"
#include "Rendering/FramePath/FrameTarget.h"

#include "Rendering/FramePath/RandomLayers.h"

#include <span>

namespace tessara {

/// A show as an operator would have it in a bad dream: layers of all kinds with senseless values,
/// edited, deleted, brought back, grouped, taken and played by macros between any two frames.
class RandomShow
{
public:
    explicit RandomShow(quint32 seed);

    const CanvasDocument &document() const { return m_document; }
    const std::optional<QColor> &background() const { return m_background; }
    std::span<const FrameTarget> targets() const { return m_targets; }
    Dice &dice() { return m_dice; }

    /// A few things change, or none.
    void edit();
    /// What was edited, for whoever wants to know why.
    const QStringList &story() const { return m_story; }
    /// All layers with all they have, for whoever looks into a failure.
    QString description() const;

private:
    void fillDocument();
    void editOnce();
    void addLayer();
    void replaceLayer();
    void reorder();
    void setVisibility(const QUuid &id);
    void setRunSettings(const QUuid &id);
    void slideOn();
    void setTargets();

    // What goes on in a show
    void runOnce();
    void take();
    void group();
    void applyPreset();
    void stepThroughHistory();
    void playMacro();
    MacroStep::Kind macroStep();

    void tell(const QString &what) { m_story.append(what); }
    QUuid anyID() { return m_dice.anyOf(m_document.layerOrder()); }
    QUuid newID();
    QSizeF canvasSize();
    QSize targetSize();

    Dice m_dice;
    ManualClock m_clock;
    RandomLayers m_layers{m_dice, m_clock};
    CanvasDocument m_document{m_clock, canvasSize()};
    Settings m_settings{QString()}; // nothing is stored
    MacroManager m_macros{m_clock, m_settings, &m_document};
    DocumentHistory m_history{m_document, m_clock, [this] { return m_macros.isRunning(); }};
    std::optional<QColor> m_background;
    std::vector<FrameTarget> m_targets;
    QStringList m_story;
};

} // namespace tessara
