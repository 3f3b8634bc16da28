// The application's one long-lived object.
#pragma once

#include "Core/DeckLinkOutputRouting.h"
#include "Core/Macros/MacroManager.h"
#include "Core/Macros/MacroRecorder.h"
#include "Core/OutputLoop.h"
#include "Core/RealtimeClock.h"
#include "DeckLink/DeckLinkManager.h"
#include "Models/CanvasDocument.h"
#include "Models/DocumentHistory.h"
#include "Models/Runlist.h"
#include "Rendering/RenderEngine.h"

#include "Base/ApplicationSupport.h"
#include "Base/Settings.h"

namespace tessara {

/// Owns the document, the outputs and what keeps them going. Windows, scripts and tests drive the
/// application through it.
class AppState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tessara::CanvasDocument *document READ document CONSTANT FINAL)
    Q_PROPERTY(tessara::Runlist *runlist READ runlist CONSTANT FINAL)
    Q_PROPERTY(tessara::MacroManager *macros READ macros CONSTANT FINAL)
    Q_PROPERTY(tessara::UndoStack *undoStack READ undoStack CONSTANT FINAL)
    Q_PROPERTY(tessara::DeckLinkManager *deckLinkManager READ deckLinkManager CONSTANT FINAL)
    Q_PROPERTY(tessara::DeckLinkManager *deckLinkKeyManager READ deckLinkKeyManager CONSTANT FINAL)
    Q_PROPERTY(tessara::OutputRouting::DeckLinkOutputRouting deckLinkOutputRouting READ
                   deckLinkOutputRouting WRITE setDeckLinkOutputRouting NOTIFY
                       deckLinkOutputRoutingChanged FINAL)
    Q_PROPERTY(bool isDeckLinkOutputRunning READ isDeckLinkOutputRunning NOTIFY outputChanged FINAL)
    Q_PROPERTY(bool canStartDeckLinkOutputFromConfig READ canStartDeckLinkOutputFromConfig NOTIFY
                   outputChanged FINAL)
    Q_PROPERTY(bool isKeyModeReady READ isKeyModeReady NOTIFY outputChanged FINAL)
    Q_PROPERTY(
        std::optional<QString> keyModeStatusText READ keyModeStatusText NOTIFY outputChanged FINAL)
    /// Ticks of the running output that the main thread was too busy to take.
    Q_PROPERTY(quint64 missedTicks READ missedTicks FINAL)
    /// Kept for scripts and logs; the windows show the managers' own messages.
    TESSARA_OBSERVABLE(std::optional<QString>, lastErrorMessage, setLastErrorMessage)
    TESSARA_OBSERVABLE(std::optional<QUrl>, lastExportURL, setLastExportURL)

public:
    AppState(Clock &clock, const ApplicationSupport &support);
    ~AppState() override;

    CanvasDocument *document() { return &m_document; }
    const CanvasDocument *document() const { return &m_document; }
    Runlist *runlist() { return &m_runlist; }
    MacroManager *macros() { return &m_macros; }
    UndoStack *undoStack() { return &m_history.undoStack(); }
    DeckLinkManager *deckLinkManager() { return &m_fill; }
    DeckLinkManager *deckLinkKeyManager() { return &m_key; }
    Clock &clock() { return m_clock; }
    Settings &settings() { return m_settings; }

    DeckLinkOutputRouting deckLinkOutputRouting() const { return m_routing; }
    /// A change stops a running output, and never starts one.
    void setDeckLinkOutputRouting(DeckLinkOutputRouting routing);

    bool isDeckLinkOutputRunning() const;
    bool canStartDeckLinkOutputFromConfig() const;
    bool isKeyModeReady() const;
    std::optional<QString> keyModeStatusText() const;

    /// A failure leaves its text in `lastErrorMessage`, and the output stopped.
    Q_INVOKABLE void startDeckLinkOutput();
    Q_INVOKABLE void stopDeckLinkOutput();
    /// Lists the devices of both managers anew.
    Q_INVOKABLE void refreshDeckLinkDevices();
    Q_INVOKABLE void ensureDistinctKeyDeviceSelection();
    Q_INVOKABLE void syncKeyModeWithFillMode();

    /// A text layer that shows the time of day.
    Q_INVOKABLE tessara::TextLayer *addTimerLayer();
    Q_INVOKABLE void updateRealtimeTimerText();

    quint64 missedTicks() const { return m_outputLoop ? m_outputLoop->missedTicks() : 0; }
    /// Null while the output is stopped.
    const OutputLoop *outputLoop() const { return m_outputLoop.get(); }

signals:
    void deckLinkOutputRoutingChanged();
    /// A device, a mode, a message or the state of the output has changed.
    void outputChanged();

private:
    void watchManagers();
    tl::expected<void, QString> startManagers();
    tl::expected<void, QString> startKeyAndFill();
    double outputRate() const;
    void sendCurrentFrameToDeckLink();
    tl::expected<void, QString> sendFrames(const DeckLinkDisplayMode &mode);
    tl::expected<void, QString> sendKeyFrame(const QImage &frame);

    Clock &m_clock;
    Settings m_settings;
    CanvasDocument m_document;
    Runlist m_runlist{m_document};
    MacroManager m_macros;
    MacroRecorder m_macroRecorder;
    DocumentHistory m_history;
    RenderEngine m_renderEngine;
    DeckLinkManager m_fill;
    DeckLinkManager m_key;
    DeckLinkOutputRouting m_routing = DeckLinkOutputRouting::fillOnly;
    bool m_isSendingFrame = false;
    RealtimeClock m_realtimeClock;
    std::unique_ptr<OutputLoop> m_outputLoop;
};

} // namespace tessara
