#include "Core/Macros/MacroManager.h"

#include "Core/Macros/MacroFormat.h"
#include "Models/CanvasDocument.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

QString unreadableText(const ReadMacros &read, const tl::expected<void, QString> &kept)
{
    const bool isOne = read.unreadable == 1;
    const QString what = read.isList ? QStringLiteral("%1 of %2 macros")
                                           .arg(read.unreadable)
                                           .arg(read.macros.size() + read.unreadable)
                                     : QStringLiteral("The macros");
    if (!kept)
        return QStringLiteral("%1 could not be read, and could not be set aside: %2")
            .arg(what, kept.error());
    return QStringLiteral("%1 could not be read. %2 kept in the settings under \"%3\".")
        .arg(what, isOne ? QStringLiteral("It is") : QStringLiteral("They are"),
             MacroManager::asideKey);
}

} // namespace

MacroManager::MacroManager(Clock &clock, Settings &settings, CanvasDocument *document)
    : m_clock(clock)
    , m_settings(settings)
    , m_currentDocument(document)
    , m_schedule(clock, [this](const QString &time) { checkScheduledMacros(time); })
{
    load();
}

MacroManager::~MacroManager() = default;

CanvasDocument *MacroManager::currentDocument() const
{
    return m_currentDocument;
}

// The list

void MacroManager::load()
{
    const QJsonValue stored = m_settings.value(saveKey);
    if (stored.isUndefined())
        return;
    const ReadMacros read = readMacros(stored.toString().toUtf8());
    m_macros = read.macros;
    if (stored.isString() && read.isWhole())
        return;
    m_unreadable = stored;
    const auto kept = setAside();
    m_lastErrorMessage = unreadableText(read, kept);
}

// All of the text, with what could be read of it: the next save leaves nothing of it.
tl::expected<void, QString> MacroManager::setAside()
{
    const QJsonValue before = m_settings.value(asideKey);
    QJsonArray aside = before.toArray();
    if (!before.isArray() && !before.isUndefined())
        aside.append(before);
    if (!aside.contains(m_unreadable))
        aside.append(m_unreadable);
    auto kept = m_settings.setValue(asideKey, aside);
    if (kept)
        m_unreadable = QJsonValue::Undefined;
    return kept;
}

void MacroManager::save()
{
    const auto stored = store();
    if (!stored)
        tell(QStringLiteral("The macros could not be saved: ") + stored.error());
    else if (m_isSaveFailing)
        tell(std::nullopt);
    m_isSaveFailing = !stored;
}

tl::expected<void, QString> MacroManager::store()
{
    const std::optional<QByteArray> json = encodeMacros(m_macros);
    if (!json)
        return tl::unexpected(QStringLiteral("a pause has no end"));
    if (!m_unreadable.isUndefined()) {
        if (auto kept = setAside(); !kept)
            return kept;
    }
    return m_settings.setValue(saveKey, QString::fromUtf8(*json));
}

void MacroManager::tell(const std::optional<QString> &message)
{
    m_lastErrorMessage = message;
    emit lastErrorMessageChanged();
}

void MacroManager::saveChange()
{
    save();
    emit macrosChanged();
}

Macro *MacroManager::macro(const QUuid &id)
{
    const auto found = std::find_if(m_macros.begin(), m_macros.end(),
                                    [&](const Macro &macro) { return macro.id == id; });
    return found == m_macros.end() ? nullptr : &*found;
}

void MacroManager::updateMacroLoop(const QUuid &id, bool enabled, qint64 count)
{
    Macro *changed = macro(id);
    if (!changed)
        return;
    changed->loopEnabled = enabled;
    changed->loopCount = count;
    saveChange();
}

void MacroManager::updateMacroSchedule(const QUuid &id, bool enabled, const QString &time)
{
    Macro *changed = macro(id);
    if (!changed)
        return;
    changed->scheduleEnabled = enabled;
    changed->scheduleTime = time;
    saveChange();
}

void MacroManager::renameMacro(const QUuid &id, const QString &name)
{
    const QString trimmed = name.trimmed();
    Macro *changed = macro(id);
    if (!changed || trimmed.isEmpty())
        return;
    changed->name = trimmed;
    saveChange();
}

void MacroManager::deleteMacro(const QUuid &id)
{
    if (m_macros.removeIf([&](const Macro &macro) { return macro.id == id; }) > 0)
        saveChange();
}

void MacroManager::updateStep(const QUuid &macroID, const QUuid &stepID,
                              const MacroStep::Kind &newKind)
{
    Macro *changed = macro(macroID);
    const auto *pause = std::get_if<Pause>(&newKind);
    if (!changed || (pause && !std::isfinite(pause->seconds)))
        return;
    const auto step = std::find_if(changed->steps.begin(), changed->steps.end(),
                                   [&](const MacroStep &each) { return each.id == stepID; });
    if (step == changed->steps.end())
        return;
    step->kind = newKind;
    saveChange();
}

void MacroManager::deleteStep(const QUuid &macroID, const QUuid &stepID)
{
    Macro *changed = macro(macroID);
    const auto isIt = [&](const MacroStep &step) { return step.id == stepID; };
    if (changed && changed->steps.removeIf(isIt) > 0)
        saveChange();
}

std::optional<QByteArray> MacroManager::exportJSON() const
{
    return encodeMacros(m_macros);
}

qsizetype MacroManager::importMacros(const QByteArray &data)
{
    const std::optional<QList<Macro>> imported = decodeMacros(data);
    if (!imported)
        return 0;
    for (Macro copy : *imported) {
        copy.id = QUuid::createUuid();
        m_macros.append(copy);
    }
    saveChange();
    return imported->size();
}

// Recording

void MacroManager::setIsRecording(bool recording)
{
    if (replaceValue(m_isRecording, recording))
        emit isRecordingChanged();
}

void MacroManager::record(const MacroStep::Kind &kind)
{
    const MacroStep step{QUuid::createUuid(), kind};
    const QString detail =
        m_isRecording ? QStringLiteral("● REC") : QStringLiteral("not recording");
    appendToLog(step, detail, m_isRecording);
    trimLog();
    emit logChanged();
    if (m_isRecording)
        appendStep(step);
}

void MacroManager::addPause(double seconds)
{
    if (!m_isRecording || !(seconds > 0) || !std::isfinite(seconds))
        return;
    const MacroStep step{QUuid::createUuid(), Pause{seconds}};
    appendToLog(step, QStringLiteral("● REC (manual)"), true);
    emit logChanged();
    appendStep(step);
}

void MacroManager::trimLog()
{
    if (m_log.size() > longestLog)
        m_log.remove(0, m_log.size() - longestLog);
}

void MacroManager::appendToLog(const MacroStep &step, const QString &detail, bool isRecorded)
{
    m_log.append({.id = QUuid::createUuid(),
                  .date = m_clock.wallClock(),
                  .icon = step.systemImage(),
                  .label = step.displayName(),
                  .detail = detail,
                  .isRecorded = isRecorded});
}

void MacroManager::appendStep(const MacroStep &step)
{
    m_recordingSteps.append(step);
    emit recordingStepsChanged();
}

void MacroManager::stopRecording(const QString &name)
{
    setIsRecording(false);
    const QString trimmed = name.trimmed();
    const QList<MacroStep> steps = std::exchange(m_recordingSteps, {});
    if (!steps.isEmpty())
        emit recordingStepsChanged();
    if (trimmed.isEmpty() || steps.isEmpty())
        return;
    m_macros.append(Macro{.id = QUuid::createUuid(), .name = trimmed, .steps = steps});
    saveChange();
}

void MacroManager::clearLog()
{
    m_log.clear();
    emit logChanged();
}

} // namespace tessara
