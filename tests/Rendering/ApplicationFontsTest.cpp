#include "Rendering/ApplicationFonts.h"

#include "Models/FontResolution.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

namespace tessara {
namespace {

TEST(ApplicationFontsTest, AFamilyIsFoundFromWhenItIsLoadedUntilItGoes)
{
    const auto isFound = [] {
        return familyFont(QStringLiteral("Inter Tabular"), 40, QFont::Normal).has_value();
    };
    loadApplicationFonts();
    EXPECT_TRUE(isFound());

    QFontDatabase::removeAllApplicationFonts();
    EXPECT_FALSE(isFound());

    loadApplicationFonts();
    EXPECT_TRUE(isFound());
}

} // namespace
} // namespace tessara
