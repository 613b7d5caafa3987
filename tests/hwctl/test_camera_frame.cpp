// A camera's still as a file: YUYV frames become RGB as BT.601 defines, written as PPM; JPEG
// frames are written as they came. No camera is needed.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "platform/hwctl/CV4l2Still.h"
#include "platform/hwctl/YuyvToRgb.h"

namespace {

TEST(CameraFrame, YuyvPixelsBecomeRgb) {
    // One pixel pair per row (the pair shares U and V); rows are padded to 8 bytes as drivers do.
    struct Row {
        const char* legend;
        std::uint8_t y0, u, y1, v;
        std::uint8_t rgb0[3], rgb1[3];
    };
    const Row rows[] = {
        {"black and white", 16, 128, 235, 128, {0, 0, 0}, {255, 255, 255}},
        {"mid grey", 126, 128, 126, 128, {128, 128, 128}, {128, 128, 128}},
        {"red", 81, 90, 81, 240, {255, 0, 0}, {255, 0, 0}},
        {"green", 145, 54, 145, 34, {0, 255, 0}, {0, 255, 0}},
        {"blue", 41, 240, 41, 110, {0, 0, 255}, {0, 0, 255}},
        {"out of range clamps", 255, 255, 0, 255, {255, 125, 255}, {184, 0, 237}},
    };
    constexpr int kStride = 8;
    std::vector<std::uint8_t> frame;
    for (const Row& r : rows) frame.insert(frame.end(), {r.y0, r.u, r.y1, r.v, 0xEE, 0xEE, 0xEE, 0xEE});
    const auto rgb = hwctl::YuyvToRgb(frame, 2, static_cast<int>(std::size(rows)), kStride);
    ASSERT_EQ(rgb.size(), std::size(rows) * 6);
    for (std::size_t i = 0; i < std::size(rows); ++i)
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(rgb[i * 6 + k], rows[i].rgb0[k], 2) << rows[i].legend << " first pixel, channel " << k;
            EXPECT_NEAR(rgb[i * 6 + 3 + k], rows[i].rgb1[k], 2) << rows[i].legend << " second pixel, channel " << k;
        }

    struct Bad {
        const char* legend;
        int width, height, stride;
    };
    const Bad bad[] = {
        {"odd width", 3, 1, 8},
        {"stride shorter than a row", 4, 1, 6},
        {"frame shorter than its rows", 2, 7, 8},
    };
    for (const Bad& b : bad) EXPECT_TRUE(hwctl::YuyvToRgb(frame, b.width, b.height, b.stride).empty()) << b.legend;
}

TEST(CameraFrame, WrittenUnderTheExtensionOfItsForm) {
    QTemporaryDir dir;
    const std::string chosen = dir.path().toStdString() + "/shot.png";
    struct Case {
        const char* legend;
        hwctl::CV4l2Still::FRAME frame;
        const char* file;
        std::string content;
    };
    const Case cases[] = {
        {"JPEG as it came", {hwctl::CV4l2Still::Format::Jpeg, 2, 1, 4, {0xFF, 0xD8, 0xFF, 0xD9}}, "/shot.jpg", "\xFF\xD8\xFF\xD9"},
        {"YUYV as PPM", {hwctl::CV4l2Still::Format::Yuyv, 2, 1, 4, {16, 128, 235, 128}}, "/shot.ppm",
         std::string("P6\n2 1\n255\n\x00\x00\x00\xFF\xFF\xFF", 17)},
    };
    for (const Case& c : cases) {
        const std::string written = hwctl::CV4l2Still::Write(c.frame, chosen);
        EXPECT_EQ(written, dir.path().toStdString() + c.file) << c.legend;
        std::ifstream in(written, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), c.content) << c.legend;
    }
}

}  // namespace
