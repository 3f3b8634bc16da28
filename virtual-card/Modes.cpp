#include "virtual-card/Modes.h"

#include <algorithm>

namespace tessara::virtualcard {

using namespace decklink;

namespace {

// In the order in which a card lists them: by raster, then by rate.
constexpr Mode modes[] = {
    {"720p50", fourCharacters("hp50"), 1280, 720, 50000, 1000},
    {"720p59.94", fourCharacters("hp59"), 1280, 720, 60000, 1001},
    {"720p60", fourCharacters("hp60"), 1280, 720, 60000, 1000},
    {"1080p23.98", fourCharacters("23ps"), 1920, 1080, 24000, 1001},
    {"1080p24", fourCharacters("24ps"), 1920, 1080, 24000, 1000},
    {"1080p25", fourCharacters("Hp25"), 1920, 1080, 25000, 1000},
    {"1080p29.97", fourCharacters("Hp29"), 1920, 1080, 30000, 1001},
    {"1080p30", fourCharacters("Hp30"), 1920, 1080, 30000, 1000},
    {"1080p47.95", fourCharacters("Hp47"), 1920, 1080, 48000, 1001},
    {"1080p48", fourCharacters("Hp48"), 1920, 1080, 48000, 1000},
    {"1080i50", fourCharacters("Hi50"), 1920, 1080, 25000, 1000, true},
    {"1080i59.94", fourCharacters("Hi59"), 1920, 1080, 30000, 1001, true},
    {"1080i60", fourCharacters("Hi60"), 1920, 1080, 30000, 1000, true},
    {"1080p50", fourCharacters("Hp50"), 1920, 1080, 50000, 1000},
    {"1080p59.94", fourCharacters("Hp59"), 1920, 1080, 60000, 1001},
    {"1080p60", fourCharacters("Hp60"), 1920, 1080, 60000, 1000},
    {"1080p95.90", fourCharacters("Hp95"), 1920, 1080, 96000, 1001},
    {"1080p96", fourCharacters("Hp96"), 1920, 1080, 96000, 1000},
    {"1080p100", fourCharacters("Hp10"), 1920, 1080, 100000, 1000},
    {"1080p119.88", fourCharacters("Hp11"), 1920, 1080, 120000, 1001},
    {"1080p120", fourCharacters("Hp12"), 1920, 1080, 120000, 1000},
    {"2160p23.98", fourCharacters("4k23"), 3840, 2160, 24000, 1001},
    {"2160p24", fourCharacters("4k24"), 3840, 2160, 24000, 1000},
    {"2160p25", fourCharacters("4k25"), 3840, 2160, 25000, 1000},
    {"2160p29.97", fourCharacters("4k29"), 3840, 2160, 30000, 1001},
    {"2160p30", fourCharacters("4k30"), 3840, 2160, 30000, 1000},
    {"2160p47.95", fourCharacters("4k47"), 3840, 2160, 48000, 1001},
    {"2160p48", fourCharacters("4k48"), 3840, 2160, 48000, 1000},
    {"2160p50", fourCharacters("4k50"), 3840, 2160, 50000, 1000},
    {"2160p59.94", fourCharacters("4k59"), 3840, 2160, 60000, 1001},
    {"2160p60", fourCharacters("4k60"), 3840, 2160, 60000, 1000},
};

template <typename Matches>
const Mode *firstMode(Matches matches)
{
    const auto mode = std::ranges::find_if(modes, matches);
    return mode != std::ranges::end(modes) ? mode : nullptr;
}

} // namespace

std::span<const Mode> allModes()
{
    return modes;
}

const Mode *modeWithCode(BMDDisplayMode code)
{
    return firstMode([code](const Mode &mode) { return mode.code == code; });
}

const Mode *modeWithName(std::string_view name)
{
    return firstMode([name](const Mode &mode) { return mode.name == name; });
}

bool isFormat(BMDPixelFormat format)
{
    return format == bmdFormat8BitBGRA || format == bmdFormat8BitARGB || format == bmdFormat8BitYUV;
}

std::int32_t rowBytesOf(BMDPixelFormat format, std::int32_t width)
{
    if (!isFormat(format))
        return 0;
    return width * (format == bmdFormat8BitYUV ? 2 : 4);
}

} // namespace tessara::virtualcard
