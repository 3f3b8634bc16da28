// The output, as its sheet and the status bar show it.
#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tessara {

class AppState;
class DeckLinkManager;

/// Lists as labels, choices as rows in them, -1 for none, texts empty where there is nothing to
/// tell.
class OutputModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The workspace makes it")
    Q_PROPERTY(bool sdkAvailable READ sdkAvailable NOTIFY changed FINAL)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY changed FINAL)
    Q_PROPERTY(bool canStart READ canStart NOTIFY changed FINAL)
    Q_PROPERTY(QStringList routingLabels READ routingLabels CONSTANT FINAL)
    Q_PROPERTY(int routing READ routing WRITE setRouting NOTIFY changed FINAL)
    Q_PROPERTY(bool isGreenScreen READ isGreenScreen NOTIFY changed FINAL)
    Q_PROPERTY(bool isKeyAndFill READ isKeyAndFill NOTIFY changed FINAL)
    Q_PROPERTY(bool isKeyAndFillAB READ isKeyAndFillAB NOTIFY changed FINAL)
    Q_PROPERTY(QStringList fillDevices READ fillDevices NOTIFY changed FINAL)
    Q_PROPERTY(int fillDevice READ fillDevice WRITE setFillDevice NOTIFY changed FINAL)
    Q_PROPERTY(QStringList modes READ modes NOTIFY changed FINAL)
    Q_PROPERTY(int mode READ mode WRITE setMode NOTIFY changed FINAL)
    Q_PROPERTY(QStringList keyDevices READ keyDevices NOTIFY changed FINAL)
    Q_PROPERTY(int keyDevice READ keyDevice WRITE setKeyDevice NOTIFY changed FINAL)
    Q_PROPERTY(bool isKeyModeReady READ isKeyModeReady NOTIFY changed FINAL)
    Q_PROPERTY(QString keyModeStatus READ keyModeStatus NOTIFY changed FINAL)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY changed FINAL)
    Q_PROPERTY(QString fillError READ fillError NOTIFY changed FINAL)
    Q_PROPERTY(QString keyError READ keyError NOTIFY changed FINAL)

public:
    explicit OutputModel(AppState &app);

    bool sdkAvailable() const;
    bool isRunning() const;
    bool canStart() const;
    QStringList routingLabels() const;
    int routing() const;
    void setRouting(int row);
    bool isGreenScreen() const;
    bool isKeyAndFill() const;
    bool isKeyAndFillAB() const;
    QStringList fillDevices() const;
    int fillDevice() const;
    void setFillDevice(int row);
    QStringList modes() const;
    int mode() const;
    void setMode(int row);
    QStringList keyDevices() const;
    int keyDevice() const;
    void setKeyDevice(int row);
    bool isKeyModeReady() const;
    QString keyModeStatus() const;
    QString statusMessage() const;
    QString fillError() const;
    QString keyError() const;

    /// A running output is stopped first.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
    Q_INVOKABLE void refresh();

signals:
    void changed();

private:
    AppState &m_app;
    DeckLinkManager &m_fill;
    DeckLinkManager &m_key;
};

} // namespace tessara
