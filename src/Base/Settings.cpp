#include "Base/Settings.h"

#include "Base/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <cstdio>

namespace tessara {

namespace {

/// A link that leads nowhere counts as well.
bool isAnythingAt(const QString &path)
{
    return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
}

} // namespace

Settings::Settings(const QString &file)
    : m_file(file)
{
    load();
}

void Settings::load()
{
    if (!isAnythingAt(m_file))
        return;
    if (const auto text = readFile(m_file, largestFile)) {
        const QJsonDocument document = QJsonDocument::fromJson(*text);
        if (document.isObject()) {
            m_values = document.object();
            return;
        }
    }
    m_isInTheWay = true;
    putAside();
}

bool Settings::putAside()
{
    QString aside = m_file + QStringLiteral(".unreadable");
    for (int number = 2; isAnythingAt(aside); ++number)
        aside = m_file + QStringLiteral(".unreadable-%1").arg(number);
    m_isInTheWay =
        std::rename(QFile::encodeName(m_file).constData(), QFile::encodeName(aside).constData())
        != 0;
    m_loadError =
        QStringLiteral("The settings could not be read. ")
        + (m_isInTheWay ? QStringLiteral("\"%1\" is left alone, and nothing is saved.").arg(m_file)
                        : QStringLiteral("They are kept as \"%1\".").arg(aside));
    return !m_isInTheWay;
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
    if (m_isInTheWay && !putAside())
        return tl::unexpected(*m_loadError);
    const QByteArray text = QJsonDocument(values).toJson();
    if (text.size() > largestFile)
        return tl::unexpected(QStringLiteral("The settings have become too large"));
    if (auto written = writeFile(m_file, text, FileReaders::ownerOnly); !written)
        return written;
    m_values = values;
    return {};
}

} // namespace tessara
