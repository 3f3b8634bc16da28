#include "Core/DeckLinkOutputRouting.h"

namespace tessara {

QString label(DeckLinkOutputRouting routing)
{
    switch (routing) {
    case DeckLinkOutputRouting::fillOnly:
        return QStringLiteral("DeckLink Fill");
    case DeckLinkOutputRouting::greenScreen:
        return QStringLiteral("DeckLink Green");
    case DeckLinkOutputRouting::keyAndFill:
        return QStringLiteral("DeckLink Key+Fill (Dual Device)");
    case DeckLinkOutputRouting::keyAndFillAB:
        return QStringLiteral("DeckLink Key+Fill (A+B)");
    }
    Q_UNREACHABLE();
}

} // namespace tessara
