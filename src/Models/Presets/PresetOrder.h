// The order in which presets are listed.
#pragma once

#include "Models/Presets/TextPreset.h"

#include <QLocale>

namespace tessara {

/// By name, as the language of `locale` sorts and without regard to case; equal names keep their
/// order. A locale without a language sorts as English does.
void sortByName(QList<TextPreset> &presets, const QLocale &locale = QLocale::system());

} // namespace tessara
