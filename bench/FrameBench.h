// The chapters of tessara-bench-frame. Each measures its work in turns with what it is compared to,
// and adds its rows to the table.
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
    Work painter;       // the yardstick
    BenchTable &table;

    bool isLarge() const { return size.width > 1920; }
    /// One of a pair of limits, which differ since a large frame doesn't stay in the cache.
    double limit(double small, double large) const { return isLarge() ? large : small; }
};

/// All layers of the show dissolve, their sprites blended by the platform's painter: what a machine
/// is slow at, it is slow at here as well.
Work painterWork(FrameSize size, const ShowFiles &show);

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
