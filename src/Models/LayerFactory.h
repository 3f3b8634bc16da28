// New layers with their values at the start, and copies of layers.
#pragma once

#include "Models/CanvasLayerItem.h"

namespace tessara {

/// Builds layers for a canvas of one size. `number` ends the name of a numbered layer.
class LayerFactory
{
public:
    LayerFactory(Clock &clock, QSizeF canvasSize)
        : m_clock(clock)
        , m_canvasSize(canvasSize)
    {
    }

    TextLayer *text(qsizetype number) const;
    ImageLayer *image(const Picture &picture, const QUrl &source) const;
    ShapeLayer *templateShape(ShapeKind kind, qsizetype number) const;
    /// `points` are fractions of the box, y downward.
    ShapeLayer *customShape(QPointF position, QSizeF size, const QList<QPointF> &points,
                            qsizetype number) const;
    WebLayer *web(qsizetype number) const;
    WindowCaptureLayer *windowCapture(qsizetype number) const;
    CountdownLayer *countdown(qsizetype number) const;
    Model3DLayer *model3D(const QUrl &file, qsizetype number) const;
    ScoreLayer *score(ScoreTemplate scoreTemplate, ScoreSportPreset sportPreset,
                      qsizetype number) const;

    /// A visible, unlocked copy under a new id, a little to the lower right, in no group.
    CanvasLayerItem duplicate(const CanvasLayerItem &source) const;

    /// Never enlarged, and never more than half of the canvas in either direction.
    QSizeF fittedImageSize(QSizeF image) const;

private:
    QPointF centred(QSizeF size) const;
    QPointF nudgedPosition(QPointF position, QSizeF size) const;

    TextLayer *copyOf(const TextLayer &source) const;
    ImageLayer *copyOf(const ImageLayer &source) const;
    ShapeLayer *copyOf(const ShapeLayer &source) const;
    ScoreLayer *copyOf(const ScoreLayer &source) const;
    WebLayer *copyOf(const WebLayer &source) const;
    Model3DLayer *copyOf(const Model3DLayer &source) const;
    WindowCaptureLayer *copyOf(const WindowCaptureLayer &source) const;
    CountdownLayer *copyOf(const CountdownLayer &source) const;

    Clock &m_clock;
    QSizeF m_canvasSize;
};

} // namespace tessara
