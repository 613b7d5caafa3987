#include "fenklib/frame/CFenkGlobalSettings.h"

#include <cwchar>

#include "platform/basekit/Registry.h"

using basekit::HKEY_CURRENT_USER;
using basekit::RegGetValue;
using basekit::RegWriteValue;
using basekit::ustring;

namespace {

std::uint32_t ReadNumber(const ustring& key, const wchar_t* name, std::uint32_t fallback) {
    std::uint32_t value = fallback;
    return RegGetValue(HKEY_CURRENT_USER, key, name, value) ? value : fallback;
}

ustring ReadText(const ustring& key, const wchar_t* name) {
    ustring value;
    return RegGetValue(HKEY_CURRENT_USER, key, name, value) ? value : ustring();
}

}  // namespace

CFenkGlobalSettings& CFenkGlobalSettings::Ref() {
    // Destroyed with the library's statics, which is when the settings are written back.
    static CFenkGlobalSettings instance;
    return instance;
}

CFenkGlobalSettings::CFenkGlobalSettings()
    : m_generalKey(basekit::RegGetDefaultKeyName(L"GlobalSettings\\General")),
      m_siteKey(basekit::RegGetDefaultKeyName(L"GlobalSettings\\SiteParameters")) {
    Load();
}

CFenkGlobalSettings::~CFenkGlobalSettings() {
    try {
        Save();
    } catch (...) {
        // Write failures are ignored: the library is unloading.
    }
}

void CFenkGlobalSettings::Load() {
    m_appMode = static_cast<EApplicationMode>(ReadNumber(m_generalKey, L"AppMode", 1));
    m_coordSystem = static_cast<ECoordSystem>(ReadNumber(m_generalKey, L"CoordSystem", 0));
    // Read twice, as the settings have always been loaded; the second read decides.
    m_modemAutodetection = ReadNumber(m_generalKey, L"ModemAutodetection", 1) != 0;
    m_modemAutodetection = ReadNumber(m_generalKey, L"ModemAutodetection", 1) != 0;
    m_zed.word = ReadNumber(m_generalKey, L"Zed_Settings", m_zed.word);

    m_site.SiteName = ReadText(m_siteKey, L"SiteName");
    m_site.Description = ReadText(m_siteKey, L"Description");
    m_site.AntennaType = ReadText(m_siteKey, L"AntennaType");
    const ustring height = ReadText(m_siteKey, L"AntennaHeight");
    m_site.AntennaHeight = static_cast<float>(std::wcstod(height.c_str(), nullptr));
    m_site.Slant = ReadNumber(m_siteKey, L"Slant", 0) != 0;
    m_site.Dynamics = ReadNumber(m_siteKey, L"Dynamics", 0) != 0;
}

void CFenkGlobalSettings::Save() const {
    RegWriteValue(HKEY_CURRENT_USER, m_generalKey, L"AppMode", static_cast<std::uint32_t>(m_appMode));
    RegWriteValue(HKEY_CURRENT_USER, m_generalKey, L"CoordSystem", static_cast<std::uint32_t>(m_coordSystem));
    RegWriteValue(HKEY_CURRENT_USER, m_generalKey, L"ModemAutodetection", m_modemAutodetection ? 1u : 0u);
    RegWriteValue(HKEY_CURRENT_USER, m_generalKey, L"Zed_Settings", m_zed.word);

    RegWriteValue(HKEY_CURRENT_USER, m_siteKey, L"SiteName", m_site.SiteName);
    RegWriteValue(HKEY_CURRENT_USER, m_siteKey, L"Description", m_site.Description);
    RegWriteValue(HKEY_CURRENT_USER, m_siteKey, L"AntennaType", m_site.AntennaType);
    RegWriteValue(HKEY_CURRENT_USER, m_siteKey, L"AntennaHeight", ustring::Format(L"%f", static_cast<double>(m_site.AntennaHeight)));
    RegWriteValue(HKEY_CURRENT_USER, m_siteKey, L"Slant", m_site.Slant ? 1u : 0u);
    RegWriteValue(HKEY_CURRENT_USER, m_siteKey, L"Dynamics", m_site.Dynamics ? 1u : 0u);
}

void CFenkGlobalSettings::SetSiteParameters(const SiteParameters& site) {
    m_site.SiteName = site.SiteName;
    m_site.Description = site.Description;
    m_site.AntennaType = site.AntennaType;
    m_site.AntennaHeight = site.AntennaHeight;
    m_site.Slant = site.Slant;
    m_site.Dynamics = site.Dynamics;
}
