// Colours as files and layers hold them.
#pragma once

#include <QColor>
#include <QJsonObject>
#include <QObject>

#include <tl/expected.hpp>

namespace tessara {

/// Four fractions of 0 to 1, sRGB, not premultiplied.
struct RGBAColor
{
    Q_GADGET
    Q_PROPERTY(double red MEMBER red FINAL)
    Q_PROPERTY(double green MEMBER green FINAL)
    Q_PROPERTY(double blue MEMBER blue FINAL)
    Q_PROPERTY(double alpha MEMBER alpha FINAL)

public:
    double red = 1;   // 0 to 1
    double green = 1; // 0 to 1
    double blue = 1;  // 0 to 1
    double alpha = 1; // 0 to 1

    static const RGBAColor white;

    /// In sRGB; white for a colour that is not valid.
    static RGBAColor fromColor(const QColor &color);
    /// Parts beyond 0 to 1 are cut, non-finite ones are 0.
    QColor color() const;

    QJsonObject toJson() const;
    /// An error names the missing or mistyped key.
    static tl::expected<RGBAColor, QString> fromJson(const QJsonValue &value);

    bool operator==(const RGBAColor &) const = default;
};

} // namespace tessara
