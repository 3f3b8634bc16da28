// From what the operator does to steps of a macro.
#pragma once

#include <QHash>

#include "Models/CanvasDocument.h"
#include "Models/LayerWatch.h"

namespace tessara {

class MacroManager;

/// Hears of takes, of new layers and of watched properties, and hands them on as steps. Whether a
/// step is kept is the manager's decision.
class MacroRecorder : public DocumentHooks
{
public:
    MacroRecorder(MacroManager &macros, CanvasDocument &document, Clock &clock);
    ~MacroRecorder() override;

    void startMacroObserving(const CanvasLayerItem &item) override;
    void takeRequested(const QUuid &id, const QString &name, bool onAir) override;
    void layerAdded(const CanvasLayerItem &item) override;
    void layerRemoved(const QUuid &id) override;

private:
    MacroManager &m_macros;
    CanvasDocument &m_document;
    Clock &m_clock;
    QHash<QUuid, std::shared_ptr<LayerWatch>> m_macroPropObservers;
};

} // namespace tessara
