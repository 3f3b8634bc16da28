#include "virtual-card/Calls.h"

#include <algorithm>
#include <span>

namespace tessara::virtualcard {
namespace {

constexpr std::string_view callsWithoutDevice[] = {
    "CreateDeckLinkAPIInformationInstance",
    "CreateDeckLinkIteratorInstance",
    "Iterator.Next",
};

constexpr std::string_view callsOfADevice[] = {
    "CreateVideoFrame",
    "CreateVideoFrameWithBuffer",
    "DisableVideoOutput",
    "DisplayModeIterator.Next",
    "DisplayVideoFrameSync",
    "DoesSupportVideoMode",
    "EnableVideoOutput",
    "GetDisplayMode",
    "GetDisplayModeIterator",
    "GetDisplayName",
    "GetFlag",
    "GetFrameRate",
    "GetInt",
    "GetModelName",
    "GetName",
    "GetReferenceStatus",
    "Keyer.Disable",
    "Keyer.Enable",
    "Keyer.RampDown",
    "Keyer.RampUp",
    "Keyer.SetLevel",
    "QueryInterface.IDeckLinkKeyer",
    "QueryInterface.IDeckLinkOutput",
    "QueryInterface.IDeckLinkProfileAttributes",
    "RowBytesForPixelFormat",
};

} // namespace

bool Calls::fail(int device, std::string_view call, int times)
{
    const std::span<const std::string_view> known =
        device == noDevice ? std::span<const std::string_view>(callsWithoutDevice)
                           : std::span<const std::string_view>(callsOfADevice);
    if (times < 0 || std::ranges::find(known, call) == known.end())
        return false;
    m_failures[{device, std::string(call)}] = times;
    return true;
}

bool Calls::takeFailure(int device, std::string_view call)
{
    const auto failure = m_failures.find({device, std::string(call)});
    if (failure == m_failures.end() || failure->second == 0)
        return false;
    --failure->second;
    return true;
}

} // namespace tessara::virtualcard
