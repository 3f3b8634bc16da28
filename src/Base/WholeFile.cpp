#include "Base/WholeFile.h"

#include <QFile>
#include <QLocale>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessara {

namespace {

tl::unexpected<QString> systemError(int error = errno)
{
    return tl::unexpected(qt_error_string(error));
}

tl::unexpected<QString> noOrdinaryFile()
{
    return tl::unexpected(QStringLiteral("It is no ordinary file"));
}

tl::unexpected<QString> tooLarge(qint64 largest)
{
    const QString limit =
        QLocale::c().formattedDataSize(largest, 0, QLocale::DataSizeTraditionalFormat);
    return tl::unexpected(QStringLiteral("It is larger than %1").arg(limit));
}

/// Bytes for the system, which would take a name with a zero in it for a shorter one.
tl::expected<QByteArray, QString> nativeName(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.contains('\0'))
        return systemError(EINVAL);
    return name;
}

class Descriptor
{
    Q_DISABLE_COPY_MOVE(Descriptor)

public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor() { close(); }

    operator int() const { return m_number; }
    bool close()
    {
        const int number = std::exchange(m_number, -1);
        return number < 0 || ::close(number) == 0;
    }

private:
    int m_number;
};

// Its size is a hint only: the file may grow or shrink meanwhile.
tl::expected<QByteArray, QString> allOf(int file, qint64 size, qint64 largest)
{
    constexpr qint64 least = 4096; // bytes; some files don't tell their size
    QByteArray bytes(std::max(size + 1, least), Qt::Uninitialized);
    qint64 filled = 0;
    for (;;) {
        if (filled == bytes.size())
            bytes.resize(2 * filled);
        const ssize_t count = read(file, bytes.data() + filled, std::size_t(bytes.size() - filled));
        if (count < 0 && errno != EINTR)
            return systemError();
        filled += std::max<ssize_t>(count, 0);
        if (filled > largest)
            return tooLarge(largest);
        if (count == 0)
            break;
    }
    bytes.truncate(filled);
    return bytes;
}

/// The rights that a new file at `path` takes over, those of any new file, or why none may be
/// there.
tl::expected<std::optional<mode_t>, QString> rightsAt(const QByteArray &path)
{
    struct stat known = {};
    const bool isLink = lstat(path.constData(), &known) == 0 && S_ISLNK(known.st_mode);
    if (stat(path.constData(), &known) != 0)
        return std::nullopt;
    if (S_ISDIR(known.st_mode))
        return systemError(EISDIR);
    if (!S_ISREG(known.st_mode))
        return noOrdinaryFile();
    if (isLink)
        return std::nullopt;
    if (faccessat(AT_FDCWD, path.constData(), W_OK, AT_EACCESS) != 0)
        return systemError();
    return known.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
}

/// The new content beside the file that it will replace; gone again unless it does.
class Replacement
{
    Q_DISABLE_COPY_MOVE(Replacement)

public:
    explicit Replacement(const QByteArray &path)
        : m_path(path)
        , m_name(path.left(path.lastIndexOf('/') + 1) + ".tessara-"
                 + QByteArray::number(QRandomGenerator::system()->generate64(), 36))
        , m_file(open(m_name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
        , m_isThere(m_file >= 0)
    {
    }
    ~Replacement()
    {
        if (m_isThere)
            unlink(m_name.constData());
    }

    bool isThere() const { return m_isThere; }
    bool setRights(mode_t rights) { return fchmod(m_file, rights) == 0; }

    bool write(const QByteArray &bytes)
    {
        for (qsizetype written = 0; written < bytes.size();) {
            const ssize_t count =
                ::write(m_file, bytes.constData() + written, std::size_t(bytes.size() - written));
            if (count < 0 && errno != EINTR)
                return false;
            written += std::max<ssize_t>(count, 0);
        }
        return true;
    }

    bool takePlace()
    {
        const bool isDone = fsync(m_file) == 0 && m_file.close()
                            && std::rename(m_name.constData(), m_path.constData()) == 0;
        m_isThere = !isDone;
        return isDone;
    }

private:
    QByteArray m_path;
    QByteArray m_name; // hidden, and short whatever the file is called
    Descriptor m_file;
    bool m_isThere;
};

} // namespace

tl::expected<QByteArray, QString> readFile(const QString &path, qint64 largest)
{
    const auto name = nativeName(path);
    if (!name)
        return name;
    // Without waiting for the other end of a pipe. What was opened is looked at, not its name,
    // which may mean something else by now.
    const Descriptor file(open(name->constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat known = {};
    if (file < 0 || fstat(file, &known) != 0)
        return systemError();
    if (S_ISDIR(known.st_mode))
        return systemError(EISDIR);
    if (!S_ISREG(known.st_mode))
        return noOrdinaryFile();
    if (known.st_size > largest)
        return tooLarge(largest);
    return allOf(file, known.st_size, largest);
}

tl::expected<void, QString> writeFile(const QString &path, const QByteArray &bytes,
                                      FileReaders readers)
{
    const auto name = nativeName(path);
    if (!name)
        return tl::unexpected(name.error());
    const auto known = rightsAt(*name);
    if (!known)
        return tl::unexpected(known.error());
    constexpr mode_t forOwner = S_IRUSR | S_IWUSR;
    const std::optional<mode_t> rights = readers == FileReaders::ownerOnly ? forOwner : *known;
    Replacement file(*name);
    if (file.isThere() && (!rights || file.setRights(*rights)) && file.write(bytes)
        && file.takePlace())
        return {};
    return systemError();
}

} // namespace tessara
