#include "Core/Macros/MacroRecorder.h"

#include "Core/Macros/MacroManager.h"
#include "Models/LayerCapture.h"

namespace tessara {

MacroRecorder::MacroRecorder(MacroManager &macros, CanvasDocument &document, Clock &clock)
    : m_macros(macros)
    , m_document(document)
    , m_clock(clock)
{
    m_document.addHooks(this);
}

MacroRecorder::~MacroRecorder()
{
    m_document.removeHooks(this);
}

void MacroRecorder::startMacroObserving(const CanvasLayerItem &item)
{
    const Layer *layer = layerOf(item);
    m_macroPropObservers[layer->id()] = std::make_shared<LayerWatch>(
        m_clock, item, [this] { return !m_macros.isRunning() && !m_document.isClockWriting(); },
        [this, layer](const LayerPropertyRow &row, const QString &value) {
            m_macros.record(SetLayerProperty{layer->id(), layer->name(), row.key, value});
        });
}

void MacroRecorder::takeRequested(const QUuid &id, const QString &name, bool onAir)
{
    if (onAir)
        m_macros.record(ShowLayer{id, name});
    else
        m_macros.record(HideLayer{id, name});
}

void MacroRecorder::layerAdded(const CanvasLayerItem &item)
{
    if (m_macros.isRunning())
        return;
    const CapturedLayer captured = captureLayerProps(item);
    m_macros.record(AddLayer{layerOf(item)->id(), captured.type, captured.props});
}

void MacroRecorder::layerRemoved(const QUuid &id)
{
    m_macroPropObservers.remove(id);
}

} // namespace tessara
