#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <set>

#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"

namespace {

bool IsKey(QRgb p) { return (p | 0xFF000000u) == 0xFFFF00FFu; }   // magenta
bool IsTemplateGreen(QRgb p) { return qRed(p) == 0 && qBlue(p) == 0 && qGreen(p) != 0; }

struct HalfCount {
    int symbol = 0;
    int other = 0;          // neither template green nor the key: breaks the recolouring
    std::set<int> greens;   // shades of the template
};

HalfCount CountHalf(const QImage& image, int x0, int width) {
    HalfCount count;
    for (int y = 0; y < image.height(); ++y)
        for (int x = x0; x < x0 + width; ++x) {
            const QRgb p = image.pixel(x, y);
            if (IsTemplateGreen(p)) ++count.symbol, count.greens.insert(qGreen(p));
            else if (!IsKey(p)) ++count.other;
        }
    return count;
}

// The used symbol is filled, the unused one hollow; the green channel carries the shading,
// so a flat template would lose it after recolouring.
TEST(SatelliteSymbols, TwoEqualHalvesOfShadedGreenTemplateOnMagenta) {
    const QImage image = FenkBitmap(IDB_SATELLITE_SYMBOLS);
    ASSERT_FALSE(image.isNull());
    ASSERT_EQ(image.width() % 2, 0) << "halves must be equal";
    const int half = image.width() / 2, cy = image.height() / 2;
    const HalfCount used = CountHalf(image, 0, half), unused = CountHalf(image, half, half);
    EXPECT_EQ(used.other + unused.other, 0);
    EXPECT_GT(unused.symbol, 0);
    EXPECT_GT(used.symbol, unused.symbol);
    EXPECT_GE(used.greens.size(), 5u);
    EXPECT_TRUE(IsTemplateGreen(image.pixel(half / 2, cy))) << "used symbol has a body";
    EXPECT_TRUE(IsKey(image.pixel(half + half / 2, cy))) << "not-used symbol shows through";
}

TEST(Bitmaps, SixteenSquareOnMagentaAndAllDifferent) {
    const struct { unsigned id; const char* legend; } bitmaps[] = {
        {IDB_PORT_SERIAL, "serial port"}, {IDB_PORT_USB, "USB port"}, {IDB_PORT_TCP, "TCP port"},
        {IDB_PORT_MVP, "MVP and COM ports"}, {IDB_MESSAGE_TREE, "message catalogue tree"},
    };
    std::set<qint64> seen;
    for (const auto& c : bitmaps) {
        const QImage image = FenkBitmap(c.id);
        ASSERT_EQ(image.size(), QSize(16, 16)) << c.legend;
        int key = 0;
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x) key += IsKey(image.pixel(x, y));
        EXPECT_GT(256 - key, 30) << c.legend << ": drawn";
        EXPECT_GT(key, 30) << c.legend << ": the image list needs a transparent background";
        EXPECT_TRUE(seen.insert(qHashBits(image.constBits(), image.sizeInBytes())).second) << c.legend;
    }
}

TEST(Icons, SixteenPixelImagesThatAreDrawnAndDistinct) {
    const struct { unsigned id; int largest; const char* legend; } icons[] = {
        {IDI_RECEIVER, 32, "receiver rows"}, {IDI_RAM, 32, "RAM row"}, {IDI_FLASH, 32, "flash rows"},
        {IDI_BATTERY, 32, "power rows"}, {IDI_CPU, 32, "CPU row"},
        {IDI_TOOLS_DIALOG, 48, "tools dialog group"}, {IDI_RECEIVER_INFO, 48, "receiver information dialog group"},
    };
    std::set<size_t> seen;
    for (const auto& c : icons) {
        const QIcon icon = FenkIcon(c.id);
        ASSERT_FALSE(icon.isNull()) << c.legend;
        EXPECT_TRUE(icon.availableSizes().contains(QSize(16, 16))) << c.legend;
        EXPECT_TRUE(icon.availableSizes().contains(QSize(c.largest, c.largest))) << c.legend;
        const QImage image = icon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32);
        int opaque = 0;
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x) opaque += qAlpha(image.pixel(x, y)) > 200;
        EXPECT_GT(opaque, 40) << c.legend;
        EXPECT_LT(opaque, 256) << c.legend << ": an icon is not a filled square";
        EXPECT_TRUE(seen.insert(qHashBits(image.constBits(), image.sizeInBytes())).second) << c.legend;
    }
}

TEST(Images, UnknownNumbersGiveNullResults) {
    // Beside unnumbered ones, a bitmap's number is no icon and an icon's number no bitmap.
    for (const unsigned id : {0u, 3001u, 3114u, 3373u, 9999u}) EXPECT_TRUE(FenkIcon(id).isNull()) << id;
    for (const unsigned id : {0u, 3001u, 3002u, 3104u, 9999u}) EXPECT_TRUE(FenkBitmap(id).isNull()) << id;
}

}  // namespace
