#include "Automation/ScriptCall.h"

#include "Base/WholeFile.h"

#include <QMetaMethod>
#include <QMetaProperty>

#include <array>

namespace tessara {

namespace {

constexpr int largestArgumentCount = 10; // of a call through the meta-object

std::vector<QMetaMethod> operationsNamed(const QMetaObject *type, const QString &name)
{
    std::vector<QMetaMethod> found;
    for (int index = QObject::staticMetaObject.methodCount(); index < type->methodCount();
         ++index) {
        const QMetaMethod method = type->method(index);
        const bool isOperation =
            method.methodType() != QMetaMethod::Signal && method.access() == QMetaMethod::Public;
        if (isOperation && QLatin1String(method.name()) == name)
            found.push_back(method);
    }
    return found;
}

tl::expected<QVariantList, QString> decodeArguments(const QMetaMethod &method,
                                                    const QJsonArray &arguments)
{
    QVariantList values;
    for (int index = 0; index < method.parameterCount(); ++index) {
        const auto value = decodeValue(arguments[index], method.parameterMetaType(index));
        if (!value)
            return tl::unexpected(QStringLiteral("argument %1 of '%2': %3")
                                      .arg(index + 1)
                                      .arg(QLatin1String(method.name()), value.error()));
        // As one element, whatever it holds: a list must not be spliced in.
        values.push_back(*value);
    }
    return values;
}

ScriptResult invoke(QObject *target, const QMetaMethod &method, const QVariantList &values)
{
    std::array<QGenericArgument, largestArgumentCount> arguments;
    for (qsizetype index = 0; index < values.size(); ++index)
        arguments[std::size_t(index)] = QGenericArgument(
            method.parameterMetaType(int(index)).name(), values[index].constData());
    const QMetaType answerType = method.returnMetaType();
    const bool answers = answerType.id() != QMetaType::Void;
    QVariant answer = answers ? QVariant(answerType) : QVariant();
    const QGenericReturnArgument slot =
        answers ? QGenericReturnArgument(method.typeName(), answer.data())
                : QGenericReturnArgument();
    const auto &a = arguments;
    if (!method.invoke(target, Qt::DirectConnection, slot, a[0], a[1], a[2], a[3], a[4], a[5], a[6],
                       a[7], a[8], a[9]))
        return tl::unexpected(
            QStringLiteral("'%1' could not be called").arg(QLatin1String(method.name())));
    return encodeValue(answer);
}

bool answersBytes(const QMetaMethod &method)
{
    return method.returnMetaType() == QMetaType::fromType<std::optional<QByteArray>>();
}

/// Bytes go into a file, by a path that stands behind the operation's own arguments.
ScriptResult invokeIntoFile(QObject *target, const QMetaMethod &method, const QJsonValue &path)
{
    std::optional<QByteArray> bytes;
    const QGenericReturnArgument slot(method.typeName(), &bytes);
    if (!method.invoke(target, Qt::DirectConnection, slot) || !bytes)
        return tl::unexpected(
            QStringLiteral("'%1' gave nothing").arg(QLatin1String(method.name())));
    if (const auto written = writeFile(path.toString(), *bytes); !written)
        return tl::unexpected(
            QStringLiteral("'%1' can't be written: %2").arg(path.toString(), written.error()));
    return path;
}

QString countError(const QString &operation, const std::vector<QMetaMethod> &candidates,
                   qsizetype given)
{
    QStringList counts;
    for (const QMetaMethod &method : candidates)
        counts.append(QString::number(method.parameterCount()));
    counts.removeDuplicates();
    return QStringLiteral("'%1' takes %2 arguments, not %3")
        .arg(operation, counts.join(QStringLiteral(" or ")))
        .arg(given);
}

tl::expected<QMetaProperty, QString> propertyNamed(const QObject *target, const QString &name)
{
    const QMetaObject *type = target->metaObject();
    const int index = type->indexOfProperty(name.toLatin1().constData());
    // The look-up ends at a zero byte in the name, and the name must not.
    if (index < QObject::staticMetaObject.propertyCount()
        || name != QLatin1String(type->property(index).name()))
        return tl::unexpected(
            QStringLiteral("no property '%1' on %2").arg(name, className(target)));
    return type->property(index);
}

} // namespace

QString className(const QObject *object)
{
    const QString name = QLatin1String(object->metaObject()->className());
    return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

ScriptResult callOperation(QObject *target, const QString &operation, const QJsonArray &arguments)
{
    const std::vector<QMetaMethod> candidates = operationsNamed(target->metaObject(), operation);
    if (candidates.empty())
        return tl::unexpected(
            QStringLiteral("no operation '%1' on %2").arg(operation, className(target)));
    QString error = countError(operation, candidates, arguments.size());
    for (const QMetaMethod &method : candidates) {
        if (answersBytes(method) && arguments.size() == 1 && arguments[0].isString())
            return invokeIntoFile(target, method, arguments[0]);
        if (method.parameterCount() != arguments.size())
            continue;
        const tl::expected<QVariantList, QString> values = decodeArguments(method, arguments);
        if (values)
            return invoke(target, method, *values);
        error = values.error();
    }
    return tl::unexpected(error);
}

ScriptResult readProperty(const QObject *target, const QString &property)
{
    return propertyNamed(target, property).and_then([&](const QMetaProperty &found) {
        return encodeValue(found.read(target));
    });
}

ScriptResult writeProperty(QObject *target, const QString &property, const QJsonValue &value)
{
    const tl::expected<QMetaProperty, QString> found = propertyNamed(target, property);
    if (!found)
        return tl::unexpected(found.error());
    if (!found->isWritable())
        return tl::unexpected(
            QStringLiteral("property '%1' on %2 is read-only").arg(property, className(target)));
    const tl::expected<QVariant, QString> decoded = decodeValue(value, found->metaType());
    if (!decoded)
        return tl::unexpected(QStringLiteral("property '%1': %2").arg(property, decoded.error()));
    if (!found->write(target, *decoded))
        return tl::unexpected(QStringLiteral("property '%1' could not be written").arg(property));
    return QJsonValue();
}

} // namespace tessara
