#include "fenklib/frame/CFenkGlobalSettings.h"

#include <array>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CCLocaleScope.h"
#include "platform/basekit/CRegistryBatch.h"

using basekit::CRegistryBatch;
using basekit::HKEY_CURRENT_USER;
using basekit::ustring;

namespace {

// The ten stored values in the order they are written.
struct STORED_FIELD {
    bool site;   // under the site key, else the general key
    const wchar_t* name;
    bool text;
};
constexpr std::array<STORED_FIELD, 10> kFields{{
    {false, L"AppMode", false},
    {false, L"CoordSystem", false},
    {false, L"ModemAutodetection", false},
    {false, L"Zed_Settings", false},
    {true, L"SiteName", true},
    {true, L"Description", true},
    {true, L"AntennaType", true},
    {true, L"AntennaHeight", true},
    {true, L"Slant", false},
    {true, L"Dynamics", false},
}};
enum FieldIndex { kAppMode, kCoordSystem, kModemAutodetection, kZed, kSiteName, kDescription, kAntennaType, kAntennaHeight, kSlant, kDynamics };

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

namespace {

std::vector<std::optional<std::variant<std::uint32_t, ustring>>> ReadAll(const CRegistryBatch& store, const ustring& general,
                                                                         const ustring& site) {
    std::vector<std::optional<std::variant<std::uint32_t, ustring>>> values;
    for (const STORED_FIELD& f : kFields) {
        const ustring& key = f.site ? site : general;
        std::uint32_t number = 0;
        ustring text;
        if (f.text && store.Get(key, f.name, text)) values.emplace_back(text);
        else if (!f.text && store.Get(key, f.name, number)) values.emplace_back(number);
        else values.emplace_back();
    }
    return values;
}

}  // namespace

// Missing values take their defaults.
CFenkGlobalSettings::VALUES CFenkGlobalSettings::FromStored(const std::vector<std::optional<Stored>>& values) {
    const auto number = [&](int i, std::uint32_t fallback) {
        return values[i] ? std::get<std::uint32_t>(*values[i]) : fallback;
    };
    const auto text = [&](int i) { return values[i] ? std::get<ustring>(*values[i]) : ustring(); };
    VALUES v;
    v.appMode = static_cast<EApplicationMode>(number(kAppMode, APPMODE_DEFAULT));
    v.coordSystem = static_cast<ECoordSystem>(number(kCoordSystem, COORD_GEODETIC));
    v.modemAutodetection = number(kModemAutodetection, 1) != 0;
    v.zed.word = number(kZed, Zed_Settings().word);
    v.site.SiteName = text(kSiteName);
    v.site.Description = text(kDescription);
    v.site.AntennaType = text(kAntennaType);
    v.site.AntennaHeight = static_cast<float>(basekit::ParseReal(text(kAntennaHeight)));
    v.site.Slant = number(kSlant, 0) != 0;
    v.site.Dynamics = number(kDynamics, 0) != 0;
    return v;
}

std::vector<CFenkGlobalSettings::Stored> CFenkGlobalSettings::ToStored(const VALUES& v) {
    return {static_cast<std::uint32_t>(v.appMode),
            static_cast<std::uint32_t>(v.coordSystem),
            v.modemAutodetection ? 1u : 0u,
            v.zed.word,
            v.site.SiteName,
            v.site.Description,
            v.site.AntennaType,
            ustring::Format(L"%f", static_cast<double>(v.site.AntennaHeight)),
            v.site.Slant ? 1u : 0u,
            v.site.Dynamics ? 1u : 0u};
}

void CFenkGlobalSettings::Load() {
    const CRegistryBatch store(HKEY_CURRENT_USER, m_generalKey);
    if (!store.SetAsidePath().isEmpty())
        m_storeProblem = ustring::Format(LoadResString(IDS_SETTINGS_SET_ASIDE).c_str(), ustring::FromQString(store.SetAsidePath()));
    const VALUES v = FromStored(ReadAll(store, m_generalKey, m_siteKey));
    m_appMode = v.appMode;
    m_coordSystem = v.coordSystem;
    m_modemAutodetection = v.modemAutodetection;
    m_zed = v.zed;
    m_site = v.site;
    m_asLoaded = ToStored(v);
}

// All ten values in one atomic write. A value this process did not change is written as the
// store holds it now (read as Load() reads it), so another instance's saved change survives.
void CFenkGlobalSettings::Save() const {
    CRegistryBatch store(HKEY_CURRENT_USER, m_generalKey);
    const std::vector<Stored> theirs = ToStored(FromStored(ReadAll(store, m_generalKey, m_siteKey)));
    const std::vector<Stored> mine = ToStored(Current());
    for (size_t i = 0; i < kFields.size(); ++i) {
        const Stored& value = mine[i] != m_asLoaded[i] ? mine[i] : theirs[i];
        const ustring& key = kFields[i].site ? m_siteKey : m_generalKey;
        if (const auto* number = std::get_if<std::uint32_t>(&value)) store.Set(key, kFields[i].name, *number);
        else store.Set(key, kFields[i].name, std::get<ustring>(value));
    }
    store.Commit();
}

void CFenkGlobalSettings::SetSiteParameters(const SiteParameters& site) {
    m_site.SiteName = site.SiteName;
    m_site.Description = site.Description;
    m_site.AntennaType = site.AntennaType;
    m_site.AntennaHeight = site.AntennaHeight;
    m_site.Slant = site.Slant;
    m_site.Dynamics = site.Dynamics;
}
