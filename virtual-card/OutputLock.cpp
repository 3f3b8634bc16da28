#include "virtual-card/OutputLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace tessara::virtualcard {

bool OutputLock::tryLock(const std::string &name)
{
    unlock();
    const int file = shm_open(name.c_str(), O_CREAT | O_RDWR, S_IRUSR | S_IWUSR);
    if (file < 0)
        return true; // a machine without shared memory has no one to share with
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
        close(file);
        return false;
    }
    m_file = file;
    return true;
}

// The object itself stays: were it unlinked, two owners could lock two objects of one name.
void OutputLock::unlock()
{
    if (m_file >= 0)
        close(m_file);
    m_file = -1;
}

} // namespace tessara::virtualcard
