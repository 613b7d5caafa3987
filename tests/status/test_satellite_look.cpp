// Satellite colours, navigation status texts and the symbol set the list and the plot share.
#include <gtest/gtest.h>

#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/SatelliteLook.h"

using satlook::CSatelliteSymbols;

namespace {

TEST(SatelliteLook, ColourPerSystemScaledAndClamped) {
    struct Row {
        const char* legend;
        std::int32_t system;
        double f;
        int r, g, b;
    };
    const Row rows[] = {
        {"GPS full", 1, 1.0, 128, 255, 128},         {"GLO full", 2, 1.0, 255, 128, 128},
        {"SBAS full", 3, 1.0, 128, 128, 255},        {"QZSS keeps 254", 4, 1.0, 254, 0, 254},
        {"Reserved white", 5, 1.0, 255, 255, 255},   {"Unused grey", 0, 1.0, 128, 128, 128},
        {"unknown code grey", 42, 1.0, 128, 128, 128}, {"Galileo its own", 6, 1.0, 64, 160, 255},
        {"BeiDou its own", 7, 1.0, 255, 176, 0},     {"GLO number shade", 2, 0.4, 102, 51, 51},
        {"SBAS number shade", 3, 0.4, 51, 51, 102},  {"GPS number shade", 1, 0.4, 51, 102, 51},
        {"truncated, not rounded", 1, 0.999, 127, 254, 127}, {"above 1 is 1", 2, 7.0, 255, 128, 128},
        {"below 0 is black", 1, -0.5, 0, 0, 0},
    };
    for (const auto& row : rows) {
        const QColor c = satlook::SatelliteColour(row.system, row.f);
        EXPECT_EQ(c, QColor(row.r, row.g, row.b)) << row.legend;
    }
}

TEST(SatelliteLook, NavigationStatusTextsInTheirTableOrder) {
    struct Row {
        std::uint8_t code;
        unsigned id;
    };
    // The numbers do not follow the codes: 20, 32 and 24 are the tell-tale rows.
    const Row rows[] = {{0, 3177}, {3, 3180}, {4, 3181}, {19, 3196}, {20, 3197}, {22, 3199}, {24, 3461},
                        {26, 3203}, {32, 3198}, {51, 3201}, {53, 3209}, {56, 3212}, {63, 3213},
                        {21, 0},    {25, 0},    {50, 0},    {57, 0},    {255, 0}};
    for (const auto& row : rows) EXPECT_EQ(satlook::NavStatusTextId(row.code), row.id) << int(row.code);
}

TEST(SatelliteLook, SymbolsKeyedBySystemAndUse) {
    const auto& symbols = CSatelliteSymbols::Instance();
    ASSERT_FALSE(symbols.SymbolSize().isEmpty());
    const QImage bitmap = FenkBitmap(IDB_SATELLITE_SYMBOLS);
    ASSERT_EQ(symbols.SymbolSize(), QSize(bitmap.width() / 2, bitmap.height())) << "each half of bitmap 3114 is one symbol";
    for (std::int32_t system = 0; system <= 7; ++system) {
        const int used = symbols.Index(CSatelliteSymbols::Key(system, true));
        const int notUsed = symbols.Index(CSatelliteSymbols::Key(system, false));
        ASSERT_GE(used, 0) << system;
        ASSERT_GE(notUsed, 0) << system;
        // The used symbol is a filled disc: its centre carries the system's hue.
        const QImage& disc = symbols.Image(used);
        const QColor centre = disc.pixelColor(disc.width() / 2, disc.height() / 2);
        EXPECT_EQ(centre.alpha(), 255) << system;
        const int green = qGreen(bitmap.pixel(disc.width() / 2, disc.height() / 2));
        EXPECT_EQ(centre, satlook::SatelliteColour(system, green / 255.0)) << system << ": the template's shade of the system colour";
        EXPECT_EQ(symbols.Image(notUsed).pixelColor(disc.width() / 2, disc.height() / 2).alpha(), 0)
            << system << ": the other symbol is a ring, see-through in the middle";
        EXPECT_EQ(disc.pixelColor(0, 0).alpha(), 0) << system << ": magenta is transparent";
    }
    EXPECT_EQ(symbols.Index(CSatelliteSymbols::Key(8, true)), -1) << "a system without symbols draws nothing";
    EXPECT_EQ(symbols.Index(CSatelliteSymbols::Key(-1, false)), -1);
}

}  // namespace
