// Small pictures of presets, and what they are drawn from.
#pragma once

#include <QCache>
#include <QHash>
#include <QImage>
#include <QMutex>

#include "Models/Presets/TextPreset.h"

#include <optional>

namespace tessara {

/// Each content has a number of its own: what is shown under a number never changes. For all
/// threads.
class PresetThumbnails
{
public:
    static constexpr int largestMemory = 48 * 1024; // KB of pictures

    PresetThumbnails();

    /// A content that was there keeps its number; what is not among them is forgotten.
    void setPresets(const QList<TextPreset> &presets);
    /// 0 for a content that is not there.
    int numberOf(const TextPreset &preset) const;
    std::optional<TextPreset> preset(int number) const;

    /// Null unless it was kept.
    QImage picture(const QString &id) const;
    void keepPicture(const QString &id, const QImage &picture);

private:
    int findNumber(const TextPreset &preset) const;

    mutable QMutex m_mutex;
    QHash<int, TextPreset> m_presets;
    QMultiHash<QString, int> m_numbersByID;
    QCache<QString, QImage> m_pictures;
    int m_lastNumber = 0;
};

} // namespace tessara
