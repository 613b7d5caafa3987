#include "fenklib/frame/SiteEvents.h"

#include <utility>

using basekit::ustring;

ustring FormatSiteHeight(const SiteParameters& site) {
    return ustring::Format(L"%f%s", static_cast<double>(site.AntennaHeight), site.Slant ? L"s" : L"");
}

void WriteSiteEvents(devio::CVokReceiverMateCore& mate, const SiteParameters& site) {
    const std::pair<const wchar_t*, ustring> events[] = {
        {L"_SIT", site.SiteName},
        {L"_DSC", site.Description},
        {L"_ANH", FormatSiteHeight(site)},
        {L"_DYM", site.Dynamics ? L"DYNAMIC" : L"STATIC"},
        {L"_ANT", site.AntennaType},
    };
    for (const auto& [key, value] : events) mate.SendEvent(key, value);
}
