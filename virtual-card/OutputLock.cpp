#include "virtual-card/OutputLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessara::virtualcard {

bool OutputLock::tryLock(const std::string &name)
{
    unlock();
    while (true) {
        const int file = shm_open(name.c_str(), O_CREAT | O_RDWR, S_IRUSR | S_IWUSR);
        if (file < 0)
            return true; // a machine without shared memory has no one to share with
        if (flock(file, LOCK_EX | LOCK_NB) != 0) {
            close(file);
            return false;
        }
        struct stat status = {};
        if (fstat(file, &status) == 0 && status.st_nlink > 0) {
            m_file = file;
            m_name = name;
            return true;
        }
        close(file); // its owner took it away between our two calls: the name is free again
    }
}

void OutputLock::unlock()
{
    if (m_file < 0)
        return;
    shm_unlink(m_name.c_str()); // while it is still ours
    close(m_file);
    m_file = -1;
}

} // namespace tessara::virtualcard
