#include "Rendering/FramePath/RandomShow.h"

#include "Rendering/FramePath/ReferenceFrames.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QMetaProperty>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

constexpr int mostLayers = 12;

// Layers that were removed go now, and make room for new ones at the same place.
void deleteRemovedLayers()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

RandomShow::RandomShow(quint32 seed)
    : m_dice(seed)
{
    fillDocument();
    setTargets();
}

QUuid RandomShow::newID()
{
    return QUuid(m_dice.word(), ushort(m_dice.word()), 1, 2, 3, 4, 5, 6, 7, 8, 9);
}

QSizeF RandomShow::canvasSize()
{
    const double share = m_dice.fraction();
    if (share < 0.002)
        return {1920, 1080};
    if (share < 0.006)
        return {m_dice.between(500, 1100), m_dice.between(300, 700)};
    if (share < 0.012) // as wide or as high as the largest of modes, and wider
        return m_dice.oneOf({QSizeF(4096, 3), QSizeF(8193, 2.5), QSizeF(3, 4321)});
    if (share < 0.05)
        return {m_dice.between(1, 30), m_dice.between(1, 30)};
    const QSizeF size(m_dice.between(64, 280), m_dice.between(48, 200));
    if (share < 0.3)
        return size; // with fractions, of which the frame has none
    return {std::floor(size.width()), std::floor(size.height())};
}

void RandomShow::fillDocument()
{
    for (int layers = m_dice.below(8); layers > 0; --layers)
        addLayer();
    for (const QUuid &id : m_document.layerOrder()) {
        if (m_dice.chance(0.3))
            setVisibility(id);
        if (m_dice.chance(0.3))
            setRunSettings(id);
    }
}

void RandomShow::addLayer()
{
    m_document.addLayer(m_layers.layer(newID(), m_document.size()));
}

// As an undone removal does: another object under the same id, maybe at the same address.
void RandomShow::replaceLayer()
{
    const QList<QUuid> order = m_document.layerOrder();
    const QUuid id = anyID();
    const QMap<QUuid, double> visibility = m_document.layerVisibility();
    m_document.removeLayerCore(id);
    deleteRemovedLayers();
    m_document.addLayer(m_layers.layer(id, m_document.size()));
    if (m_dice.chance(0.7))
        m_document.restoreLayerOrder(order);
    if (m_dice.chance(0.5))
        m_document.setLayerVisibility(visibility);
}

void RandomShow::reorder()
{
    QList<QUuid> order = m_document.layerOrder();
    if (m_dice.chance(0.5)) {
        m_document.moveInLayerOrder(anyID(), m_dice.below(int(order.size())));
        return;
    }
    for (qsizetype left = order.size(); left > 1; --left)
        std::swap(order[left - 1], order[m_dice.below(int(left))]);
    m_document.reorderLayers(order);
}

void RandomShow::setVisibility(const QUuid &id)
{
    const double value = m_dice.oneOf({0.0, 1.0, 0.5, 0.001, 0.0011, 1 / 21.0, 0.999, 2.0, -1.0,
                                       std::numeric_limits<double>::quiet_NaN(), m_dice.fraction(),
                                       m_dice.fraction(), m_dice.fraction(),
                                       m_dice.below(22) / 21.0, m_dice.below(22) / 21.0});
    m_document.takes().setVisibility(id, value);
}

void RandomShow::setRunSettings(const QUuid &id)
{
    using enum LayerRunTransitionStyle;
    m_document.setRunTransitionStyle(
        m_dice.oneOf({cut, dissolve, dissolve, dissolve, presetReveal, presetReveal}), id);
}

// All of them at the next step of one take.
void RandomShow::slideOn()
{
    const double value = m_dice.fraction();
    for (const QUuid &id : m_document.layerOrder())
        m_document.takes().setVisibility(id, value);
}

QSize RandomShow::targetSize()
{
    const QSize frame = m_document.size().toSize();
    const double share = m_dice.fraction();
    if (share < 0.05)
        return {std::max(1, frame.width() / 2), std::max(1, frame.height() / 2)};
    if (share < 0.3)
        return {1 + m_dice.below(200), 1 + m_dice.below(120)};
    const QSizeF canvas = m_document.size();
    return {std::max(1, int(canvas.width())), std::max(1, int(canvas.height()))};
}

void RandomShow::setTargets()
{
    m_background.reset();
    if (m_dice.chance(0.4))
        m_background =
            m_dice.oneOf({QColor(0, 255, 0), QColor(0, 177, 64), QColor(20, 0, 90, 128)});
    m_targets.clear();
    using enum FrameContent;
    using enum FrameFormat;
    const int count = 1 + m_dice.below(2);
    const QSize size = targetSize();
    for (int index = 0; index < count; ++index)
        m_targets.push_back(frameTarget(
            m_dice.oneOf({fill, fillWithMirroredAlpha, key}), m_dice.oneOf({bgra, argb, yuv}),
            m_dice.chance(0.8) ? size : targetSize(), m_dice.oneOf({0, 0, 4, 16, 60, 3})));
}

QString RandomShow::description() const
{
    QString text;
    QDebug out(&text);
    for (const CanvasLayerItem &item : m_document.orderedLayers()) {
        const Layer *layer = layerOf(item);
        const QSizeF slide = m_document.effectiveTransitionOffset(layer->id(), layer->isHidden());
        out << "\n"
            << layer->metaObject()->className() << "visibility"
            << m_document.layerVisibility().value(layer->id()) << "slide" << slide;
        for (int index = 0; index < layer->metaObject()->propertyCount(); ++index) {
            const QMetaProperty property = layer->metaObject()->property(index);
            out << "\n   " << property.name() << property.read(layer);
        }
    }
    return text;
}

void RandomShow::edit()
{
    m_story.clear();
    const int count = m_dice.oneOf({0, 1, 1, 1, 2, 2, 3, 6});
    for (int edits = 0; edits < count; ++edits)
        editOnce();
    if (m_dice.chance(0.3))
        deleteRemovedLayers();
}

void RandomShow::take()
{
    const QUuid id = anyID();
    switch (m_dice.below(8)) {
    case 0:
        return m_document.takeLayerInNow(id);
    case 1:
        return m_document.takeLayerOutNow(id);
    case 2:
        return m_document.toggleLayerHidden(id);
    case 3:
        m_document.toggleCue(id);
        return m_document.takeCues();
    case 4:
        m_document.setRunDissolveDuration(m_dice.between(0, 0.5), id);
        return m_document.setRunAutoOutDuration(m_dice.between(0, 0.5), id);
    default:
        return m_document.toggleLayerInRunlist(id);
    }
}

void RandomShow::group()
{
    QList<QUuid> ids;
    for (const QUuid &id : m_document.layerOrder()) {
        if (m_dice.chance(0.4))
            ids.append(id);
    }
    const std::optional<QUuid> known = m_document.presetGroupID(anyID());
    if (!known)
        m_document.groupLayers(ids, "Group");
    else if (m_dice.chance(0.3))
        m_document.ungroupPreset(*known);
    else if (m_dice.chance(0.3))
        m_document.removePresetGroup(*known);
    else
        m_document.togglePresetGroupInRunlist(*known);
}

void RandomShow::applyPreset()
{
    TextPreset preset;
    preset.name = "Preset";
    preset.rects.resize(1 + m_dice.below(2));
    for (PresetRectEntry &rect : preset.rects) {
        rect.position = {m_dice.between(0, 100), m_dice.between(0, 100)};
        rect.size = {m_dice.between(1, 150), m_dice.between(1, 60)};
    }
    preset.entries.resize(1);
    preset.entries.first().text = "Name";
    preset.entries.first().fontSize = 30;
    preset.preferredRunTransitionStyle = LayerRunTransitionStyle::presetReveal;
    m_document.addTextPreset(preset);
}

void RandomShow::stepThroughHistory()
{
    for (int steps = 1 + m_dice.below(4); steps > 0; --steps) {
        if (m_dice.chance(0.6))
            m_history.undoStack().undo();
        else
            m_history.undoStack().redo();
    }
}

MacroStep::Kind RandomShow::macroStep()
{
    const QUuid id = anyID();
    switch (m_dice.below(6)) {
    case 0:
        return ShowLayer{id, {}};
    case 1:
        return HideLayer{id, {}};
    case 2:
        return Pause{m_dice.between(0, 0.3)};
    case 3:
        return AddLayer{m_dice.chance(0.5) ? id : newID(),
                        "shape",
                        {{"name", "Shape"},
                         {"posX", QString::number(m_dice.below(100))},
                         {"posY", QString::number(m_dice.below(60))},
                         {"sizeW", QString::number(m_dice.below(90))},
                         {"sizeH", "30"}}};
    case 4:
        return SetLayerProperty{id, {}, "opacity", m_dice.oneOf<QString>({"0.5", "2", "-1", "x"})};
    default:
        return SetLayerProperty{id,
                                {},
                                m_dice.oneOf<QString>({"posX", "posY", "sizeW", "fontSize"}),
                                m_dice.oneOf<QString>({"20", "-7.5", "0", "1e9", "nan"})};
    }
}

void RandomShow::playMacro()
{
    Macro macro;
    macro.loopEnabled = m_dice.chance(0.3);
    macro.loopCount = 2;
    for (int steps = 1 + m_dice.below(5); steps > 0; --steps)
        macro.steps.append({newID(), macroStep()});
    m_macros.stopRunning();
    m_macros.runMacro(macro);
}

void RandomShow::runOnce()
{
    const int share = m_dice.below(100);
    if (share < 30) {
        tell("take");
        take();
    } else if (share < 55) {
        tell("time");
        m_clock.advance(Seconds{m_dice.oneOf({0.0, 0.02, 0.04, 0.3, 1.0})});
    } else if (share < 65) {
        tell("group");
        group();
    } else if (share < 70 && m_document.layerOrder().size() < mostLayers) {
        tell("preset");
        applyPreset();
    } else if (share < 78) {
        tell("remove and undo");
        m_document.removeLayer(anyID());
        if (m_dice.chance(0.5))
            deleteRemovedLayers();
        m_history.undoStack().undo();
    } else if (share < 90) {
        tell("history");
        stepThroughHistory();
    } else {
        tell("macro");
        playMacro();
    }
}

void RandomShow::editOnce()
{
    if (m_dice.chance(0.3) && !m_document.layerOrder().isEmpty())
        return runOnce();
    const int share = m_dice.below(100);
    const bool isEmpty = m_document.layerOrder().isEmpty();
    const bool isFull = m_document.layerOrder().size() >= mostLayers;
    if (share < 3) {
        tell("canvas size");
        m_document.setSize(canvasSize());
        if (m_dice.chance(0.7))
            setTargets();
    } else if (share < 8) {
        tell("targets");
        setTargets();
    } else if (isEmpty || (share < 18 && !isFull)) {
        tell("add");
        addLayer();
    } else if (share < 23) {
        tell("remove");
        m_document.removeLayer(anyID());
    } else if (share < 28) {
        tell("replace");
        replaceLayer();
    } else if (share < 33) {
        tell("reorder");
        reorder();
    } else if (share < 48) {
        tell("visibility");
        setVisibility(anyID());
    } else if (share < 52) {
        tell("run settings");
        setRunSettings(anyID());
    } else if (share < 57) {
        tell("slide");
        slideOn();
    } else {
        const std::optional<CanvasLayerItem> item = m_document.layerItem(anyID());
        tell("edit " + kindName(*item));
        m_layers.edit(*item, m_document.size());
    }
}

} // namespace tessara
