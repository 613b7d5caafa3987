#include "platform/hwctl/CIioBackend.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <optional>

#include "platform/basekit/CStdException.h"
#include "platform/basekit/ustring.h"

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

bool CIioBackend::HasDevice(const std::string& device) const {
    if (device == "laser") return !Find(kDistance).empty();
    if (device == "compass") return !Find(kHeading).empty();
    return false;
}

double CIioBackend::ReadDistance() { return ReadChannel(kDistance); }

// The kernel gives the rotation from north in radians.
double CIioBackend::ReadHeading() {
    const double degrees = std::fmod(ReadChannel(kHeading) * 180.0 / std::numbers::pi, 360.0);
    return degrees < 0 ? degrees + 360.0 : degrees;
}

void CIioBackend::CaptureStill(const std::string&) { Fail("this controller's camera is not reachable"); }

void CIioBackend::StoreHeadingCorrection(double) { Fail("this controller's compass keeps no correction"); }

}  // namespace hwctl
