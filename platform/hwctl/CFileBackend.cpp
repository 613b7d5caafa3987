#include "platform/hwctl/CFileBackend.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "platform/basekit/CStdException.h"
#include "platform/basekit/ustring.h"
#include "platform/hwctl/CCompassCorrectionFile.h"
#include "platform/hwctl/CIioBackend.h"

namespace hwctl {

namespace {
std::mutex& RootMutex() { static std::mutex m; return m; }
std::string& RootSlot() { static std::string root; return root; }

[[noreturn]] void Fail(const std::string& text) {
    throw basekit::CStdException(basekit::ustring::FromUtf8(text), __FILE__, __LINE__);
}

}  // namespace

std::string CFileBackend::Read(const std::string& name) const {
    std::ifstream in(m_root + "/" + name);
    std::string value;
    std::getline(in, value);
    while (!value.empty() && (value.back() == ' ' || value.back() == '\r')) value.pop_back();
    return value;
}

double CFileBackend::ReadNumber(const std::string& device, const std::string& name) const {
    if (!HasDevice(device)) Fail("no " + device + " under " + m_root);
    const std::string text = Read(device + "/" + name);
    double value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        Fail("the " + device + " gave no reading (" + device + "/" + name + ": \"" + text + "\")");
    return value;
}

void CFileBackend::Log(const std::string& action) const {
    std::ofstream log(m_root + "/actions.log", std::ios::app);
    log << action << "\n";
}

void CFileBackend::SetPower(const std::string& device, bool on) {
    std::ofstream state(m_root + "/" + device + "/power", std::ios::trunc);
    state << (on ? "1\n" : "0\n");
    if (!state) Fail("cannot switch " + device + " power under " + m_root);
    Log(device + (on ? " on" : " off"));
}

bool CFileBackend::HasDevice(const std::string& device) const {
    std::error_code ec;
    return std::filesystem::is_directory(m_root + "/" + device, ec);
}

std::string CFileBackend::CaptureStill(const std::string& path) {
    if (!HasDevice("camera")) Fail("no camera under " + m_root);
    std::error_code ec;
    std::filesystem::copy_file(m_root + "/camera/still", path, std::filesystem::copy_options::overwrite_existing, ec);
    if (ec) Fail("the camera could not deliver an image to " + path + ": " + ec.message());
    Log("camera still");
    return path;
}

double CFileBackend::ReadHeading() {
    const double raw = ReadNumber("compass", "heading");
    return CCompassCorrectionFile(m_root).Apply(raw);
}

double CFileBackend::HeadingCorrection() const { return CCompassCorrectionFile(m_root).Load(); }

void CFileBackend::StoreHeadingCorrection(double degrees) {
    if (!HasDevice("compass")) Fail("no compass under " + m_root);
    CCompassCorrectionFile(m_root).Store(degrees);
}

void CNullBackend::Absent(const char* device) {
    Fail(std::string("this controller has no ") + device);
}

void SetBackendRoot(const std::string& root) {
    const std::lock_guard lock(RootMutex());
    RootSlot() = root;
}

std::unique_ptr<IControllerBackend> CreateBackend() {
    std::string root;
    {
        const std::lock_guard lock(RootMutex());
        root = RootSlot();
    }
    if (root.empty()) {
        const char* env = std::getenv("FENK_HWCTL_ROOT");
        root = env ? env : "";
    }
    if (root.empty()) return std::make_unique<CIioBackend>();
    return std::make_unique<CFileBackend>(root);
}

}  // namespace hwctl
