// The display modes and pixel formats of the virtual card.
#pragma once

#include <span>
#include <string_view>

#include "DeckLink/DeckLinkAPI.h"

namespace tessara::virtualcard {

struct Mode
{
    const char *name;
    decklink::BMDDisplayMode code;
    std::int32_t width;  // px
    std::int32_t height; // px
    decklink::BMDTimeScale timeScale;
    decklink::BMDTimeValue frameDuration;
    bool isInterlaced = false;
};

std::span<const Mode> allModes();
const Mode *modeWithCode(decklink::BMDDisplayMode code);
const Mode *modeWithName(std::string_view name);

bool isFormat(decklink::BMDPixelFormat format);
/// Bytes of one row as the format needs them, 0 for another format.
std::int32_t rowBytesOf(decklink::BMDPixelFormat format, std::int32_t width);

} // namespace tessara::virtualcard
