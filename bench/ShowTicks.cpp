#include "bench/ShowTicks.h"

#include <QRegularExpression>
#include <QTime>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr int titleLength = 400;
constexpr qsizetype clocksOfATick = 3;

// To and fro between the ends of a take, and not the same value again for a long time.
double visibilityOf(int tick)
{
    constexpr double step = 0.0137;
    return 0.05 + 0.9 * std::abs(std::remainder(tick * step, 2.0));
}

ShowTick countsDown(CountdownLayer *layer)
{
    constexpr int hour = 3600; // s; from there on the text has another form
    const int floor = layer->remainingSeconds() >= hour ? hour : 0;
    return [layer, floor, tick = 0]() mutable {
        tick = (tick + 1) % hour;
        layer->setRemainingSeconds(floor + hour - 1 - tick);
    };
}

ShowTick tellsTheTime(TextLayer *layer)
{
    return [layer, tick = 0]() mutable {
        layer->setText(QTime(10, 0).addSecs(++tick).toString(QStringLiteral("hh:mm:ss")));
    };
}

bool looksLikeAClock(const TextLayer *layer)
{
    static const QRegularExpression time(QStringLiteral("^\\d{1,2}:\\d\\d(:\\d\\d)?$"));
    return time.match(layer->text()).hasMatch();
}

QString titleText()
{
    const QString words = QStringLiteral(
        "The committee published its findings on the harbour bridge late on Thursday evening, "
        "after nine months of hearings, and every member signed; ");
    return words.repeated(titleLength / words.size() + 1).left(titleLength);
}

// Four letters, other ones for each number below 456,976.
QString letters(int number)
{
    QString text;
    for (int place = 0; place < 4; ++place) {
        text.append(QChar('a' + number % 26));
        number /= 26;
    }
    return text;
}

QList<QUuid> revealedLayers(const CanvasDocument &document)
{
    QList<QUuid> largest;
    for (const QUuid &group : document.presetGroupNames().keys()) {
        const QList<QUuid> layers = document.layerIDsInPresetGroup(group);
        if (layers.size() > largest.size())
            largest = layers;
    }
    return largest.isEmpty() ? document.layerOrder() : largest;
}

} // namespace

ShowTick nothingChanges()
{
    return [] {};
}

ShowTick allLayersDissolve(CanvasDocument &document)
{
    for (const QUuid &id : document.layerOrder())
        document.takes().setTransitionStyle(id, LayerRunTransitionStyle::dissolve);
    return [&document, tick = 0]() mutable {
        const double visibility = visibilityOf(++tick);
        for (const QUuid &id : document.layerOrder())
            document.takes().setVisibility(id, visibility);
    };
}

ShowTick groupReveals(CanvasDocument &document)
{
    const QList<QUuid> layers = revealedLayers(document);
    for (const QUuid &id : layers)
        document.takes().setTransitionStyle(id, LayerRunTransitionStyle::presetReveal);
    return [&document, layers, tick = 0]() mutable {
        ++tick;
        constexpr int stagger = 3; // ticks between neighbours
        for (qsizetype index = 0; index < layers.size(); ++index)
            document.takes().setVisibility(layers[index],
                                           visibilityOf(tick + stagger * int(index)));
    };
}

ShowTick clocksChange(CanvasDocument &document)
{
    QList<ShowTick> clocks;
    for (CountdownLayer *layer : document.layersOf<CountdownLayer>())
        clocks.append(countsDown(layer));
    for (TextLayer *layer : document.layersOf<TextLayer>()) {
        if (looksLikeAClock(layer))
            clocks.append(tellsTheTime(layer));
    }
    if (clocks.size() < clocksOfATick)
        return {};
    clocks.resize(clocksOfATick);
    return [clocks]() mutable {
        for (ShowTick &clock : clocks)
            clock();
    };
}

ShowTick backdropChanges(CanvasDocument &document)
{
    ShapeLayer *backdrop = document.addTemplateShapeLayer(ShapeKind::rectangle);
    backdrop->setPosition({0, 0});
    backdrop->setSize(document.size());
    backdrop->setCornerRadius(0);
    backdrop->setOpacity(1);
    document.moveInLayerOrder(backdrop->id(), 0);
    return [backdrop, tick = 0]() mutable {
        backdrop->setColor({0.1, 0.2, (++tick % 2) * 0.5, 1});
    };
}

ShowTick titleIsTyped(CanvasDocument &document, double scale)
{
    TextLayer *title = document.addTextLayer();
    title->setPosition(QPointF(160, 200) * scale);
    title->setTextBoxSize(QSizeF(1600, 640) * scale);
    title->setFontSize(40 * scale);
    title->setOutlineWidth(4);
    return [title, text = titleText(), tick = 0]() mutable {
        const QString typed = letters(++tick);
        title->setText(text.replace(titleLength / 2, typed.size(), typed));
    };
}

} // namespace tessara
