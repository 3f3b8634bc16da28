#include "DeckLink/DeckLinkAPIDispatch.h"

#include "DeckLink/DeckLinkReference.h"
#include "DeckLink/VirtualCardFixture.h"

namespace tessara {
namespace {

const QString nowhere = QStringLiteral("/nowhere/libDeckLinkAPI.so");
const QString anotherLibrary = QStringLiteral(ANOTHER_LIBRARY_PATH);
const QString virtualCard = QStringLiteral(VIRTUAL_CARD_PATH);

class DeckLinkAPIDispatchTest : public VirtualCardFixture
{
};

TEST_F(DeckLinkAPIDispatchTest, WithoutALibraryTheDriverIsNotInstalled)
{
    const DeckLinkLibrary library({nowhere});

    EXPECT_EQ(library.state(), DeckLinkDriverState::notInstalled);
    EXPECT_EQ(library.createIterator(), nullptr);
    EXPECT_EQ(library.driverVersion(), std::nullopt);
}

TEST_F(DeckLinkAPIDispatchTest, ALibraryWithoutTheEntryPointIsTooOld)
{
    const DeckLinkLibrary library({anotherLibrary});

    EXPECT_EQ(library.state(), DeckLinkDriverState::tooOld);
    EXPECT_EQ(library.createIterator(), nullptr);
}

TEST_F(DeckLinkAPIDispatchTest, TheFirstCandidateThatOpensIsTaken)
{
    EXPECT_EQ(DeckLinkLibrary({nowhere, virtualCard, anotherLibrary}).state(),
              DeckLinkDriverState::ready);
    EXPECT_EQ(DeckLinkLibrary({anotherLibrary, virtualCard}).state(), DeckLinkDriverState::tooOld);
}

TEST_F(DeckLinkAPIDispatchTest, TheDriverTellsItsVersion)
{
    EXPECT_EQ(deckLinkDriverVersion(), 0x0E040000u);
    EXPECT_EQ(deckLinkDriverState(), DeckLinkDriverState::ready);
    EXPECT_TRUE(IsDeckLinkAPIPresent());
}

TEST_F(DeckLinkAPIDispatchTest, ADriverBefore143IsTooOldAnd143IsNot)
{
    card.setDriverVersion(0x0E020100);
    EXPECT_EQ(deckLinkDriverState(), DeckLinkDriverState::tooOld);

    card.setDriverVersion(0x0E030000);
    EXPECT_EQ(deckLinkDriverState(), DeckLinkDriverState::ready);
}

TEST_F(DeckLinkAPIDispatchTest, ADriverThatHidesItsVersionIsGivenATry)
{
    ASSERT_TRUE(card.fail(noDevice, "CreateDeckLinkAPIInformationInstance", 1));

    EXPECT_EQ(deckLinkDriverState(), DeckLinkDriverState::ready);
}

TEST_F(DeckLinkAPIDispatchTest, TheCallerOwnsTheIterator)
{
    const qint64 before = card.liveObjects();

    DeckLinkReference<decklink::IDeckLinkIterator> iterator(CreateDeckLinkIteratorInstance());
    EXPECT_EQ(card.liveObjects(), before + 1);

    iterator.reset();
    EXPECT_EQ(card.liveObjects(), before);
}

} // namespace
} // namespace tessara
