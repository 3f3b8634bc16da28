#include "Base/Settings.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

namespace tessara {

Settings::Settings(const QString &file)
    : m_file(file)
{
    load();
}

void Settings::load()
{
    QFile stored(m_file);
    if (!stored.exists())
        return;
    if (stored.open(QIODevice::ReadOnly)) {
        const QJsonDocument document = QJsonDocument::fromJson(stored.readAll());
        stored.close();
        if (document.isObject()) {
            m_values = document.object();
            return;
        }
    }
    const QString aside = m_file + QStringLiteral(".unreadable");
    QFile::remove(aside);
    QFile::rename(m_file, aside);
}

tl::expected<void, QString> Settings::setValue(const QString &key, const QJsonValue &value)
{
    QJsonObject values = m_values;
    values.insert(key, value);
    return store(values);
}

tl::expected<void, QString> Settings::remove(const QString &key)
{
    QJsonObject values = m_values;
    values.remove(key);
    return store(values);
}

tl::expected<void, QString> Settings::store(const QJsonObject &values)
{
    if (values == m_values)
        return {};
    QSaveFile replacement(m_file);
    const QByteArray text = QJsonDocument(values).toJson();
    if (!replacement.open(QIODevice::WriteOnly)
        || !replacement.setPermissions(QFile::ReadOwner | QFile::WriteOwner)
        || replacement.write(text) != text.size() || !replacement.commit())
        return tl::unexpected(replacement.errorString());
    m_values = values;
    return {};
}

} // namespace tessara
