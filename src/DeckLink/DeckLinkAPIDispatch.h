// Finds the driver's library, once in the life of the process, and the entry points in it.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

#include "DeckLink/DeckLinkAPI.h"

namespace tessara {

enum class DeckLinkDriverState { notInstalled, tooOld, ready };

/// The first driver whose frames we can feed, as the driver reports it: 14.3.
inline constexpr quint32 oldestDeckLinkDriver = 0x0E030000;

/// One loaded library. It is never closed: the driver's threads may outlive every object of it.
class DeckLinkLibrary
{
public:
    /// Opens the first of these that can be opened, a bare name by the loader's own search.
    explicit DeckLinkLibrary(const QStringList &candidates);

    DeckLinkDriverState state() const;
    /// Null without a driver, or when it could not create one. One reference is the caller's.
    decklink::IDeckLinkIterator *createIterator() const;
    /// Major, minor, sub and extra, one byte each from the top.
    std::optional<quint32> driverVersion() const;
    void *symbol(const char *name) const;

private:
    void *m_library = nullptr;
};

/// Replaces the search for the driver; to be called before anything else here.
void useDeckLinkLibrary(const QString &path);
/// The library of this process, found at the first call.
const DeckLinkLibrary &deckLinkLibrary();

bool IsDeckLinkAPIPresent();
decklink::IDeckLinkIterator *CreateDeckLinkIteratorInstance();
std::optional<quint32> deckLinkDriverVersion();
DeckLinkDriverState deckLinkDriverState();

/// What an operator reads when the driver is older than `oldestDeckLinkDriver`.
QString deckLinkDriverTooOldText();

} // namespace tessara
