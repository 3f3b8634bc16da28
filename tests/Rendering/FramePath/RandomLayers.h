// Layers of all kinds with whatever an operator, a file or a script could give them.
#pragma once

#include "Base/ManualClock.h"
#include "Models/CanvasLayerItem.h"

#include "Rendering/FramePath/Dice.h"

namespace tessara {

class RandomLayers
{
public:
    RandomLayers(Dice &dice, Clock &clock)
        : m_dice(dice)
        , m_clock(clock)
    {
    }

    /// `canvas` tells where most of them lie.
    CanvasLayerItem layer(const QUuid &id, QSizeF canvas);
    /// Another value for one property.
    void edit(const CanvasLayerItem &item, QSizeF canvas);

private:
    void editPlace(Layer &layer, QSizeF canvas);
    void editSize(SizedLayer &layer, QSizeF canvas);
    void edit(TextLayer &layer, QSizeF canvas);
    void edit(ImageLayer &layer, QSizeF canvas);
    void edit(ShapeLayer &layer, QSizeF canvas);
    void edit(ScoreLayer &layer, QSizeF canvas);
    void edit(CountdownLayer &layer, QSizeF canvas);
    void edit(WebLayer &layer, QSizeF canvas);
    void edit(Model3DLayer &layer, QSizeF canvas);
    void edit(WindowCaptureLayer &layer, QSizeF canvas);

    QPointF place(QSizeF canvas);
    QSizeF size(QSizeF canvas);
    double side(double canvas);
    double opacity();
    double radius();
    RGBAColor color();
    QString words();
    Picture picture();
    std::optional<QRectF> crop();
    std::optional<QString> family();
    double fontSize();

    Dice &m_dice;
    Clock &m_clock;
};

} // namespace tessara
