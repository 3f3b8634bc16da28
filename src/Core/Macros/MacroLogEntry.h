// What the operator did, as the macro log lists it.
#pragma once

#include <QDateTime>
#include <QUuid>

namespace tessara {

struct MacroLogEntry
{
    Q_GADGET
    Q_PROPERTY(QUuid id MEMBER id FINAL)
    Q_PROPERTY(QDateTime date MEMBER date FINAL)
    Q_PROPERTY(QString icon MEMBER icon FINAL)
    Q_PROPERTY(QString label MEMBER label FINAL)
    Q_PROPERTY(QString detail MEMBER detail FINAL)
    Q_PROPERTY(bool isRecorded MEMBER isRecorded FINAL)

public:
    QUuid id;
    QDateTime date;
    QString icon;
    QString label;
    QString detail;
    bool isRecorded = false; // it became a step of the recording

    bool operator==(const MacroLogEntry &) const = default;
};

} // namespace tessara
