// One picture of a preset, inline.
#pragma once

#include <QByteArray>
#include <QPointF>
#include <QRectF>

#include "Models/LayerEnums.h"

#include <optional>

namespace tessara {

struct PresetImageEntry
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(QPointF position MEMBER position FINAL)
    Q_PROPERTY(QSizeF size MEMBER size FINAL)
    Q_PROPERTY(double opacity MEMBER opacity FINAL)
    Q_PROPERTY(bool isAspectRatioLocked MEMBER isAspectRatioLocked FINAL)
    Q_PROPERTY(std::optional<QRectF> cropRectNormalized MEMBER cropRectNormalized FINAL)
    Q_PROPERTY(std::optional<QString> placeholderKey MEMBER placeholderKey FINAL)
    Q_PROPERTY(std::optional<tessara::ImageLayerContentMode> contentMode MEMBER contentMode FINAL)
    Q_PROPERTY(std::optional<tessara::ImageLayerMaskShape> maskShape MEMBER maskShape FINAL)
    Q_PROPERTY(std::optional<double> maskPadding MEMBER maskPadding FINAL)
    Q_PROPERTY(QString pngBase64 MEMBER pngBase64 FINAL)

public:
    QString name{};
    QPointF position{}; // canvas units
    QSizeF size{0, 0};  // canvas units
    double opacity = 1; // 0 to 1
    bool isAspectRatioLocked = true;
    std::optional<QRectF> cropRectNormalized{}; // fractions of the picture
    std::optional<QString> placeholderKey{};
    std::optional<ImageLayerContentMode> contentMode{};
    std::optional<ImageLayerMaskShape> maskShape{};
    std::optional<double> maskPadding{}; // canvas units
    QString pngBase64{};                 // a whole PNG file, without line breaks

    /// The picture's file. Nothing for a text that is no base64: line breaks and other strange
    /// characters are no part of it, and its last group is filled up.
    std::optional<QByteArray> pngData() const;

    /// To the last bit, geometry included.
    bool operator==(const PresetImageEntry &other) const;
};

} // namespace tessara
