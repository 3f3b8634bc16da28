#include "UI/CanvasMarks.h"

#include "Models/CanvasDocument.h"
#include "Rendering/LayerDrawing.h"

#include <QPainter>

namespace tessara {

namespace {

constexpr double checkerCell = 12; // item units
constexpr double gridOpacity = 0.5;
constexpr double haloWidth = 3.25; // item units
constexpr double lineWidth = 1.5;  // item units

QRectF boxInItem(const SelectionFrame &frame, const QRectF &canvas, double scale)
{
    return {canvas.topLeft() + frame.box.topLeft() * scale, frame.box.size() * scale};
}

// Dashed for a layer that is off air.
void paintSelectionFrame(QPainter &painter, const SelectionFrame &frame, const QRectF &box)
{
    const QColor halo(0, 0, 0, 89);
    const QColor lockedLine(255, 255, 255, 184);
    const QColor line(18, 158, 255);
    painter.setPen(QPen(halo, haloWidth));
    painter.drawRect(box);
    painter.setPen(QPen(frame.isLocked ? lockedLine : line, lineWidth,
                        frame.isOnAir ? Qt::SolidLine : Qt::DashLine));
    painter.drawRect(box);
}

} // namespace

QImage checkerboard(QSizeF size, double pixelRatio)
{
    QImage board((size * pixelRatio).toSize(), QImage::Format_RGB32);
    board.fill(Qt::black);
    QPainter painter(&board);
    painter.scale(pixelRatio, pixelRatio);
    const auto shade = [](double white) {
        return QColor::fromRgbF(1, 1, 1, float(white * gridOpacity));
    };
    const QColor shades[] = {shade(0.28), shade(0.18)};
    int row = 0;
    for (double y = 0; y < size.height(); y += checkerCell, ++row) {
        int column = row;
        for (double x = 0; x < size.width(); x += checkerCell, ++column)
            painter.fillRect(QRectF(x, y, checkerCell, checkerCell), shades[column % 2]);
    }
    return board;
}

std::vector<SelectionFrame> selectionFrames(const CanvasDocument &document, TextBlockCache &texts)
{
    const auto &selected = document.selectedLayerIDs();
    const QRectF canvas(QPointF(), document.size());
    std::vector<SelectionFrame> frames;
    if (selected.isEmpty())
        return frames;
    for (const CanvasLayerItem &item : document.orderedLayers()) {
        const Layer *layer = layerOf(item);
        if (selected.contains(layer->id()))
            frames.push_back({drawnBounds(item, canvas, texts),
                              document.takes().isOnAir(layer->id()), layer->isLocked()});
    }
    return frames;
}

PlacedImage selectionPicture(const std::vector<SelectionFrame> &frames, const QRectF &canvas,
                             double scale, const QRectF &bounds, double pixelRatio)
{
    QRectF reach;
    for (const SelectionFrame &frame : frames)
        reach |= boxInItem(frame, canvas, scale).adjusted(-2, -2, 2, 2);
    reach &= bounds;
    const QRect pixels =
        QRectF(reach.topLeft() * pixelRatio, reach.size() * pixelRatio).toAlignedRect();
    if (reach.isEmpty())
        return {};
    QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-pixels.topLeft());
    painter.scale(pixelRatio, pixelRatio);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const SelectionFrame &frame : frames)
        paintSelectionFrame(painter, frame, boxInItem(frame, canvas, scale));
    return {image,
            QRectF(QPointF(pixels.topLeft()) / pixelRatio, QSizeF(pixels.size()) / pixelRatio)};
}

} // namespace tessara
