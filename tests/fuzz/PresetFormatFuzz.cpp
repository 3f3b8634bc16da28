// Any bytes are no preset file or one that is written and read back the same, byte for byte.
#include "Models/Presets/PresetFormat.h"

#include <cstdint>
#include <cstdlib>

using namespace tessara;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char *>(bytes), qsizetype(size));
    if (const auto list = decodePresets(json); !list && list.error().isEmpty())
        std::abort();
    const auto preset = decodePreset(json);
    if (!preset) {
        if (preset.error().isEmpty())
            std::abort();
        return 0;
    }
    for (const PresetImageEntry &image : preset->images)
        (void)image.pngData();
    const auto written = encodePreset(*preset);
    if (!written)
        std::abort();
    const auto read = decodePreset(*written);
    if (read != preset || encodePreset(*read) != written)
        std::abort();
    return 0;
}
