// A show to be drawn, the same in every run.
#pragma once

#include "Base/ManualClock.h"
#include "bench/ShowFiles.h"

namespace tessara {

/// The show of the files or, without any, one of 40 layers: titles in several scripts, pictures
/// with and without masks, shapes and countdowns, spread over the canvas as a full show does. It is
/// scaled to the canvas.
class BenchShow
{
public:
    BenchShow(QSizeF canvas, const ShowFiles &files);

    CanvasDocument &document() { return m_document; }

private:
    void addGeneratedShow();
    void addTitles();
    void addPictures();
    void addShapes();
    void addCountdowns();
    /// The place of the `index`-th layer, in canvas units.
    QPointF place(int index) const;

    ManualClock m_clock;
    CanvasDocument m_document;
    double m_scale; // canvas units for one of a canvas 1920 wide
};

} // namespace tessara
