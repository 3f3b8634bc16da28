// Files that are read whole and replaced whole.
#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

namespace tessara {

// An error is the reason in the system's own words.

/// The bytes of an ordinary file of at most `largest` bytes. A pipe or a device, which could hold
/// the caller for good, is an error at once.
[[nodiscard]] tl::expected<QByteArray, QString> readFile(const QString &path, qint64 largest);

enum class FileReaders { asBefore, ownerOnly };

/// Replaces the file in one step, once all bytes have reached the disk: a crash, a full disk or any
/// other failure leaves the old file whole. A link is replaced itself, and what it leads to stays
/// as it was. A file that may not be written is not replaced. The only way in which the application
/// writes files.
[[nodiscard]] tl::expected<void, QString> writeFile(const QString &path, const QByteArray &bytes,
                                                    FileReaders readers = FileReaders::asBefore);

} // namespace tessara
