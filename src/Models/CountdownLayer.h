// A timer that runs down, on air or off.
#pragma once

#include "Base/RepeatingTimer.h"
#include "Models/FontResolution.h"
#include "Models/Layer.h"
#include "Models/RGBAColor.h"

namespace tessara {

class CountdownLayer : public SizedLayer
{
    Q_OBJECT
    TESSARA_OBSERVABLE(double, cornerRadius, setCornerRadius, 0) // canvas units
    TESSARA_OBSERVABLE(bool, isAspectRatioLocked, setIsAspectRatioLocked, false)
    TESSARA_OBSERVABLE(double, totalSeconds, setTotalSeconds, 300)
    TESSARA_OBSERVABLE(double, remainingSeconds, setRemainingSeconds, 300)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged FINAL)
    TESSARA_OBSERVABLE(double, fontSize, setFontSize, 96) // canvas units
    TESSARA_OBSERVABLE(tessara::RGBAColor, textColor, setTextColor)
    TESSARA_OBSERVABLE(qint64, fontWeight, setFontWeight, 7) // 1 (thin) to 9 (black)
    TESSARA_OBSERVABLE(std::optional<QString>, fontFamily, setFontFamily)
    TESSARA_OBSERVABLE(bool, showBackground, setShowBackground, false)
    TESSARA_OBSERVABLE(tessara::RGBAColor, backgroundColor, setBackgroundColor, 0, 0, 0, 0.55)
    TESSARA_OBSERVABLE(double, warningThreshold, setWarningThreshold, 30) // s
    TESSARA_OBSERVABLE(tessara::RGBAColor, warningColor, setWarningColor, 1, 0.65, 0, 1)
    TESSARA_OBSERVABLE(double, urgentThreshold, setUrgentThreshold, 10) // s
    TESSARA_OBSERVABLE(tessara::RGBAColor, urgentColor, setUrgentColor, 1, 0.15, 0.15, 1)
    Q_PROPERTY(QString formattedTime READ formattedTime NOTIFY remainingSecondsChanged FINAL)
    Q_PROPERTY(tessara::RGBAColor currentColor READ currentColor FINAL)

public:
    CountdownLayer(Clock &clock, const QUuid &id, const QString &name, QPointF position,
                   QSizeF size);

    bool isRunning() const { return m_isRunning; }

    /// Nothing happens at 0 and during a run.
    Q_INVOKABLE void start();
    /// The time that is left stays.
    Q_INVOKABLE void pause();

    /// Whole seconds, cut: "mm:ss", from one hour "hh:mm:ss".
    QString formattedTime() const;
    /// Urgent wins over warning, whichever threshold is the larger.
    RGBAColor currentColor() const;
    QFont::Weight resolvedFontWeight() const;
    SizedFont resolvedFont() const;

    Q_SIGNAL void isRunningChanged();

private:
    void tick();
    void stop();

    Clock &m_clock;
    bool m_isRunning = false;
    std::optional<Nanoseconds> m_lastTick;
    std::optional<RepeatingTimer> m_timer;
};

} // namespace tessara
