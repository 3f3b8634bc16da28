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
    makeDocument();
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
    if (share < 0.05)
        return {m_dice.between(1, 30), m_dice.between(1, 30)};
    const QSizeF size(m_dice.between(64, 280), m_dice.between(48, 200));
    if (share < 0.3)
        return size; // with fractions, of which the frame has none
    return {std::floor(size.width()), std::floor(size.height())};
}

void RandomShow::makeDocument()
{
    m_document = std::make_unique<CanvasDocument>(m_clock, canvasSize());
    for (int layers = m_dice.below(8); layers > 0; --layers)
        addLayer();
    for (const QUuid &id : m_document->layerOrder()) {
        if (m_dice.chance(0.3))
            setVisibility(id);
        if (m_dice.chance(0.3))
            setRunSettings(id);
    }
}

void RandomShow::addLayer()
{
    m_document->addLayer(m_layers.layer(newID(), m_document->size()));
}

// As an undone removal does: another object under the same id, maybe at the same address.
void RandomShow::replaceLayer()
{
    const QList<QUuid> order = m_document->layerOrder();
    const QUuid id = anyID();
    const QMap<QUuid, double> visibility = m_document->layerVisibility();
    m_document->removeLayerCore(id);
    deleteRemovedLayers();
    m_document->addLayer(m_layers.layer(id, m_document->size()));
    if (m_dice.chance(0.7))
        m_document->restoreLayerOrder(order);
    if (m_dice.chance(0.5))
        m_document->setLayerVisibility(visibility);
}

void RandomShow::reorder()
{
    QList<QUuid> order = m_document->layerOrder();
    if (m_dice.chance(0.5)) {
        m_document->moveInLayerOrder(anyID(), m_dice.below(int(order.size())));
        return;
    }
    for (qsizetype left = order.size(); left > 1; --left)
        std::swap(order[left - 1], order[m_dice.below(int(left))]);
    m_document->reorderLayers(order);
}

void RandomShow::setVisibility(const QUuid &id)
{
    const double value = m_dice.oneOf({0.0, 1.0, 0.5, 0.001, 0.0011, 1 / 21.0, 0.999, 2.0, -1.0,
                                       std::numeric_limits<double>::quiet_NaN(), m_dice.fraction(),
                                       m_dice.fraction(), m_dice.fraction(),
                                       m_dice.below(22) / 21.0, m_dice.below(22) / 21.0});
    m_document->takes().setVisibility(id, value);
}

void RandomShow::setRunSettings(const QUuid &id)
{
    using enum LayerRunTransitionStyle;
    m_document->setRunTransitionStyle(
        m_dice.oneOf({cut, dissolve, dissolve, dissolve, presetReveal, presetReveal}), id);
}

// All of them at the next step of one take.
void RandomShow::slideOn()
{
    const double value = m_dice.fraction();
    for (const QUuid &id : m_document->layerOrder())
        m_document->takes().setVisibility(id, value);
}

QSize RandomShow::targetSize()
{
    const QSize frame = m_document->size().toSize();
    const double share = m_dice.fraction();
    if (share < 0.05)
        return {std::max(1, frame.width() / 2), std::max(1, frame.height() / 2)};
    if (share < 0.3)
        return {1 + m_dice.below(200), 1 + m_dice.below(120)};
    const QSizeF canvas = m_document->size();
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
    for (const CanvasLayerItem &item : m_document->orderedLayers()) {
        const Layer *layer = layerOf(item);
        const QSizeF slide = m_document->effectiveTransitionOffset(layer->id(), layer->isHidden());
        out << "\n"
            << layer->metaObject()->className() << "visibility"
            << m_document->layerVisibility().value(layer->id()) << "slide" << slide;
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

void RandomShow::editOnce()
{
    const int share = m_dice.below(100);
    const bool isEmpty = m_document->layerOrder().isEmpty();
    const bool isFull = m_document->layerOrder().size() >= mostLayers;
    if (share < 3) {
        tell("canvas size");
        m_document->setSize(canvasSize());
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
        m_document->removeLayer(anyID());
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
        const std::optional<CanvasLayerItem> item = m_document->layerItem(anyID());
        tell("edit " + kindName(*item));
        m_layers.edit(*item, m_document->size());
    }
}

} // namespace tessara
