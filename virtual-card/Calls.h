// Which calls of the driver are to fail.
#pragma once

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
    /// Whether this call is one of those, which are then one less.
    bool takeFailure(int device, std::string_view call);
    void clear() { m_failures.clear(); }

private:
    std::map<std::pair<int, std::string>, int> m_failures;
};

} // namespace tessara::virtualcard
