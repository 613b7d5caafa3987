#include "platform/hwctl/CIioBackend.h"

#include <charconv>
#include <cstdlib>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <optional>

#include "platform/basekit/CStdException.h"
#include "platform/basekit/ustring.h"
#include "platform/hwctl/CCompassCorrectionFile.h"
#include "platform/hwctl/CV4l2Still.h"

namespace hwctl {

namespace {
constexpr const char* kDistance = "in_distance";
constexpr const char* kHeading = "in_rot_from_north_magnetic_tilt_comp";

[[noreturn]] void Fail(const std::string& text) {
    throw basekit::CStdException(basekit::ustring::FromUtf8(text), __FILE__, __LINE__);
}

// One number of a sysfs attribute, C locale; nullopt when absent or not a number.
std::optional<double> Attribute(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::string text;
    if (!std::getline(in, text)) return std::nullopt;
    while (!text.empty() && (text.back() == ' ' || text.back() == '\r')) text.pop_back();
    double value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}
}  // namespace

std::string CIioBackend::Find(const std::string& channel) const {
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(m_iio, ec))
        if (std::filesystem::exists(entry.path() / (channel + "_raw"), ec)) return entry.path().string();
    return {};
}

double CIioBackend::ReadChannel(const std::string& channel) const {
    const std::string device = Find(channel);
    if (device.empty()) Fail("no IIO device under " + m_iio + " has " + channel + "_raw");
    const auto raw = Attribute(std::filesystem::path(device) / (channel + "_raw"));
    if (!raw) Fail("the IIO device " + device + " gave no " + channel + " reading");
    const double offset = Attribute(std::filesystem::path(device) / (channel + "_offset")).value_or(0);
    const double scale = Attribute(std::filesystem::path(device) / (channel + "_scale")).value_or(1);
    return (*raw + offset) * scale;
}

std::string CIioBackend::DefaultStateRoot() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const std::string base = config && *config ? config : std::string(home ? home : ".") + "/.config";
    return base + "/fenk/hwctl";
}

bool CIioBackend::HasDevice(const std::string& device) const {
    if (device == "laser") return !Find(kDistance).empty();
    if (device == "compass") return !Find(kHeading).empty();
    if (device == "camera") return !CV4l2Still::Devices(m_dev).empty();
    return false;
}

double CIioBackend::ReadDistance() { return ReadChannel(kDistance); }

// The kernel gives the rotation from north in radians; the calibration's correction is added.
double CIioBackend::ReadHeading() {
    return CCompassCorrectionFile(m_state).Apply(ReadChannel(kHeading) * 180.0 / std::numbers::pi);
}

double CIioBackend::HeadingCorrection() const { return CCompassCorrectionFile(m_state).Load(); }

void CIioBackend::StoreHeadingCorrection(double degrees) {
    if (!HasDevice("compass")) Fail("no IIO device under " + m_iio + " is a compass");
    CCompassCorrectionFile(m_state).Store(degrees);
}

// Video nodes also include metadata and output devices: the first that gives a still is the camera.
std::string CIioBackend::CaptureStill(const std::string& path) {
    const std::vector<std::string> devices = CV4l2Still::Devices(m_dev);
    if (devices.empty()) Fail("this controller has no camera (no video device under " + m_dev + ")");
    std::optional<basekit::CStdException> first;
    for (const std::string& device : devices) {
        try {
            return CV4l2Still::Write(CV4l2Still::Grab(device), path);
        } catch (const basekit::CStdException& e) {
            if (!first) first = e;
        }
    }
    throw *first;
}

}  // namespace hwctl
