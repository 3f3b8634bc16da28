// Operations and properties by name.
#pragma once

#include "Automation/ValueCodec.h"

#include <QJsonArray>
#include <QObject>

namespace tessara {

/// Calls an invokable operation with its arguments in order. Errors name what is wrong, and then
/// nothing has been called.
ScriptResult callOperation(QObject *target, const QString &operation, const QJsonArray &arguments);
ScriptResult readProperty(const QObject *target, const QString &property);
ScriptResult writeProperty(QObject *target, const QString &property, const QJsonValue &value);

/// The class without its namespace, as errors name it.
QString className(const QObject *object);

} // namespace tessara
