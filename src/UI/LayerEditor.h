// The selected layer's properties, as the inspector binds to them.
#pragma once

#include <QPointer>
#include <QQmlPropertyMap>

#include "Models/CanvasDocument.h"

namespace tessara {

/// One entry for each property of the selected layer, under its own name: colours as QML colours,
/// enumerations by the names of their cases, absent values as undefined. A written entry goes to
/// the layer, and every change of the layer comes back. Beside them stand "kindName" ("group" with
/// layers of one group selected, empty with no selection or several), "groupName",
/// "selectionCount", "transitionStyle", "dissolveDuration", "autoOutDuration", "aspectRatioLocked",
/// "isOnAir" and "typeIcon", and for texts "textNote": a sentence where not all of it is drawn,
/// else empty.
class LayerEditor : public QQmlPropertyMap
{
    Q_OBJECT

public:
    explicit LayerEditor(CanvasDocument &document);

    /// For texts: makes one a template field, or no longer.
    Q_INVOKABLE void setDynamicField(bool isField);
    /// Stored as keys are compared: trimmed, in small letters, without blanks.
    Q_INVOKABLE void setFieldKey(const QString &typed);
    /// For countdowns.
    Q_INVOKABLE void startCountdown();
    Q_INVOKABLE void pauseCountdown();
    Q_INVOKABLE void resetCountdown();
    Q_INVOKABLE void setCountdownTime(double seconds);
    /// For score bars.
    Q_INVOKABLE void applySportPreset();
    /// For groups.
    Q_INVOKABLE void ungroup();
    Q_INVOKABLE void removeGroup();
    Q_INVOKABLE void setPosition(double x, double y);
    /// A locked aspect ratio holds: the other side follows the one that is given.
    Q_INVOKABLE void setWidth(double width);
    Q_INVOKABLE void setHeight(double height);
    Q_INVOKABLE void setAspectRatioLocked(bool locked);

signals:
    /// The selection has changed, and what is written now still goes to what was selected, unless
    /// that has gone.
    void aboutToFollow();

protected:
    QVariant updateValue(const QString &key, const QVariant &input) override;

private:
    void follow();
    void leave();
    void readAll();
    void readRunSettings();
    void publish(const QString &key, const QVariant &value);
    CountdownLayer *countdown() const;
    QString groupName() const;
    bool isOnAir() const;
    bool writeRunSetting(const QString &key, const QVariant &input);
    void setSize(QSizeF size);
    double keptRatio() const;

    CanvasDocument &m_document;
    QPointer<Layer> m_layer;
    std::optional<QUuid> m_groupID;
};

} // namespace tessara
