// Answers the requests of a show script, one JSON object a line.
#pragma once

#include "Automation/ScriptCard.h"
#include "Automation/ScriptClock.h"
#include "Automation/ScriptFrame.h"
#include "Automation/ScriptPresets.h"

#include <QJsonObject>

namespace tessara {

class AppState;

/// A bad request is answered by an error that names what is wrong; it changes nothing.
class ScriptEngine
{
public:
    explicit ScriptEngine(AppState &app);

    /// One line of a script and its reply. Nothing for a blank line or a comment.
    std::optional<QByteArray> answerLine(const QByteArray &line);
    QJsonObject answer(const QJsonObject &request);
    /// Every request so far has succeeded.
    bool allSucceeded() const { return m_allSucceeded; }

private:
    ScriptResult perform(const QJsonObject &request);
    tl::expected<QObject *, QString> target(const QString &name);

    AppState &m_app;
    ScriptClock m_clock;
    ScriptFrame m_frame;
    ScriptCard m_card;
    ScriptPresets m_presets;
    bool m_allSucceeded = true;
};

} // namespace tessara
