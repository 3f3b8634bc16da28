// Writes where a full disk empties the file.
#include "Base/WholeFile.h"
#include <QFile>
#include <QSaveFile> // wrong
#include <fstream> // wrong

void wrong(const QString &path, const QByteArray &bytes)
{
    QSaveFile safe(path); // wrong
    QFile file(path);
    file.open(QIODevice::WriteOnly | QIODevice::Truncate); // wrong
    file.open(QFile::ReadWrite); // wrong
    QSettings settings(path, QSettings::IniFormat); // wrong
    const int number = open("a", O_WRONLY | O_CREAT, 0600); // wrong
    std::FILE *stream = fopen("a", "w"); // wrong
    std::ofstream out("a"); // wrong
}

void right(const QString &path, const QByteArray &bytes)
{
    // not: QSaveFile file(path);
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    const int number = open("a", O_RDONLY | O_CLOEXEC);
    const int shared = shm_open("a", O_RDWR, 0);
    const auto written = writeFile(path, bytes);
    QImage().save(&buffer, "PNG");
}
