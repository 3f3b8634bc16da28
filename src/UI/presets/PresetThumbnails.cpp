#include "UI/presets/PresetThumbnails.h"

#include <QMutexLocker>

namespace tessara {

PresetThumbnails::PresetThumbnails()
    : m_pictures(largestMemory)
{
}

int PresetThumbnails::findNumber(const TextPreset &preset) const
{
    for (const int number : m_numbersByID.values(preset.id)) {
        if (m_presets.value(number) == preset)
            return number;
    }
    return 0;
}

void PresetThumbnails::setPresets(const QList<TextPreset> &presets)
{
    const QMutexLocker lock(&m_mutex);
    QHash<int, TextPreset> stay;
    for (const TextPreset &preset : presets) {
        const int known = findNumber(preset);
        stay.insert(known > 0 ? known : ++m_lastNumber, preset);
    }
    m_presets = stay;
    m_numbersByID.clear();
    for (auto each = m_presets.cbegin(); each != m_presets.cend(); ++each)
        m_numbersByID.insert(each->id, each.key());
}

int PresetThumbnails::numberOf(const TextPreset &preset) const
{
    const QMutexLocker lock(&m_mutex);
    return findNumber(preset);
}

std::optional<TextPreset> PresetThumbnails::preset(int number) const
{
    const QMutexLocker lock(&m_mutex);
    const auto found = m_presets.constFind(number);
    return found == m_presets.cend() ? std::nullopt : std::optional(*found);
}

QImage PresetThumbnails::picture(const QString &id) const
{
    const QMutexLocker lock(&m_mutex);
    const QImage *kept = m_pictures.object(id);
    return kept ? *kept : QImage();
}

void PresetThumbnails::keepPicture(const QString &id, const QImage &picture)
{
    const QMutexLocker lock(&m_mutex);
    m_pictures.insert(id, new QImage(picture), int(picture.sizeInBytes() / 1024));
}

} // namespace tessara
