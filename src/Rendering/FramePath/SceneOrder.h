// Which layers a frame shows, from the lowest to the highest, and what has changed in them.
#pragma once

#include "Rendering/FramePath/SceneLayer.h"
#include "Rendering/FramePath/TileDamage.h"

#include <QObject>
#include <QPointer>

namespace tessara {

class CanvasDocument;

/// Listens to one document. It holds no layer of it, only ids.
class SceneOrder
{
    Q_DISABLE_COPY_MOVE(SceneOrder)

public:
    SceneOrder() = default;

    /// Null before the first, and when it has gone.
    const CanvasDocument *document() const { return m_document; }
    /// Forgets what it knew of another.
    void watch(const CanvasDocument &document);
    /// Nothing that was drawn before is of use.
    void markAll();

    /// All layers are placed, in the document's order.
    bool isCurrent() const;
    /// Takes up the document's order. What leaves its place leaves the frame, which is damage.
    void sync(TileDamage &damage);
    std::vector<SceneLayer> &layers() { return m_layers; }

private:
    SceneLayer *find(const QUuid &id);

    QPointer<const CanvasDocument> m_document;
    std::unique_ptr<QObject> m_listener; // the connections' life
    bool m_isSorted = false;
    std::vector<SceneLayer> m_layers;
};

} // namespace tessara
