#include "Base/ApplicationSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace tessara {

ApplicationSupport::ApplicationSupport()
    : ApplicationSupport(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                         + QStringLiteral("/Tessara"))
{
}

ApplicationSupport::ApplicationSupport(const QString &directory)
    : m_directory(QDir(directory).absolutePath())
{
}

QString ApplicationSupport::directory() const
{
    if (QDir().mkpath(m_directory))
        QFile::setPermissions(m_directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return m_directory;
}

QString ApplicationSupport::settingsFile() const
{
    return directory() + QStringLiteral("/settings.json");
}

QString ApplicationSupport::templateDirectory() const
{
    return m_directory + QStringLiteral("/Templates");
}

QString ApplicationSupport::privateLibraryDirectory()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath()
                           + QStringLiteral("/../lib/tessara"));
}

} // namespace tessara
