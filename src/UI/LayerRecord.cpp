#include "UI/LayerRecord.h"

#include "Models/CanvasDocument.h"

namespace tessara {

namespace {

struct KindLook
{
    const char *icon;
    const char *typeText;
    bool isLiveView = false;
};

KindLook lookOf(const CanvasLayerItem &item)
{
    return std::visit(
        Overloaded{[](const TextLayer *text) {
                       return text->fieldKind() == TemplateFieldKind::timer
                                  ? KindLook{"clock-4", "TIMER"}
                                  : KindLook{"type", "TEXT"};
                   },
                   [](const ImageLayer *) { return KindLook{"image", "IMAGE"}; },
                   [](const ShapeLayer *) { return KindLook{"shapes", "SHAPE"}; },
                   [](const ScoreLayer *) { return KindLook{"trophy", "SCORE"}; },
                   [](const WebLayer *) { return KindLook{"globe", "WEB", true}; },
                   [](const Model3DLayer *) { return KindLook{"box", "3D MODEL", true}; },
                   [](const WindowCaptureLayer *) {
                       return KindLook{"app-window", "WINDOW", true};
                   },
                   [](const CountdownLayer *) { return KindLook{"timer", "COUNTDOWN"}; }},
        item);
}

} // namespace

LayerRecord::LayerRecord(CanvasDocument &document, const QUuid &id)
    : m_document(document)
    , m_id(id)
{
    if (const std::optional<CanvasLayerItem> item = document.layerItem(id)) {
        const KindLook look = lookOf(*item);
        m_icon = QLatin1String(look.icon);
        m_typeText = QLatin1String(look.typeText);
        m_isLiveView = look.isLiveView;
        m_kind = kindName(*item);
    }
}

QString LayerRecord::name() const
{
    const Layer *layer = m_document.layer(m_id);
    return layer ? layer->name() : QString();
}

bool LayerRecord::isOnAir() const
{
    return m_document.takes().isOnAir(m_id);
}

double LayerRecord::visibility() const
{
    const Layer *layer = m_document.layer(m_id);
    return layer ? m_document.effectiveVisibility(m_id, layer->isHidden()) : 0;
}

bool LayerRecord::isSelected() const
{
    return m_document.selectedLayerIDs().contains(m_id);
}

bool LayerRecord::isLocked() const
{
    const Layer *layer = m_document.layer(m_id);
    return layer && layer->isLocked();
}

void LayerRecord::toggleOnAir()
{
    if (!isLocked())
        m_document.toggleLayerInRunlist(m_id);
}

void LayerRecord::select()
{
    m_document.setSelectedLayerIDs({m_id});
}

void LayerRecord::toggleSelected()
{
    m_document.toggleLayerSelection(m_id);
}

void LayerRecord::toggleLocked()
{
    m_document.toggleLayerLocked(m_id);
}

void LayerRecord::rename(const QString &name)
{
    m_document.renameLayer(m_id, name);
}

void LayerRecord::duplicate()
{
    m_document.duplicateLayer(m_id);
}

void LayerRecord::remove()
{
    m_document.removeLayer(m_id);
}

} // namespace tessara
