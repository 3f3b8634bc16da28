// How the operator reads the keys, values and layer types of macro steps and undo entries.
#pragma once

#include <QString>

namespace tessara {

/// The key itself for one that is unknown.
QString propKeyLabel(const QString &key);
QString propKeyIcon(const QString &key);
/// The value in the units of the editor; the value itself when it doesn't read as its key's does.
QString propValueLabel(const QString &key, const QString &value);

/// The type itself for one that is unknown.
QString layerTypeLabel(const QString &type);
QString layerTypeIcon(const QString &type);
/// The label followed by " Layer".
QString layerTypeName(const QString &type);

} // namespace tessara
