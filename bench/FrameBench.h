// The chapters of tessara-bench-frame. Each measures a memcpy of one frame in turns with its own
// work, and adds its rows to the table.
#pragma once

#include "bench/BenchShow.h"
#include "bench/BenchTable.h"
#include "bench/FrameMakers.h"

namespace tessara {

struct FrameBench
{
    FrameSize size;
    ShowFiles show;
    std::optional<TextPreset> lowerThird;
    double seconds = 1; // for each of the works that take turns
    BenchTable &table;

    bool isLarge() const { return size.width > 1920; }
    /// One of a pair of limits, which differ since a large frame doesn't stay in the cache.
    double limit(double small, double large) const { return isLarge() ? large : small; }
};

/// Copies a frame of that size from one place to another.
Work memcpyWork(FrameSize size);

/// The show in its states, by the frame path and drawn from nothing.
void benchScenes(const FrameBench &bench);
/// A long title that somebody types.
void benchTyping(const FrameBench &bench);
/// A dissolve in every format of a card, against the plain fill.
void benchFormats(const FrameBench &bench);
/// The preset on its way to the first frame, against decoding its pictures; nothing without one.
void benchPreset(const FrameBench &bench);
/// What both ways need of memory, each in a process of its own. `arguments` are those of this one.
void benchMemory(const FrameBench &bench, const QStringList &arguments);
/// Whole finished frames: conversions and scaling.
void benchPixels(const FrameBench &bench);

/// The child of `benchMemory`: a dissolve in one of its ways, then its figures on standard output.
int runMemoryChild(const QString &way, FrameSize size, ShowFiles show);

} // namespace tessara
