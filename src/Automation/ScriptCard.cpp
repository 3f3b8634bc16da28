#include "Automation/ScriptCard.h"

#include "Automation/Background.h"
#include "Automation/ScriptFrame.h"
#include "DeckLink/VirtualCard.h"

#include <QJsonArray>

namespace tessara {

namespace {

ScriptResult noCard()
{
    return tl::unexpected(QStringLiteral("the virtual card is not loaded"));
}

ScriptResult done(bool isDone, const QString &error)
{
    return isDone ? ScriptResult(QJsonValue()) : tl::unexpected(error);
}

QString noDevice(int device)
{
    return QStringLiteral("no device %1").arg(device);
}

QJsonObject description(const VirtualCardDevice &device)
{
    return {{QStringLiteral("name"), device.name},
            {QStringLiteral("externalKeying"), device.supportsExternalKeying},
            {QStringLiteral("internalKeying"), device.supportsInternalKeying},
            {QStringLiteral("plugged"), device.isPlugged},
            {QStringLiteral("outputEnabled"), device.isOutputEnabled},
            {QStringLiteral("keyerEnabled"), device.isKeyerEnabled},
            {QStringLiteral("keyerLevel"), device.keyerLevel},
            {QStringLiteral("mode"), device.modeName}};
}

QJsonObject description(const VirtualCardFrames &frames)
{
    const QJsonObject intervals{{QStringLiteral("p50"), frames.intervals.p50},
                                {QStringLiteral("p99"), frames.intervals.p99},
                                {QStringLiteral("max"), frames.intervals.max}};
    return {
        {QStringLiteral("sent"), frames.sent},         {QStringLiteral("format"), frames.format},
        {QStringLiteral("width"), frames.width},       {QStringLiteral("height"), frames.height},
        {QStringLiteral("rowBytes"), frames.rowBytes}, {QStringLiteral("intervals"), intervals}};
}

tl::expected<QStringList, QString> namesIn(const QJsonValue &value)
{
    QStringList names;
    for (const QJsonValue &name : value.toArray()) {
        if (!name.isString())
            return tl::unexpected(QStringLiteral("wanted an array of names"));
        names.append(name.toString());
    }
    return value.isArray() ? tl::expected<QStringList, QString>(names)
                           : tl::unexpected(QStringLiteral("wanted an array of names"));
}

tl::expected<VirtualCardLimits, QString> limitsIn(const QJsonValue &value)
{
    if (!value.isObject())
        return tl::unexpected(QStringLiteral("wanted an object"));
    VirtualCardLimits limits;
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const bool isModes = entry.key() == QStringLiteral("modes");
        if (isModes || entry.key() == QStringLiteral("formats")) {
            const tl::expected<QStringList, QString> names = namesIn(entry.value());
            if (!names)
                return tl::unexpected(names.error());
            (isModes ? limits.modes : limits.formats) = *names;
        } else if (entry.key() == QStringLiteral("keying") && entry.value().isBool()) {
            limits.keying = entry.value().toBool();
        } else if (entry.key() == QStringLiteral("rowBytes") && entry.value().toInt(-1) >= 0) {
            limits.rowBytes = entry.value().toInt();
        } else {
            return tl::unexpected(QStringLiteral("no limit '%1' of that kind").arg(entry.key()));
        }
    }
    return limits;
}

} // namespace

ScriptResult ScriptCard::devices() const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!card)
        return noCard();
    QJsonArray devices;
    for (const VirtualCardDevice &device : card->devices())
        devices.append(description(device));
    return QJsonValue(devices);
}

ScriptResult ScriptCard::frames(int device) const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!card)
        return noCard();
    const std::optional<VirtualCardFrames> frames = card->frames(device);
    return frames ? ScriptResult(description(*frames)) : tl::unexpected(noDevice(device));
}

ScriptResult ScriptCard::save(int device, const QString &path) const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!card)
        return noCard();
    const std::optional<VirtualCardFrame> frame = card->newestFrame(device);
    if (!frame)
        return tl::unexpected(QStringLiteral("device %1 has no frame").arg(device));
    const bool isPicture = path.endsWith(QStringLiteral(".png"));
    if (!isPicture && !path.endsWith(QStringLiteral(".raw")))
        return tl::unexpected(QStringLiteral("a card's frame is saved as .png or .raw"));
    const QImage picture = isPicture ? card->newestImage(device) : QImage();
    const QByteArray bytes = isPicture
                                 ? inBackground<QByteArray>([picture] { return pngBytes(picture); })
                                 : frame->bytes;
    return writeFrame(path, bytes).map([] { return QJsonValue(); });
}

ScriptResult ScriptCard::fail(int device, const QString &call, int times) const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!card)
        return noCard();
    return done(card->fail(device, call, times),
                QStringLiteral("no call '%1' on device %2").arg(call).arg(device));
}

ScriptResult ScriptCard::limit(int device, const QJsonValue &limits) const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!card)
        return noCard();
    return limitsIn(limits).and_then([&](const VirtualCardLimits &read) {
        return done(card->limit(device, read),
                    QStringLiteral("device %1 has no such mode or format").arg(device));
    });
}

ScriptResult ScriptCard::remove(int device) const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    return card ? done(card->remove(device), noDevice(device)) : noCard();
}

ScriptResult ScriptCard::restore(int device) const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    return card ? done(card->restore(device), noDevice(device)) : noCard();
}

ScriptResult ScriptCard::setDriverVersion(quint32 version) const
{
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!card)
        return noCard();
    card->setDriverVersion(version);
    return QJsonValue();
}

} // namespace tessara
