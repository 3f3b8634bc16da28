// The document, fitted and to scale.
#pragma once

#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include "Rendering/TextBlockCache.h"
#include "UI/Workspace.h"

namespace tessara {

class CanvasDocument;

/// Paints what is on the canvas with the frame's own drawing, upright, at the size in which it is
/// shown. It follows changes, but never faster than an operator can see, and slower while output
/// runs: the main thread belongs to the air first.
class CanvasView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessara::Workspace *workspace READ workspace WRITE setWorkspace NOTIFY
                   workspaceChanged FINAL)
    /// The canvas inside the item, in the item's units.
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

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    CanvasDocument *document() const;
    void contentChanged();
    void repaintNow();
    void paintCanvas(QPainter &painter);
    void paintSelection(QPainter &painter);

    QPointer<Workspace> m_workspace;
    TextBlockCache m_texts;
    QImage m_picture;
    bool m_isPictureNew = false;
    double m_margin = 24; // item units
    QTimer m_pause;       // until the next repaint may come
    bool m_isDirty = false;
};

} // namespace tessara
