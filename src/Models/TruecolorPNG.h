// The PNG files of shows, in a third of the platform's time.
#pragma once

#include <QByteArray>
#include <QImage>

namespace tessara {

/// The picture as the platform's reader gives it, to the byte, of a file with 8 bits a channel, not
/// interlaced, in colour with or without alpha, that says nothing more about itself than its
/// resolution. Null for all others, for damaged ones and for those above 128 MB, which are the
/// platform's to read and to refuse. For any thread.
QImage readTruecolorPNG(const QByteArray &file);

} // namespace tessara
