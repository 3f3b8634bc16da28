#include "Models/Presets/PresetOrder.h"

#include <QCollator>

#include <algorithm>

namespace tessara {

void sortByName(QList<TextPreset> &presets, const QLocale &locale)
{
    const QLocale wanted = locale.collation();
    // The C locale would compare code points, which tears languages apart.
    QCollator collator(wanted.language() == QLocale::C ? QLocale(QLocale::English) : wanted);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(presets.begin(), presets.end(),
                     [&](const TextPreset &left, const TextPreset &right) {
                         return collator.compare(left.name, right.name) < 0;
                     });
}

} // namespace tessara
