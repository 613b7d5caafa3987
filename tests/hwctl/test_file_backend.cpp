// The file backend's devices: readings as the folder gives them, whatever the user's locale.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <vector>

#include "platform/basekit/CStdException.h"
#include "platform/hwctl/CFileBackend.h"
#include "platform/hwctl/CIioBackend.h"

namespace {

struct Folder {
    QTemporaryDir dir;
    std::string root = dir.path().toStdString();
    void Put(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(root + "/" + name).parent_path());
        std::ofstream(root + "/" + name) << text;
    }
    std::string Get(const std::string& name) const {
        std::ifstream in(root + "/" + name);
        return {std::istreambuf_iterator<char>(in), {}};
    }
};

TEST(FileBackend, Readings) {
    struct Case {
        const char* legend;
        const char* file;
        const char* content;     // nullptr: the device's folder only
        std::function<double(hwctl::IControllerBackend&)> read;
        double value;            // NaN: the reading fails
    };
    const auto distance = [](hwctl::IControllerBackend& b) { return b.ReadDistance(); };
    const auto heading = [](hwctl::IControllerBackend& b) { return b.ReadHeading(); };
    const double fails = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {"distance with a point", "laser/distance", "12.345\n", distance, 12.345},
        {"distance with CR LF", "laser/distance", "7.5\r\n", distance, 7.5},
        {"a comma is not a decimal point", "laser/distance", "12,345\n", distance, fails},
        {"no reading file", "laser/distance", nullptr, distance, fails},
        {"words instead of a number", "laser/distance", "busy\n", distance, fails},
        {"heading as read", "compass/heading", "271.25\n", heading, 271.25},
        {"heading 360 is north", "compass/heading", "360\n", heading, 0},
    };
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");   // where available: numbers must not follow it
    for (const auto& c : cases) {
        Folder f;
        const std::string device = std::string(c.file).substr(0, std::string(c.file).find('/'));
        std::filesystem::create_directories(f.root + "/" + device);
        if (c.content) f.Put(c.file, c.content);
        hwctl::CFileBackend backend(f.root);
        if (std::isnan(c.value)) {
            EXPECT_THROW(c.read(backend), basekit::CStdException) << c.legend;
        } else {
            EXPECT_DOUBLE_EQ(c.read(backend), c.value) << c.legend;
        }
    }
    std::setlocale(LC_ALL, locale.c_str());
}

TEST(FileBackend, HeadingCorrection) {
    struct Case {
        const char* legend;
        const char* raw;
        double correction;
        double heading;
        const char* stored;
    };
    const Case cases[] = {
        {"added to the raw heading", "100", 2.5, 102.5, "2.500\n"},
        {"wraps past north", "359", 3, 2, "3.000\n"},
        {"wraps below north", "1", -3, 358, "-3.000\n"},
    };
    for (const auto& c : cases) {
        Folder f;
        f.Put("compass/heading", c.raw);
        hwctl::CFileBackend backend(f.root);
        backend.StoreHeadingCorrection(c.correction);
        EXPECT_EQ(f.Get("compass/correction"), c.stored) << c.legend;
        EXPECT_DOUBLE_EQ(backend.HeadingCorrection(), c.correction) << c.legend;
        EXPECT_NEAR(backend.ReadHeading(), c.heading, 1e-9) << c.legend;
    }
}

TEST(FileBackend, AbsentDevicesAndCapture) {
    struct Case {
        const char* legend;
        const char* folders;   // devices given
        bool laser, camera, compass;
    };
    const Case cases[] = {
        {"bare controller", "", false, false, false},
        {"laser only", "laser", true, false, false},
        {"all three", "laser camera compass", true, true, true},
    };
    for (const auto& c : cases) {
        Folder f;
        for (const char* d : {"laser", "camera", "compass"})
            if (std::string(c.folders).find(d) != std::string::npos) std::filesystem::create_directories(f.root + "/" + d);
        const hwctl::CFileBackend backend(f.root);
        EXPECT_EQ(backend.HasDevice("laser"), c.laser) << c.legend;
        EXPECT_EQ(backend.HasDevice("camera"), c.camera) << c.legend;
        EXPECT_EQ(backend.HasDevice("compass"), c.compass) << c.legend;
    }
    Folder f;
    f.Put("camera/still", "IMAGE");
    hwctl::CFileBackend backend(f.root);
    backend.CaptureStill(f.root + "/out.jpg");
    EXPECT_EQ(f.Get("out.jpg"), "IMAGE");
    EXPECT_EQ(f.Get("actions.log"), "camera still\n");
    EXPECT_THROW(backend.CaptureStill(f.root + "/no/such/folder/out.jpg"), basekit::CStdException);
    hwctl::CNullBackend none;
    EXPECT_FALSE(none.HasDevice("camera"));
    EXPECT_THROW(none.ReadHeading(), basekit::CStdException);
}

}  // namespace

namespace {

// The kernel's IIO devices as sysfs shows them, in a folder of the test's own.
TEST(IioBackend, ReadingsFromSysfsAttributes) {
    struct Case {
        const char* legend;
        std::vector<std::pair<const char*, const char*>> files;   // under iio:device0
        const char* device;
        bool present;
        double value;   // NaN: the reading fails
    };
    const double fails = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {"distance raw times scale", {{"in_distance_raw", "1234"}, {"in_distance_scale", "0.001"}}, "laser", true, 1.234},
        {"distance with offset", {{"in_distance_raw", "100"}, {"in_distance_offset", "-20"}, {"in_distance_scale", "0.01"}}, "laser", true, 0.8},
        {"no distance channel: no laser", {{"in_illuminance_raw", "5"}}, "laser", false, fails},
        {"unreadable raw value", {{"in_distance_raw", "x"}}, "laser", true, fails},
        {"heading in radians becomes degrees", {{"in_rot_from_north_magnetic_tilt_comp_raw", "1.5707963267948966"}}, "compass", true, 90},
        {"negative rotation wraps", {{"in_rot_from_north_magnetic_tilt_comp_raw", "-1"}, {"in_rot_from_north_magnetic_tilt_comp_scale", "1.5707963267948966"}}, "compass", true, 270},
        {"no camera through IIO", {{"in_distance_raw", "1"}}, "camera", false, fails},
    };
    for (const auto& c : cases) {
        Folder f;
        for (const auto& [name, text] : c.files) f.Put(std::string("iio:device0/") + name, text);
        hwctl::CIioBackend backend(f.root, f.root + "/dev", f.root + "/state");
        EXPECT_EQ(backend.HasDevice(c.device), c.present) << c.legend;
        const auto read = [&] { return std::string(c.device) == "laser" ? backend.ReadDistance() : backend.ReadHeading(); };
        if (std::string(c.device) == "camera") {
            EXPECT_THROW(backend.CaptureStill(f.root + "/x.jpg"), basekit::CStdException) << c.legend;
        } else if (std::isnan(c.value)) {
            EXPECT_THROW(read(), basekit::CStdException) << c.legend;
        } else {
            EXPECT_NEAR(read(), c.value, 1e-9) << c.legend;
        }
    }
    EXPECT_FALSE(hwctl::CIioBackend("/nonexistent/iio").HasDevice("compass"));
}

// The calibration's correction on a compass read through IIO: kept in the user's folder in the
// file backend's form and added to every heading, across backends made afresh.
TEST(IioBackend, CompassCorrectionAppliedAndKept) {
    struct Case {
        const char* legend;
        const char* radians;
        double correction;
        double heading;
        const char* stored;
    };
    const Case cases[] = {
        {"added to the raw heading", "1.5707963267948966", 2.5, 92.5, "2.500\n"},
        {"wraps past north", "6.2657320146596431", 3, 2, "3.000\n"},   // 359 degrees
        {"wraps below north", "0.017453292519943295", -3, 358, "-3.000\n"},
    };
    for (const auto& c : cases) {
        Folder f;
        f.Put("iio/iio:device0/in_rot_from_north_magnetic_tilt_comp_raw", c.radians);
        hwctl::CIioBackend(f.root + "/iio", f.root + "/dev", f.root + "/state").StoreHeadingCorrection(c.correction);
        EXPECT_EQ(f.Get("state/compass/correction"), c.stored) << c.legend;
        hwctl::CIioBackend later(f.root + "/iio", f.root + "/dev", f.root + "/state");
        EXPECT_DOUBLE_EQ(later.HeadingCorrection(), c.correction) << c.legend;
        EXPECT_NEAR(later.ReadHeading(), c.heading, 1e-9) << c.legend;
    }
    Folder none;
    EXPECT_THROW(hwctl::CIioBackend(none.root, none.root, none.root + "/state").StoreHeadingCorrection(1), basekit::CStdException)
        << "no compass, nothing to correct";
}

}  // namespace
