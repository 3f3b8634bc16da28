#include "Core/VirtualCardChannel.h"

#include "DeckLink/DeckLinkAPIDispatch.h"
#include "DeckLink/VirtualCard.h"

#include <QCoreApplication>
#include <QCryptographicHash>

namespace tessara {

QString virtualCardChannel(const ApplicationSupport &support)
{
    if (support.directory() == ApplicationSupport().directory())
        return {};
    const QByteArray hash =
        QCryptographicHash::hash(support.directory().toUtf8(), QCryptographicHash::Sha1);
    return QStringLiteral("tessara-") + QString::fromLatin1(hash.toHex().left(16));
}

void prepareVirtualCard(const ApplicationSupport &support, CardPace pace)
{
    const bool isLoaded = IsDeckLinkAPIPresent();
    const std::optional<VirtualCard> card = VirtualCard::find();
    if (!isLoaded || !card)
        return;
    card->setFreeRunning(pace == CardPace::freeRunning);
    const QString channel =
        pace == CardPace::freeRunning
            ? QStringLiteral("tessara-process-%1").arg(QCoreApplication::applicationPid())
            : virtualCardChannel(support);
    if (!channel.isEmpty() && !card->setChannel(channel))
        qWarning("The virtual card could not take the channel %s.", qPrintable(channel));
}

} // namespace tessara
