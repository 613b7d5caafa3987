#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "fenklib/frame/FenkExport.h"
#include "platform/basekit/ustring.h"

enum EApplicationMode : std::int32_t { APPMODE_DEFAULT = 1 };

enum ECoordSystem : std::int32_t { COORD_GEODETIC = 0, COORD_CARTESIAN = 1 };

// Power rules for the controller's internal receiver and modem, one bit each.
struct FENK_EXPORT Zed_Settings {
    enum Bit : std::uint32_t {
        ReceiverOnConnect = 1, ReceiverOffDisconnect = 2, ReceiverOffExit = 4,
        ModemOnConnect = 8, ModemOffDisconnect = 16, ModemOffExit = 32,
    };
    Zed_Settings() : word(0) { word |= ReceiverOnConnect; word |= ModemOnConnect; }
    explicit Zed_Settings(std::uint32_t w) : word(w) {}
    bool Has(Bit bit) const { return (word & bit) != 0; }
    std::uint32_t word;
};

struct FENK_EXPORT SiteParameters {
    basekit::ustring SiteName;
    basekit::ustring Description;
    basekit::ustring AntennaType;
    float AntennaHeight = 0;   // metres
    bool Slant = false;        // the height is a slant measurement
    bool Dynamics = false;
};

// The settings shared by the library and its host. Loaded from the per-user store on the first
// Ref(); written back only when the library unloads. Used on the user-interface thread only.
class FENK_EXPORT CFenkGlobalSettings {
public:
    static CFenkGlobalSettings& Ref();

    CFenkGlobalSettings(const CFenkGlobalSettings&) = default;
    CFenkGlobalSettings& operator=(const CFenkGlobalSettings&) = default;

    Zed_Settings GetZedSettings() const { return m_zed; }
    void SetZedSettings(const Zed_Settings& s) { m_zed = s; }
    bool GetModemAutodetection() const { return m_modemAutodetection; }
    void SetModemAutodetection(bool on) { m_modemAutodetection = on; }
    ECoordSystem GetCoordSystem() const { return m_coordSystem; }
    void SetCoordSystem(ECoordSystem system) { m_coordSystem = system; }
    EApplicationMode GetApplicationMode() const { return m_appMode; }
    void SetApplicationMode(EApplicationMode mode) { m_appMode = mode; }
    SiteParameters GetSiteParameters() const { return m_site; }
    void SetSiteParameters(const SiteParameters& site);

    // Said once: the store could not be parsed and was kept aside; empty otherwise.
    basekit::ustring TakeStoreProblem() { return std::exchange(m_storeProblem, basekit::ustring()); }

private:
    // One stored value as the store holds it: a 32-bit number or a text.
    using Stored = std::variant<std::uint32_t, basekit::ustring>;

    CFenkGlobalSettings();
    ~CFenkGlobalSettings();
    void Load();
    void Save() const;
    struct VALUES {
        EApplicationMode appMode = APPMODE_DEFAULT;
        ECoordSystem coordSystem = COORD_GEODETIC;
        bool modemAutodetection = true;
        Zed_Settings zed;
        SiteParameters site;
    };
    static VALUES FromStored(const std::vector<std::optional<Stored>>& values);
    static std::vector<Stored> ToStored(const VALUES& v);
    VALUES Current() const { return {m_appMode, m_coordSystem, m_modemAutodetection, m_zed, m_site}; }

    basekit::ustring m_generalKey;
    basekit::ustring m_siteKey;
    EApplicationMode m_appMode = APPMODE_DEFAULT;
    ECoordSystem m_coordSystem = COORD_GEODETIC;
    bool m_modemAutodetection = true;
    Zed_Settings m_zed;
    SiteParameters m_site;
    // The values as loaded, so that Save() writes back what another process saved meanwhile
    // for every value this one did not change.
    std::vector<Stored> m_asLoaded;
    basekit::ustring m_storeProblem;
};
