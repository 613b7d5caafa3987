#include "platform/hwctl/CFileBackend.h"

#include <cstdlib>
#include <fstream>
#include <mutex>
#include <stdexcept>

namespace hwctl {

namespace {
std::mutex& RootMutex() { static std::mutex m; return m; }
std::string& RootSlot() { static std::string root; return root; }
}  // namespace

std::string CFileBackend::Read(const std::string& name) const {
    std::ifstream in(m_root + "/" + name);
    std::string value;
    std::getline(in, value);
    while (!value.empty() && (value.back() == ' ' || value.back() == '\r')) value.pop_back();
    return value;
}

void CFileBackend::SetPower(const std::string& device, bool on) {
    std::ofstream state(m_root + "/" + device + "/power", std::ios::trunc);
    state << (on ? "1\n" : "0\n");
    if (!state) throw std::runtime_error("cannot switch " + device + " power under " + m_root);
    std::ofstream log(m_root + "/actions.log", std::ios::app);
    log << device << (on ? " on\n" : " off\n");
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
    if (root.empty()) return std::make_unique<CNullBackend>();
    return std::make_unique<CFileBackend>(root);
}

}  // namespace hwctl
