// Which calls of the driver were made, and which are to fail.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace tessara::virtualcard {

inline constexpr int noDevice = -1;

class Calls
{
public:
    /// The next `times` calls fail. False for a name that the driver doesn't have there.
    bool fail(int device, std::string_view call, int times);
    /// A call is being made; whether it is one that fails.
    bool take(int device, std::string_view call);
    /// How often it was made.
    std::int64_t count(int device, std::string_view call) const;
    void clear() { m_records.clear(); }

private:
    struct Record
    {
        std::int64_t made = 0;
        int failures = 0; // still to come
    };
    std::map<std::pair<int, std::string>, Record> m_records;
};

} // namespace tessara::virtualcard
