// The manager's playback, by hand and by the clock.
#include "Core/Macros/MacroManager.h"

#include "Base/Overloaded.h"
#include "Models/CanvasDocument.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr double longestPause = 1e9; // s, some thirty years
constexpr double leastWait = 0.001;  // s in a pass; less is no rest for the main thread

} // namespace

void MacroManager::runMacro(const Macro &macro)
{
    if (isRunning() || m_isRecording)
        return;
    m_runningMacroID = macro.id;
    m_runningTask = play(macro);
    emit isRunningChanged();
}

void MacroManager::runMacroAtIndex(int index)
{
    if (index >= 0 && index < m_macros.size() && m_currentDocument)
        runMacro(m_macros[index]);
}

void MacroManager::stopRunning()
{
    m_runningTask.cancel();
    finishRunning();
}

void MacroManager::finishRunning()
{
    if (!std::exchange(m_runningMacroID, std::nullopt))
        return;
    emit isRunningChanged();
}

Task MacroManager::play(Macro macro)
{
    bool goesOn = co_await m_clock.nextTurn();
    for (qint64 pass = 1; goesOn && m_currentDocument; ++pass) {
        double waited = 0; // s
        for (const MacroStep &step : macro.steps) {
            if (!m_currentDocument)
                break;
            const auto *pause = std::get_if<Pause>(&step.kind);
            if (!pause) {
                playStep(step.kind);
            } else if (pause->seconds > 0) {
                const double seconds = std::min(pause->seconds, longestPause);
                waited += seconds;
                goesOn = co_await m_clock.sleep(Seconds{seconds});
            }
            if (!goesOn || !isRunning())
                co_return; // stopped, and its flags are clean by now
        }
        if (!macro.loopEnabled || (macro.loopCount != 0 && pass >= macro.loopCount))
            break;
        // A loop without a pause would never let go of the main thread.
        constexpr qint64 passesInARow = 100;
        if (waited < leastWait && (macro.loopCount == 0 || pass % passesInARow == 0)) {
            goesOn = co_await m_clock.sleep(Seconds{1.0 / 60});
            if (!goesOn)
                co_return;
        }
    }
    finishRunning();
}

// A layer that isn't there is skipped: the macro goes on.
void MacroManager::playStep(const MacroStep::Kind &kind)
{
    CanvasDocument &document = *m_currentDocument;
    std::visit(Overloaded{
                   [&](const ShowLayer &show) { document.takeLayerFromMacro(show.layerID, true); },
                   [&](const HideLayer &hide) { document.takeLayerFromMacro(hide.layerID, false); },
                   [](const Pause &) {},
                   [&](const SetLayerProperty &set) {
                       document.applyLayerPropertyMacro(set.layerID, set.key, set.value);
                   },
                   [&](const AddLayer &add) {
                       document.createLayerFromMacro(add.layerID, add.layerType, add.props);
                   },
               },
               kind);
}

// Each firing is spent, whether the macro could start or not.
void MacroManager::checkScheduledMacros(const QString &time)
{
    if (!m_currentDocument)
        return;
    const QList<Macro> macros = m_macros;
    for (const Macro &macro : macros) {
        if (macro.scheduleEnabled && m_schedule.hasPassedOver(macro.scheduleTime))
            logMissedFiring(macro, QStringLiteral("the program was busy or the machine asleep, or "
                                                  "its clock was set"));
    }
    for (const Macro &macro : macros) {
        const bool isDue = macro.scheduleEnabled && macro.scheduleTime == time;
        if (!isDue)
            continue;
        if (isRunning())
            logMissedFiring(macro, QStringLiteral("another macro was running"));
        else if (m_schedule.markFired(macro.id))
            fire(macro);
    }
}

void MacroManager::fire(const Macro &macro)
{
    if (m_isRecording)
        logMissedFiring(macro, QStringLiteral("a recording was under way"));
    else
        runMacro(macro);
}

void MacroManager::logMissedFiring(const Macro &macro, const QString &reason)
{
    m_log.append(
        {.id = QUuid::createUuid(),
         .date = m_clock.wallClock(),
         .icon = QStringLiteral("clock"),
         .label = QStringLiteral("Missed  \"%1\"").arg(macro.name),
         .detail = QStringLiteral("Not played at %1: %2.").arg(macro.scheduleTime, reason)});
    trimLog();
    emit logChanged();
}

} // namespace tessara
