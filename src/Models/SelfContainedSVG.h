// Vector pictures that need no other file.
#pragma once

#include <QByteArray>

namespace tessara {

/// False for a text that names other files, as pictures or styles: the platform's reader would open
/// them, whatever they are, and a pipe among them would hold it for good. False also where that
/// can't be seen: in a packed one, and in one that carries another.
bool isSelfContainedSVG(const QByteArray &file);

} // namespace tessara
