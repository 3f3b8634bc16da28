// The virtual card's instruments.
#pragma once

#include "Automation/ValueCodec.h"

#include <QJsonObject>
#include <QObject>

namespace tessara {

/// Answers an error where a real driver is loaded.
class ScriptCard : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tessara::ScriptResult devices READ devices FINAL)

public:
    ScriptResult devices() const;
    Q_INVOKABLE tessara::ScriptResult frames(int device) const;
    /// ".png" as seen on a monitor, ".raw" the bytes as sent.
    Q_INVOKABLE tessara::ScriptResult save(int device, const QString &path) const;
    Q_INVOKABLE tessara::ScriptResult fail(int device, const QString &call, int times) const;
    Q_INVOKABLE tessara::ScriptResult limit(int device, const QJsonValue &limits) const;
    Q_INVOKABLE tessara::ScriptResult remove(int device) const;
    Q_INVOKABLE tessara::ScriptResult restore(int device) const;
    /// Plays a driver of another version, major, minor, sub and extra a byte each; 0 is its own.
    Q_INVOKABLE tessara::ScriptResult setDriverVersion(quint32 version) const;
};

} // namespace tessara
