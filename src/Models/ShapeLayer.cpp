#include "Models/ShapeLayer.h"

#include "Models/LayerGeometry.h"

#include <cmath>
#include <numbers>

namespace tessara {

namespace {

QPainterPath closedPolygon(const QPolygonF &polygon)
{
    QPainterPath path;
    path.addPolygon(polygon);
    path.closeSubpath();
    return path;
}

QPainterPath starPath(const QRectF &rect)
{
    constexpr int tips = 5;
    constexpr double innerRatio = 0.38;
    const double outer = std::min(rect.width(), rect.height()) * 0.5;
    QPolygonF polygon;
    for (int corner = 0; corner < 2 * tips; ++corner) {
        const double angle = corner * std::numbers::pi / tips - std::numbers::pi / 2;
        const double radius = corner % 2 == 0 ? outer : outer * innerRatio;
        polygon << rect.center() + radius * QPointF(std::cos(angle), std::sin(angle));
    }
    return closedPolygon(polygon);
}

QPainterPath customPath(const QRectF &rect, const QList<QPointF> &points)
{
    if (points.isEmpty()) {
        QPainterPath path;
        path.addRect(rect);
        return path;
    }
    QPolygonF polygon;
    for (const QPointF &point : points)
        polygon << QPointF(rect.left() + point.x() * rect.width(),
                           rect.top() + point.y() * rect.height());
    return closedPolygon(polygon);
}

QPainterPath makePath(const ShapeKindPath &shape, const QRectF &rect)
{
    const QPointF top(rect.center().x(), rect.top());
    const QPointF bottom(rect.center().x(), rect.bottom());
    const QPointF left(rect.left(), rect.center().y());
    const QPointF right(rect.right(), rect.center().y());
    QPainterPath path;
    switch (shape.kind) {
    case ShapeKind::rectangle:
    case ShapeKind::line:
        path.addRoundedRect(rect, shape.cornerRadius, shape.cornerRadius);
        return path;
    case ShapeKind::ellipse:
        path.addEllipse(rect);
        return path;
    case ShapeKind::triangle:
        return closedPolygon(QPolygonF() << top << rect.bottomRight() << rect.bottomLeft());
    case ShapeKind::diamond:
        return closedPolygon(QPolygonF() << top << right << bottom << left);
    case ShapeKind::star:
        return starPath(rect);
    case ShapeKind::custom:
        return customPath(rect, shape.customPoints);
    }
    Q_UNREACHABLE();
}

} // namespace

QPainterPath ShapeKindPath::path(QRectF rect) const
{
    QPainterPath path = makePath(*this, rect);
    path.setFillRule(Qt::WindingFill);
    return path;
}

ShapeLayer::ShapeLayer(const QUuid &id, const QString &name, ShapeKind kind, QPointF position,
                       QSizeF size)
    : AspectLockedLayer(id, name, position, size)
    , m_kind(kind)
{
    setLockedAspectRatio(aspectRatio(size).value_or(standardAspectRatio));
}

} // namespace tessara
