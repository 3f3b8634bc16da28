// A live web page on the canvas.
#pragma once

#include "Models/Layer.h"

namespace tessara {

class WebLayer : public AspectLockedLayer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(QString, urlString, setUrlString)
    TESSARA_OBSERVABLE(double, cornerRadius, setCornerRadius, 8) // canvas units
    TESSARA_OBSERVABLE(bool, isInteractive, setIsInteractive, false)
    TESSARA_OBSERVABLE(double, volume, setVolume, 1) // 0 to 1
    TESSARA_OBSERVABLE(bool, isMuted, setIsMuted, false)
    Q_PROPERTY(std::optional<QUuid> presetGroupID READ presetGroupID WRITE setPresetGroupID FINAL)

public:
    static constexpr QSizeF defaultSize{640, 360};

    WebLayer(const QUuid &id, const QString &name, const QString &urlString, QPointF position,
             QSizeF size = defaultSize);

    std::optional<QUuid> presetGroupID() const { return m_presetGroupID; }
    void setPresetGroupID(const std::optional<QUuid> &group) { m_presetGroupID = group; }

private:
    std::optional<QUuid> m_presetGroupID;
};

} // namespace tessara
