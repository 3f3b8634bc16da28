// A show of 40 layers, the same in every run.
#pragma once

#include "Base/ManualClock.h"
#include "Models/CanvasDocument.h"

namespace tessara {

/// Titles in several scripts, pictures with and without masks, shapes and countdowns, spread over
/// the canvas as a full show does.
class BenchShow
{
public:
    explicit BenchShow(QSizeF canvas);

    CanvasDocument &document() { return m_document; }
    /// Every layer half way through a take.
    void setInDissolve(bool inDissolve);

private:
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
