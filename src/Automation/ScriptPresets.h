// The presets, for a script.
#pragma once

#include "Automation/ValueCodec.h"
#include "Models/Presets/TextPreset.h"

#include <QObject>

namespace tessara {

class AppState;

/// The lists, and the store behind them. An error is the store's own.
class ScriptPresets : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<tessara::TextPreset> userTextPresets READ userTextPresets FINAL)
    Q_PROPERTY(QList<tessara::TextPreset> systemPresets READ systemPresets FINAL)
    Q_PROPERTY(QList<tessara::TextPreset> visibleUserTextPresets READ visibleUserTextPresets FINAL)
    Q_PROPERTY(QString directory READ directory FINAL)

public:
    explicit ScriptPresets(AppState &app)
        : m_app(app)
    {
    }

    QList<TextPreset> userTextPresets() const;
    QList<TextPreset> systemPresets() const;
    QList<TextPreset> visibleUserTextPresets() const;
    QString directory() const;

    /// What is on disk by now, whatever the lists show.
    Q_INVOKABLE tessara::ScriptResult loadAll();
    Q_INVOKABLE tessara::ScriptResult save(const tessara::TextPreset &preset);
    Q_INVOKABLE tessara::ScriptResult remove(const tessara::TextPreset &preset);

private:
    AppState &m_app;
};

} // namespace tessara
