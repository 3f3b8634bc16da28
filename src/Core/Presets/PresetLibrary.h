// All presets that there are: the user's own and those that ship with the application.
#pragma once

#include "Core/Presets/BuiltInPresets.h"
#include "Core/Presets/TemplatePresetStore.h"

namespace tessara {

class CanvasDocument;

/// The disk is the only truth: every change is followed by a reload. An error is a sentence for the
/// operator.
class PresetLibrary : public QObject
{
    Q_OBJECT
    /// Sorted by name.
    Q_PROPERTY(QList<tessara::TextPreset> userTextPresets READ userTextPresets NOTIFY
                   userTextPresetsChanged FINAL)
    Q_PROPERTY(QList<tessara::TextPreset> systemPresets READ systemPresets NOTIFY
                   userTextPresetsChanged FINAL)
    Q_PROPERTY(QList<tessara::TextPreset> visibleUserTextPresets READ visibleUserTextPresets NOTIFY
                   userTextPresetsChanged FINAL)

public:
    /// Loads the user's presets; a folder that can't be read gives none. The clock outlives the
    /// library.
    PresetLibrary(const ApplicationSupport &support, const Clock &clock,
                  const BuiltInPresets &builtIn);

    const TemplatePresetStore &store() const { return m_store; }
    const QList<TextPreset> &userTextPresets() const { return m_userTextPresets; }
    /// The built-in presets in their order, each replaced by the user's of the same id. Of several
    /// such the first in the user's list counts.
    QList<TextPreset> systemPresets() const;
    /// The user's presets that replace no built-in one.
    QList<TextPreset> visibleUserTextPresets() const;

    /// The list stays as it was when something fails.
    [[nodiscard]] tl::expected<void, QString> saveTemplatePreset(const TextPreset &preset);
    /// The list is empty when it can't be loaded afterwards, which is no error.
    [[nodiscard]] tl::expected<void, QString> deleteUserPreset(const TextPreset &preset);
    /// Nothing for a blank name, which is trimmed of blanks. Without an id of its own the preset
    /// gets one of the time of day.
    std::optional<TextPreset> snapshot(const CanvasDocument &document, const QString &name,
                                       const std::optional<QString> &existingID) const;

signals:
    void userTextPresetsChanged();

private:
    void setUserTextPresets(const QList<TextPreset> &presets);

    const Clock &m_clock;
    TemplatePresetStore m_store;
    BuiltInPresets m_builtIn;
    QList<TextPreset> m_userTextPresets;
};

} // namespace tessara
