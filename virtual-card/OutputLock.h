// One owner for each output, among all processes of the channel.
#pragma once

#include <string>

namespace tessara::virtualcard {

class OutputLock
{
public:
    OutputLock() = default;
    OutputLock(const OutputLock &) = delete;
    OutputLock &operator=(const OutputLock &) = delete;
    ~OutputLock() { unlock(); }

    /// False while somebody else has it.
    bool tryLock(const std::string &name);
    void unlock();

private:
    int m_file = -1;
    std::string m_name;
};

} // namespace tessara::virtualcard
