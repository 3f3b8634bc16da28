// The document, fitted and to scale.
#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include "Rendering/FramePath/FramePath.h"
#include "Rendering/TextBlockCache.h"
#include "UI/CanvasMarks.h"
#include "UI/Workspace.h"

namespace tessara {

class CanvasDocument;

/// Shows what is on the canvas, upright, at the size in which it is seen, drawn with a frame path
/// of its own. It follows changes, but never faster than an operator can see. While output runs it
/// is slower, and has its sprites made on another thread: the main thread belongs to the air first.
class CanvasView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessara::Workspace *workspace READ workspace WRITE setWorkspace NOTIFY
                   workspaceChanged FINAL)
    /// The canvas inside the item, in the item's units; whole pixels of the display.
    Q_PROPERTY(QRectF canvasRect READ canvasRect NOTIFY canvasRectChanged FINAL)
    /// Item units for a canvas unit.
    Q_PROPERTY(double canvasScale READ canvasScale NOTIFY canvasRectChanged FINAL)
    /// Free space that stays on all sides.
    Q_PROPERTY(double margin MEMBER m_margin NOTIFY canvasRectChanged FINAL)

public:
    explicit CanvasView(QQuickItem *parent = nullptr);

    Workspace *workspace() const { return m_workspace; }
    void setWorkspace(Workspace *workspace);
    QRectF canvasRect() const;
    double canvasScale() const;

signals:
    void workspaceChanged();
    void canvasRectChanged();
    /// Something looks otherwise than before.
    void drawn();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    /// What pictures are made for.
    struct Place
    {
        QRectF canvas; // item units
        QRectF item;   // item units
        double scale = 0;
        double pixelRatio = 1;

        bool operator==(const Place &) const = default;
    };

    CanvasDocument *document() const;
    double pixelRatio() const;
    Place placeNow() const;
    /// What the next pictures are for.
    Place nextPlace() const;
    FrameGeometry geometryOf(const Place &place) const;
    bool isOnOutput() const;
    bool mayDraw();
    void contentChanged();
    void repaintNow();
    bool drawFrame();
    bool drawSelection();

    QPointer<Workspace> m_workspace;
    double m_margin = 24; // item units
    QTimer m_pause;       // until the next repaint may come
    bool m_isDirty = false;
    int m_waits = 0;   // for sprites
    QTimer m_resizing; // until the size counts as final
    bool m_isShown = false;

    Place m_place;
    FramePath m_frames;
    TextBlockCache m_texts; // of selected layers
    QImage m_checkerboard;
    QImage m_frame;
    std::vector<SelectionFrame> m_selected;
    PlacedImage m_selection;
};

} // namespace tessara
