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
    /// A copy that equals the source, its id and its group included; only a countdown stands still.
    CanvasLayerItem replica(const CanvasLayerItem &source) const;

    /// Never enlarged, and never more than half of the canvas in either direction.
    QSizeF fittedImageSize(QSizeF image) const;

private:
    /// In what a copy may differ from its source.
    struct Identity
    {
        QUuid id;
        QString name;
        QPointF position;
    };

    QPointF centred(QSizeF size) const;
    QPointF nudgedPosition(const TextLayer &text) const;
    QPointF nudgedPosition(const SizedLayer &layer) const;

    /// Visible, unlocked and in no group.
    CanvasLayerItem copy(const CanvasLayerItem &source, const Identity &identity) const;
    TextLayer *copyOf(const TextLayer &source, const Identity &identity) const;
    ImageLayer *copyOf(const ImageLayer &source, const Identity &identity) const;
    ShapeLayer *copyOf(const ShapeLayer &source, const Identity &identity) const;
    ScoreLayer *copyOf(const ScoreLayer &source, const Identity &identity) const;
    WebLayer *copyOf(const WebLayer &source, const Identity &identity) const;
    Model3DLayer *copyOf(const Model3DLayer &source, const Identity &identity) const;
    WindowCaptureLayer *copyOf(const WindowCaptureLayer &source, const Identity &identity) const;
    CountdownLayer *copyOf(const CountdownLayer &source, const Identity &identity) const;

    Clock &m_clock;
    QSizeF m_canvasSize;
};

} // namespace tessara
