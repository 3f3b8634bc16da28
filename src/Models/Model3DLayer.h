// A 3D model on the canvas.
#pragma once

#include <QUrl>

#include "Models/Layer.h"

namespace tessara {

class Model3DLayer : public SizedLayer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(std::optional<QUrl>, fileURL, setFileURL)
    TESSARA_OBSERVABLE(double, cornerRadius, setCornerRadius, 8)     // canvas units
    TESSARA_OBSERVABLE(double, cameraYaw, setCameraYaw, 0)           // degrees
    TESSARA_OBSERVABLE(double, cameraPitch, setCameraPitch, -20)     // degrees
    TESSARA_OBSERVABLE(double, cameraDistance, setCameraDistance, 5) // model units
    TESSARA_OBSERVABLE(double, cameraPanX, setCameraPanX, 0)         // model units
    TESSARA_OBSERVABLE(double, cameraPanY, setCameraPanY, 0)         // model units
    TESSARA_OBSERVABLE(bool, showsFloor, setShowsFloor, false)
    TESSARA_OBSERVABLE(bool, autoFit, setAutoFit, true)
    Q_PROPERTY(std::optional<QUuid> presetGroupID READ presetGroupID WRITE setPresetGroupID FINAL)

public:
    static constexpr QSizeF defaultSize{640, 480};

    Model3DLayer(const QUuid &id, const QString &name, QPointF position, QSizeF size = defaultSize);

    std::optional<QUuid> presetGroupID() const { return m_presetGroupID; }
    void setPresetGroupID(const std::optional<QUuid> &group) { m_presetGroupID = group; }

private:
    std::optional<QUuid> m_presetGroupID;
};

} // namespace tessara
