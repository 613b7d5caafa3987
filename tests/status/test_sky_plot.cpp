// The sky plot read back from its rendered pixels: rings by radius, the mask circle, where a
// satellite lands, which symbol it gets and the colour of its number.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cmath>

#include "fenklib/status/CSkyPlot.h"
#include "fenklib/status/SatelliteLook.h"

namespace {

using Sat = devio::SATELLITE_RECORD;

Sat MakeSat(std::int32_t system, std::int32_t number, std::int8_t elevation, std::uint16_t azimuth, std::uint8_t status = 0) {
    Sat s;
    s.system = system, s.number = number, s.elevation = elevation, s.azimuth = azimuth, s.navStatus = status;
    return s;
}

// A plot whose chart radius is R: the client is shrunk by 3 pixels on each side.
struct Plot {
    explicit Plot(int radius) : widget(nullptr) { widget.resize(2 * radius + 6, 2 * radius + 6); }
    QImage Render(const devio::SATLIST_RECORD& list, double mask) {
        widget.SetSatellites(list, mask);
        return widget.RenderFrame();
    }
    CSkyPlot widget;
};

bool IsWhite(QRgb p) { return (p & 0xFFFFFFu) == 0xFFFFFFu; }
bool IsRed(QRgb p) { return qRed(p) - qGreen(p) > 80 && qGreen(p) == qBlue(p); }

// Runs of non-white pixels met going out from the centre at 30 degrees above the horizontal.
int CrossingsOnRay(const QImage& image, QPoint centre, int radius) {
    int runs = 0;
    bool inRun = false;
    for (int d = 3; d <= radius + 2; ++d) {
        const double a = 30 * M_PI / 180;
        const QRgb p = image.pixel(centre.x() + int(std::lround(d * std::cos(a))), centre.y() - int(std::lround(d * std::sin(a))));
        const bool ink = !IsWhite(p) && qRed(p) < 235;
        if (ink && !inRun) ++runs;
        inRun = ink;
    }
    return runs;
}

TEST(SkyPlot, RingsAndLabelsFollowTheRadius) {
    struct Row {
        const char* legend;
        int radius;
        int rings;   // elevation rings inside the horizon
    };
    const Row rows[] = {{"R 188: R/9 = 20, three parts", 188, 2}, {"R 189: R/9 = 21, nine parts", 189, 8}};
    for (const auto& row : rows) {
        Plot plot(row.radius);
        const QImage image = plot.Render({}, -1);
        ASSERT_EQ(plot.widget.Radius(), row.radius) << row.legend;
        EXPECT_EQ(CrossingsOnRay(image, plot.widget.Centre(), row.radius), row.rings + 1) << row.legend << " (and the horizon)";
        image.save(QCoreApplication::applicationDirPath() + QStringLiteral("/tour-skyplot-R%1.png").arg(row.radius));
    }
}

TEST(SkyPlot, MaskCircleAtItsElevation) {
    struct Row {
        const char* legend;
        double mask;
        int expectedRadius;   // -1: no red circle
    };
    const Row rows[] = {{"mask 10 at 80/90 of R", 10, 188 * 80 / 90}, {"mask 0 on the horizon", 0, 188},
                        {"mask 45 half way", 45, 94}, {"no mask", -1, -1}};
    for (const auto& row : rows) {
        Plot plot(188);
        const QImage image = plot.Render({}, row.mask);
        const QPoint c = plot.widget.Centre();
        int redAt = -1;
        for (int d = 3; d <= 190; ++d)   // straight down the lower vertical axis... beside it, off the axis line
            if (IsRed(image.pixel(c.x() + 1, c.y() + d)) || IsRed(image.pixel(c.x() - 1, c.y() + d))) {
                redAt = d;
                break;
            }
        if (row.expectedRadius < 0) {
            EXPECT_EQ(redAt, -1) << row.legend;
        }
        else EXPECT_NEAR(redAt, row.expectedRadius, 1) << row.legend;
    }
}

// The bounding box of what a list adds to the empty chart.
QRect Added(const QImage& with, const QImage& without) {
    QRect box;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x)
            if (with.pixel(x, y) != without.pixel(x, y)) box |= QRect(x, y, 1, 1);
    return box;
}

TEST(SkyPlot, SatellitesLandAtTheirPolarPositionOrNowhere) {
    Plot plot(188);
    const QImage empty = plot.Render({}, -1);
    const QPoint c = plot.widget.Centre();
    const QSize s = satlook::CSatelliteSymbols::Instance().SymbolSize();
    struct Row {
        const char* legend;
        Sat sat;
        bool drawn;
        QPoint symbolCentre;
    };
    const Row rows[] = {
        {"zenith: the centre", MakeSat(1, 5, 90, 0), true, c},
        {"east at 0 degrees elevation: not drawn", MakeSat(1, 6, 0, 90), false, {}},
        {"below the horizon: not drawn", MakeSat(1, 7, -5, 90), false, {}},
        {"unknown elevation: not drawn", MakeSat(1, 8, 127, 90), false, {}},
        {"unknown azimuth: not drawn", MakeSat(1, 9, 45, 65535), false, {}},
        {"east at 45: half way right", MakeSat(2, 10, 45, 90), true, {c.x() + 94, c.y()}},
        {"south at 30: two thirds down", MakeSat(3, 11, 30, 180), true, {c.x(), c.y() + 125}},
    };
    for (const auto& row : rows) {
        const QImage image = plot.Render({row.sat}, -1);
        if (!row.drawn) {
            EXPECT_EQ(image, empty) << row.legend;
            continue;
        }
        // The symbol is the part above the number, which hangs below it.
        QRect symbol = Added(image, empty) & QRect(0, 0, image.width(), row.symbolCentre.y() + (s.height() + 1) / 2);
        EXPECT_NEAR(symbol.center().x(), row.symbolCentre.x(), 1) << row.legend;
        EXPECT_NEAR(symbol.top() + s.height() / 2, row.symbolCentre.y(), 1) << row.legend;
    }
}

TEST(SkyPlot, NumbersInTheSystemColourAtFourTenths) {
    struct Row {
        const char* legend;
        std::int32_t system;
        QRgb ink;
    };
    const Row rows[] = {{"GLO", 2, qRgb(102, 51, 51)}, {"SBAS", 3, qRgb(51, 51, 102)}, {"GPS", 1, qRgb(51, 102, 51)}};
    for (const auto& row : rows) {
        Plot plot(188);
        const Sat sat = MakeSat(row.system, 88, 60, 45);
        const QImage image = plot.Render({sat}, -1);
        const QPoint c = plot.widget.Centre();
        const QSize s = satlook::CSatelliteSymbols::Instance().SymbolSize();
        const double rho = 30.0 / 90 * 188;
        const int x = int(c.x() + std::sin(M_PI / 4) * rho + 0.5), y = int(c.y() - std::cos(M_PI / 4) * rho + 0.5);
        int inked = 0;
        for (int yy = y + s.height() / 2; yy < y + s.height() / 2 + 16; ++yy)
            for (int xx = x - 12; xx <= x + 12; ++xx) inked += image.pixel(xx, yy) == row.ink;
        EXPECT_GT(inked, 5) << row.legend << ": the number's pixels under the symbol";
    }
}

TEST(SkyPlot, UsedSymbolByNavigationStatus) {
    struct Row {
        const char* legend;
        std::uint8_t status;
        bool used;
    };
    const Row rows[] = {{"55 RTK L1 C/A & L2 P", 55, true}, {"0 L1 C/A absolute", 0, true}, {"3 iono-free", 3, true},
                        {"4 measurements unavailable", 4, false}, {"63 undefined", 63, false}, {"57 past the RTK codes", 57, false}};
    for (const auto& row : rows) {
        Plot plot(188);
        const QImage empty = plot.Render({}, -1);
        const QImage image = plot.Render({MakeSat(1, 1, 90, 0, row.status)}, -1);
        const QPoint c = plot.widget.Centre();
        // The used disc covers the centre; the ring leaves it as the empty chart had it.
        EXPECT_EQ(image.pixel(c) != empty.pixel(c), row.used) << row.legend;
        EXPECT_NE(image, empty) << row.legend << ": either symbol is drawn";
    }
}

TEST(SkyPlot, LaterSatellitesOverEarlierAndTheBackgroundIsKept) {
    Plot plot(188);
    const Sat a = MakeSat(1, 1, 90, 0), b = MakeSat(2, 2, 90, 0);
    const QImage ab = plot.Render({a, b}, -1);
    const QImage onlyB = plot.Render({b}, -1);
    const QPoint c = plot.widget.Centre();
    EXPECT_EQ(ab.pixel(c), onlyB.pixel(c)) << "the GLO symbol drawn last covers the GPS one";
    EXPECT_EQ(plot.widget.RenderFrame(), plot.widget.RenderFull()) << "the cached background draws the same chart";
}

}  // namespace
