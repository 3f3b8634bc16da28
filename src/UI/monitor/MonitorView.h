// What a virtual device sends, as a monitor shows it.
#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QQuickItem>
#include <QTimer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include "DeckLink/SharedFrameReader.h"

#include <vector>

namespace tessara {

/// Looks at the shared memory of the virtual card a few times a second; the program that feeds the
/// card doesn't notice. The key is the device's own, or with two devices the other one's fill.
class MonitorView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString channel READ channel WRITE setChannel NOTIFY channelChanged FINAL)
    Q_PROPERTY(int device MEMBER m_device NOTIFY settingsChanged FINAL)
    /// "fill", "key" or "composite".
    Q_PROPERTY(QString mode MEMBER m_mode NOTIFY settingsChanged FINAL)
    /// Behind the composite; a checkerboard without one.
    Q_PROPERTY(QUrl background READ background WRITE setBackground NOTIFY settingsChanged FINAL)
    Q_PROPERTY(bool hasSignal READ hasSignal NOTIFY statusChanged FINAL)
    /// Mode, frame counter and rate in words.
    Q_PROPERTY(QString description READ description NOTIFY statusChanged FINAL)

public:
    explicit MonitorView(QQuickItem *parent = nullptr);

    QString channel() const { return m_channel; }
    void setChannel(const QString &channel);
    QUrl background() const { return m_background; }
    void setBackground(const QUrl &picture);
    bool hasSignal() const { return m_status.isOutputEnabled && m_status.number > 0; }
    QString description() const;

signals:
    void channelChanged();
    void settingsChanged();
    void statusChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private:
    void look();
    void show(const SharedFrame &frame);
    QImage keyFor(const SharedFrame &frame);
    QImage composite(const QImage &fill, const QImage &key) const;

    QString m_channel;
    int m_device = 0;
    QString m_mode = QStringLiteral("composite");
    QUrl m_background;
    QImage m_backgroundPicture;
    std::vector<SharedFrameReader> m_readers;
    SharedFrameStatus m_status;
    double m_measuredRate = 0; // frames a second
    quint64 m_countedFrom = 0;
    QElapsedTimer m_countedSince;
    QTimer m_timer;
    QImage m_picture;
    bool m_isPictureNew = false;
};

} // namespace tessara
