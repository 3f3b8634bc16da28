#include "Models/LayerEnums.h"

namespace tessara {

QString displayName(ShapeKind kind)
{
    switch (kind) {
    case ShapeKind::rectangle:
        return QStringLiteral("Rectangle");
    case ShapeKind::ellipse:
        return QStringLiteral("Ellipse");
    case ShapeKind::triangle:
        return QStringLiteral("Triangle");
    case ShapeKind::diamond:
        return QStringLiteral("Diamond");
    case ShapeKind::star:
        return QStringLiteral("Star");
    case ShapeKind::line:
        return QStringLiteral("Line");
    case ShapeKind::custom:
        return QStringLiteral("Draw");
    }
    Q_UNREACHABLE();
}

QString iconName(ShapeKind kind)
{
    switch (kind) {
    case ShapeKind::rectangle:
        return QStringLiteral("rectangle");
    case ShapeKind::ellipse:
        return QStringLiteral("oval");
    case ShapeKind::triangle:
        return QStringLiteral("triangle");
    case ShapeKind::diamond:
        return QStringLiteral("diamond");
    case ShapeKind::star:
        return QStringLiteral("star");
    case ShapeKind::line:
        return QStringLiteral("minus");
    case ShapeKind::custom:
        return QStringLiteral("scribble");
    }
    Q_UNREACHABLE();
}

} // namespace tessara
