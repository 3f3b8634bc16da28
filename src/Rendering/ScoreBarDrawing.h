// A score bar: its panels, its ornaments and what is written on them.
#pragma once

#include <QRectF>

class QPainter;

namespace tessara {

class ScoreLayer;
class TextBlockCache;

/// `frame` is the layer's box in canvas coordinates, and nothing shows beyond it. A crop is a
/// window onto a larger bar. The layer's own opacity reaches the panels alone, the run's reaches
/// the texts as well, and neither the ornaments of a title bar.
void drawScoreBar(QPainter &painter, const ScoreLayer &layer, const QRectF &frame,
                  double runOpacity, TextBlockCache &texts);

} // namespace tessara
