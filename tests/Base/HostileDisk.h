// Disks on which writing fails.
#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tessara {

/// A file system of its own of some sixty kilobytes; only root may have one.
class SmallDisk
{
    Q_DISABLE_COPY_MOVE(SmallDisk)

public:
    SmallDisk()
        : m_isMounted(mount("tessara-test", qPrintable(m_folder.path()), "tmpfs", MS_NODEV,
                            "size=64k,mode=0755")
                      == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_isMounted)
            umount2(qPrintable(m_folder.path()), MNT_DETACH);
    }

    bool isMounted() const { return m_isMounted; }
    QString path() const { return m_folder.path(); }

    /// Until not a byte is left.
    void fill()
    {
        QFile filler(m_folder.filePath(QStringLiteral("filler")));
        ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(4096, 'x')) == 4096) {
        }
    }
    void makeRoom() { QFile::remove(m_folder.filePath(QStringLiteral("filler"))); }

private:
    QTemporaryDir m_folder;
    bool m_isMounted;
};

#define TESSARA_NEEDS(disk)                                                                        \
    if (!(disk).isMounted())                                                                       \
    GTEST_SKIP() << "a file system can't be mounted here"

/// No file of this process may grow beyond `bytes`.
class FileSizeLimit
{
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN)) // a write then fails instead
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

/// Rights count for root as well, who otherwise reads and writes what he likes.
class OrdinaryUser
{
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

public:
    OrdinaryUser()
    {
        constexpr uid_t nobody = 65534;
        if (m_user == 0) {
            EXPECT_EQ(seteuid(nobody), 0);
        }
    }
    ~OrdinaryUser() { EXPECT_EQ(seteuid(m_user), 0); }

private:
    uid_t m_user = geteuid();
};

} // namespace tessara
