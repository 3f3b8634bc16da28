// A folder of presets on a clock that stands still.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "Base/ManualClock.h"
#include "Core/Presets/TemplatePresetStore.h"
#include "Models/Presets/PresetFormat.h"

#include <gtest/gtest.h>

namespace tessara {

class PresetFolder : public testing::Test
{
protected:
    static TextPreset named(const QString &id, const QString &name)
    {
        return {.id = id, .name = name};
    }

    QString path(const QString &file) const { return support.templateDirectory() + "/" + file; }

    QByteArray bytesOf(const QString &file) const
    {
        QFile stored(path(file));
        return stored.open(QIODevice::ReadOnly) ? stored.readAll() : QByteArray();
    }

    void write(const QString &file, const QByteArray &bytes) const
    {
        ASSERT_TRUE(QDir().mkpath(support.templateDirectory()));
        QFile stored(path(file));
        ASSERT_TRUE(stored.open(QIODevice::WriteOnly)) << qPrintable(file);
        ASSERT_EQ(stored.write(bytes), bytes.size());
    }

    void write(const QString &file, const TextPreset &preset) const
    {
        write(file, encodePreset(preset).value());
    }

    /// All of them, hidden ones too.
    QStringList files() const
    {
        return QDir(support.templateDirectory())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                       QDir::Name);
    }

    static QStringList namesOf(const QList<TextPreset> &presets)
    {
        QStringList names;
        for (const TextPreset &preset : presets)
            names.append(preset.name);
        return names;
    }

    QTemporaryDir folder;
    ApplicationSupport support{folder.filePath("Tessara")};
    ManualClock clock;
};

} // namespace tessara
