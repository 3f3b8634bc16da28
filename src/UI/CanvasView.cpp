#include "UI/CanvasView.h"

#include "Core/AppState.h"
#include "Rendering/LayerDrawing.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr int pauseAtRest = 16;    // ms between two repaints
constexpr int pauseOnOutput = 66;  // ms; the frames of the air come first
constexpr double checkerCell = 12; // item units
constexpr double gridOpacity = 0.5;

void paintChecker(QPainter &painter, const QRectF &rect)
{
    painter.fillRect(rect, Qt::black);
    const auto shade = [](double white) {
        return QColor::fromRgbF(1, 1, 1, float(white * gridOpacity));
    };
    const QColor shades[] = {shade(0.28), shade(0.18)};
    painter.save();
    painter.setClipRect(rect);
    int row = 0;
    for (double y = rect.top(); y < rect.bottom(); y += checkerCell, ++row) {
        int column = row;
        for (double x = rect.left(); x < rect.right(); x += checkerCell, ++column)
            painter.fillRect(QRectF(x, y, checkerCell, checkerCell), shades[column % 2]);
    }
    painter.restore();
}

} // namespace

CanvasView::CanvasView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isDirty)
            repaintNow();
    });
    connect(this, &CanvasView::canvasRectChanged, this, &CanvasView::contentChanged);
}

CanvasDocument *CanvasView::document() const
{
    return m_workspace ? m_workspace->app().document() : nullptr;
}

void CanvasView::setWorkspace(Workspace *workspace)
{
    if (m_workspace == workspace)
        return;
    m_workspace = workspace;
    if (CanvasDocument *shown = document()) {
        connect(shown, &CanvasDocument::changed, this, &CanvasView::contentChanged);
        connect(shown, &CanvasDocument::sizeChanged, this, &CanvasView::canvasRectChanged);
    }
    emit workspaceChanged();
    emit canvasRectChanged();
}

double CanvasView::canvasScale() const
{
    const CanvasDocument *shown = document();
    if (!shown || shown->size().isEmpty())
        return 0;
    const double across = (width() - 2 * m_margin) / shown->size().width();
    const double down = (height() - 2 * m_margin) / shown->size().height();
    return std::max(0.0, std::min(across, down));
}

QRectF CanvasView::canvasRect() const
{
    const CanvasDocument *shown = document();
    const QSizeF size = shown ? shown->size() * canvasScale() : QSizeF();
    return {std::round((width() - size.width()) / 2), std::round((height() - size.height()) / 2),
            std::round(size.width()), std::round(size.height())};
}

void CanvasView::contentChanged()
{
    m_isDirty = true;
    if (!m_pause.isActive())
        repaintNow();
}

void CanvasView::repaintNow()
{
    m_isDirty = false;
    const bool isOnOutput = m_workspace && m_workspace->app().isDeckLinkOutputRunning();
    m_pause.start(isOnOutput ? pauseOnOutput : pauseAtRest);
    polish();
}

void CanvasView::updatePolish()
{
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    const QSize size = (QSizeF(width(), height()) * ratio).toSize();
    if (size.isEmpty())
        return;
    m_picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
    m_picture.fill(Qt::transparent);
    QPainter painter(&m_picture);
    painter.scale(ratio, ratio);
    if (document())
        paintCanvas(painter);
    painter.end();
    m_isPictureNew = true;
    update();
}

void CanvasView::paintCanvas(QPainter &painter)
{
    const QRectF rect = canvasRect();
    paintChecker(painter, rect);
    painter.save();
    painter.setClipRect(rect);
    painter.translate(rect.topLeft());
    painter.scale(canvasScale(), canvasScale());
    const CanvasDocument &shown = *document();
    for (const CanvasLayerItem &item : shown.orderedLayers()) {
        const double opacity = runOpacity(shown, item);
        if (opacity > 0)
            drawLayer(painter, shown, item, opacity, DrawingStyle::canvas, m_texts);
    }
    painter.restore();
    paintSelection(painter);
}

// A line round each selected layer, dashed for one that is off air.
void CanvasView::paintSelection(QPainter &painter)
{
    const CanvasDocument &shown = *document();
    const QRectF rect = canvasRect();
    const QColor halo(0, 0, 0, 89);
    const QColor lockedLine(255, 255, 255, 184);
    const QColor line(18, 158, 255);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const CanvasLayerItem &item : shown.orderedLayers()) {
        const Layer *layer = layerOf(item);
        if (!shown.selectedLayerIDs().contains(layer->id()))
            continue;
        const QRectF bounds = drawnBounds(item, m_texts);
        const QRectF frame(rect.topLeft() + bounds.topLeft() * canvasScale(),
                           bounds.size() * canvasScale());
        const bool isOnAir = shown.takes().isOnAir(layer->id());
        painter.setPen(QPen(halo, 3.25));
        painter.drawRect(frame);
        painter.setPen(QPen(layer->isLocked() ? lockedLine : line, 1.5,
                            isOnAir ? Qt::SolidLine : Qt::DashLine));
        painter.drawRect(frame);
    }
}

QSGNode *CanvasView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *image = static_cast<QSGImageNode *>(node);
    if (m_picture.isNull())
        return image;
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
        m_isPictureNew = true;
    }
    if (m_isPictureNew)
        image->setTexture(window()->createTextureFromImage(m_picture));
    m_isPictureNew = false;
    image->setRect(boundingRect());
    return image;
}

void CanvasView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        emit canvasRectChanged();
}

void CanvasView::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        contentChanged();
    QQuickItem::itemChange(change, data);
}

} // namespace tessara
