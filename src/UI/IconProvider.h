// Outline icons in any colour, crisp at any scale.
#pragma once

#include <QQuickImageProvider>

namespace tessara {

/// "image://icons/NAME/RRGGBBAA/LINE": LINE is the line's width in a picture of `sourceSize`.
class IconProvider : public QQuickImageProvider
{
public:
    IconProvider();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace tessara
