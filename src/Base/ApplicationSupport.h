// The folder in which the application keeps what lasts between runs.
#pragma once

#include <QString>

namespace tessara {

class ApplicationSupport
{
public:
    /// The user's own folder, by the desktop's rules.
    ApplicationSupport();
    /// Everything below `directory` instead; tests and scripts never touch the user's.
    explicit ApplicationSupport(const QString &directory);

    /// Absolute, and made at the first asking, for the user's eyes only.
    QString directory() const;
    QString settingsFile() const;
    /// The user's presets; not made by asking.
    QString templateDirectory() const;
    /// Where drivers are looked for last, below the folder of the running program.
    static QString privateLibraryDirectory();

private:
    QString m_directory;
};

} // namespace tessara
