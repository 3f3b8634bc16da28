// Any bytes are no macro file or one that is written and read back the same.
#include "Core/Macros/MacroFormat.h"

#include <cstdint>
#include <cstdlib>

using namespace tessara;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(bytes), qsizetype(size));
    const auto macros = decodeMacros(text);
    const ReadMacros read = readMacros(text);
    if (read.isWhole() != macros.has_value() || (macros && read.macros != *macros))
        std::abort();
    if (!macros)
        return 0;
    for (const Macro &macro : *macros) {
        for (const MacroStep &step : macro.steps) {
            if (step.displayName().isEmpty() || step.systemImage().isEmpty())
                std::abort();
        }
    }
    const auto written = encodeMacros(*macros);
    if (!written || decodeMacros(*written) != macros)
        std::abort();
    return 0;
}
