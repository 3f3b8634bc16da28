#include "DeckLink/DeckLinkAPIDispatch.h"

#include <QFile>

#include <dlfcn.h>

#include "Base/ApplicationSupport.h"
#include "DeckLink/DeckLinkReference.h"

namespace tessara {
namespace {

const QString libraryName = QStringLiteral("libDeckLinkAPI.so");
// The suffixes pin the version of the interface.
constexpr char iteratorSymbol[] = "CreateDeckLinkIteratorInstance_0004";
constexpr char informationSymbol[] = "CreateDeckLinkAPIInformationInstance_0001";

QString &chosenLibrary()
{
    static QString path;
    return path;
}

QStringList candidates()
{
    if (!chosenLibrary().isEmpty())
        return {chosenLibrary()};
    return {
        libraryName, // by the loader's own rules, where an installed driver is found
        QStringLiteral("/usr/lib/") + libraryName,
        QStringLiteral("/usr/lib64/") + libraryName,
        QStringLiteral("/usr/local/lib/") + libraryName,
        // Last, the virtual card that ships with the application.
        ApplicationSupport::privateLibraryDirectory() + QLatin1Char('/') + libraryName,
    };
}

template <typename Function>
Function *entryPoint(const DeckLinkLibrary &library, const char *name)
{
    return reinterpret_cast<Function *>(library.symbol(name));
}

} // namespace

DeckLinkLibrary::DeckLinkLibrary(const QStringList &candidates)
{
    for (const QString &candidate : candidates) {
        m_library = dlopen(QFile::encodeName(candidate).constData(), RTLD_NOW | RTLD_GLOBAL);
        if (m_library)
            return;
    }
}

void *DeckLinkLibrary::symbol(const char *name) const
{
    return m_library ? dlsym(m_library, name) : nullptr;
}

decklink::IDeckLinkIterator *DeckLinkLibrary::createIterator() const
{
    const auto create = entryPoint<decklink::IDeckLinkIterator *()>(*this, iteratorSymbol);
    return create ? create() : nullptr;
}

std::optional<quint32> DeckLinkLibrary::driverVersion() const
{
    const auto create = entryPoint<decklink::IDeckLinkAPIInformation *()>(*this, informationSymbol);
    if (!create)
        return std::nullopt;
    const DeckLinkReference<decklink::IDeckLinkAPIInformation> information(create());
    std::int64_t version = 0;
    if (!information
        || information->GetInt(decklink::BMDDeckLinkAPIVersion, &version) != decklink::S_OK)
        return std::nullopt;
    return quint32(version);
}

DeckLinkDriverState DeckLinkLibrary::state() const
{
    if (!m_library)
        return DeckLinkDriverState::notInstalled;
    if (!symbol(iteratorSymbol))
        return DeckLinkDriverState::tooOld;
    // A driver that doesn't tell its version is asked for its interfaces all the same.
    return driverVersion().value_or(oldestDeckLinkDriver) < oldestDeckLinkDriver
               ? DeckLinkDriverState::tooOld
               : DeckLinkDriverState::ready;
}

void useDeckLinkLibrary(const QString &path)
{
    chosenLibrary() = path;
}

const DeckLinkLibrary &deckLinkLibrary()
{
    static const DeckLinkLibrary library(candidates());
    return library;
}

bool IsDeckLinkAPIPresent()
{
    return deckLinkLibrary().symbol(iteratorSymbol) != nullptr;
}

decklink::IDeckLinkIterator *CreateDeckLinkIteratorInstance()
{
    return deckLinkLibrary().createIterator();
}

std::optional<quint32> deckLinkDriverVersion()
{
    return deckLinkLibrary().driverVersion();
}

DeckLinkDriverState deckLinkDriverState()
{
    return deckLinkLibrary().state();
}

QString deckLinkDriverTooOldText()
{
    return QStringLiteral("DeckLink driver is too old: version 14.3 or later is needed");
}

} // namespace tessara
