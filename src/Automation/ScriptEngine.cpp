#include "Automation/ScriptEngine.h"

#include "Automation/DocumentState.h"
#include "Automation/ScriptCall.h"
#include "Core/AppState.h"

#include <QJsonDocument>

namespace tessara {

namespace {

struct Path
{
    QString target;
    QString member;
};

// A layer's target holds no dot, so the last one parts it from its member.
tl::expected<Path, QString> pathIn(const QJsonObject &request, const QString &verb)
{
    const QString text = request.value(verb).toString();
    const qsizetype dot = text.lastIndexOf(QLatin1Char('.'));
    if (dot < 1 || dot == text.size() - 1)
        return tl::unexpected(QStringLiteral("'%1' wants \"TARGET.name\"").arg(verb));
    return Path{text.left(dot), text.mid(dot + 1)};
}

tl::expected<QString, QString> verbOf(const QJsonObject &request)
{
    QStringList verbs;
    for (const char *verb : {"call", "get", "set"}) {
        if (request.contains(QLatin1String(verb)))
            verbs.append(QLatin1String(verb));
    }
    if (verbs.size() != 1)
        return tl::unexpected(QStringLiteral("a request has one of call, get and set"));
    QStringList allowed{verbs.first(), QStringLiteral("id")};
    if (verbs.first() == QStringLiteral("call"))
        allowed.append(QStringLiteral("args"));
    if (verbs.first() == QStringLiteral("set"))
        allowed.append(QStringLiteral("value"));
    for (const QString &key : request.keys()) {
        if (!allowed.contains(key))
            return tl::unexpected(QStringLiteral("unknown key '%1' in the request").arg(key));
    }
    return verbs.first();
}

} // namespace

ScriptEngine::ScriptEngine(AppState &app)
    : m_app(app)
    , m_clock(app.clock())
    , m_frame(*app.document())
    , m_presets(app)
{
}

std::optional<QByteArray> ScriptEngine::answerLine(const QByteArray &line)
{
    const QByteArray text = line.trimmed();
    if (text.isEmpty() || text.startsWith('#'))
        return std::nullopt;
    QJsonParseError error;
    const QJsonDocument request = QJsonDocument::fromJson(text, &error);
    QJsonObject reply;
    if (request.isObject()) {
        reply = answer(request.object());
    } else {
        m_allSucceeded = false;
        const QString reason = error.error == QJsonParseError::NoError
                                   ? QStringLiteral("a request is an object")
                                   : QStringLiteral("not JSON: ") + error.errorString();
        reply = {{QStringLiteral("ok"), false}, {QStringLiteral("error"), reason}};
    }
    return QJsonDocument(reply).toJson(QJsonDocument::Compact);
}

QJsonObject ScriptEngine::answer(const QJsonObject &request)
{
    const ScriptResult result = perform(request);
    QJsonObject reply{{QStringLiteral("ok"), result.has_value()}};
    if (request.contains(QStringLiteral("id")))
        reply.insert(QStringLiteral("id"), request.value(QStringLiteral("id")));
    if (result)
        reply.insert(QStringLiteral("result"), *result);
    else
        reply.insert(QStringLiteral("error"), result.error());
    m_allSucceeded = m_allSucceeded && result;
    return reply;
}

ScriptResult ScriptEngine::perform(const QJsonObject &request)
{
    const tl::expected<QString, QString> verb = verbOf(request);
    if (!verb)
        return tl::unexpected(verb.error());
    const tl::expected<Path, QString> path = pathIn(request, *verb);
    if (!path)
        return tl::unexpected(path.error());
    const tl::expected<QObject *, QString> object = target(path->target);
    if (!object)
        return tl::unexpected(object.error());
    if (*verb == QStringLiteral("call")) {
        const QJsonValue arguments = request.value(QStringLiteral("args"));
        if (!arguments.isArray() && !arguments.isUndefined())
            return tl::unexpected(QStringLiteral("'args' is an array"));
        return callOperation(*object, path->member, arguments.toArray());
    }
    if (*verb == QStringLiteral("set")) {
        if (!request.contains(QStringLiteral("value")))
            return tl::unexpected(QStringLiteral("'set' wants a value"));
        return writeProperty(*object, path->member, request.value(QStringLiteral("value")));
    }
    if (*object == m_app.document() && path->member == QStringLiteral("state"))
        return QJsonValue(documentState(*m_app.document()));
    return readProperty(*object, path->member);
}

tl::expected<QObject *, QString> ScriptEngine::target(const QString &name)
{
    const std::pair<const char *, QObject *> targets[] = {
        {"app", &m_app},
        {"document", m_app.document()},
        {"runlist", m_app.runlist()},
        {"undo", m_app.undoStack()},
        {"macros", m_app.macros()},
        {"presets", &m_presets},
        {"fill", m_app.deckLinkManager()},
        {"key", m_app.deckLinkKeyManager()},
        {"clock", &m_clock},
        {"frame", &m_frame},
        {"card", &m_card},
    };
    for (const auto &[known, object] : targets) {
        if (name == QLatin1String(known))
            return object;
    }
    const QString layerPrefix = QStringLiteral("layer:");
    if (!name.startsWith(layerPrefix))
        return tl::unexpected(QStringLiteral("unknown target '%1'").arg(name));
    Layer *layer = m_app.document()->layer(QUuid(name.mid(layerPrefix.size())));
    if (!layer)
        return tl::unexpected(QStringLiteral("no layer '%1'").arg(name.mid(layerPrefix.size())));
    return layer;
}

} // namespace tessara
