#include "platform/hwctl/CUniversalZed.h"

#include <algorithm>
#include <cctype>

namespace hwctl {

namespace {
std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}
}  // namespace

bool CUniversalZed::IsZed() const {
    const std::string model = Lower(m_backend->ModelName());
    return model.rfind("zed", 0) == 0 || model.rfind("zer", 0) == 0 || model.rfind("pad7", 0) == 0;
}

bool CUniversalZed::IsPad7() const { return Lower(m_backend->ModelName()).rfind("pad7", 0) == 0; }

bool CUniversalZed::SamePort(const std::string& configured, const std::string& portName) {
    return !configured.empty() && configured == portName;
}

bool CUniversalZed::IsInternalReceiverPort(const std::string& portName) const {
    return IsZed() && SamePort(m_backend->ReceiverPort(), portName);
}

bool CUniversalZed::IsInternalModemPort(const std::string& portName) const {
    return IsZed() && SamePort(m_backend->ModemPort(), portName);
}

}  // namespace hwctl
