// The presets that ship with the application.
#pragma once

#include "Models/Presets/TextPreset.h"

namespace tessara {

/// Read anew at every asking; without their file there are none.
class BuiltInPresets
{
public:
    /// Inside the program.
    static const QString resourceFile;

    explicit BuiltInPresets(const QString &file = resourceFile)
        : m_file(file)
    {
    }

    /// As the file lists them. One that breaks the format costs them all; a line on the standard
    /// output then says why.
    QList<TextPreset> bundlePresets() const;
    /// Sorted by name.
    QList<TextPreset> allBuiltIn() const;

private:
    QString m_file;
};

} // namespace tessara
