// The user's presets on disk: one file each.
#pragma once

#include "Models/Presets/TextPreset.h"

#include "Base/ApplicationSupport.h"
#include "Base/Clock.h"

namespace tessara {

/// An error is a sentence for the operator. A file is replaced in one step, so that a crash leaves
/// the old one or the new one.
class TemplatePresetStore
{
public:
    static constexpr qint64 largestFile = 512LL << 20; // bytes; a larger one counts as broken

    /// Touches no file. The clock outlives the store.
    TemplatePresetStore(const ApplicationSupport &support, const Clock &clock);

    /// Made by the first load or save.
    const QString &directory() const { return m_directory; }

    /// Sorted by name. A file that can't be read stays where it is and is not among them.
    [[nodiscard]] tl::expected<QList<TextPreset>, QString> loadAll() const;
    /// Over any file of the same name, whatever preset it holds.
    [[nodiscard]] tl::expected<void, QString> save(const TextPreset &preset) const;
    /// A preset without a file is no error.
    [[nodiscard]] tl::expected<void, QString> remove(const TextPreset &preset) const;

private:
    tl::expected<void, QString> makeDirectory() const;
    QString fileOf(const TextPreset &preset) const;
    QString sanitizeFileName(const QString &text) const;

    ApplicationSupport m_support;
    const Clock &m_clock;
    QString m_directory;
};

} // namespace tessara
