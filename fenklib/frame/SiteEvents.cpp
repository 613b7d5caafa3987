#include "fenklib/frame/SiteEvents.h"

#include <utility>
#include <vector>

#include "fenklib/receiver/CommandText.h"

using basekit::ustring;

ustring FormatSiteHeight(const SiteParameters& site) {
    return ustring::Format(L"%f%s", static_cast<double>(site.AntennaHeight), site.Slant ? L"s" : L"");
}

namespace {

std::vector<std::pair<const wchar_t*, ustring>> SiteEvents(const SiteParameters& site) {
    return {
        {L"_SIT", site.SiteName},
        {L"_DSC", site.Description},
        {L"_ANH", FormatSiteHeight(site)},
        {L"_DYM", site.Dynamics ? L"DYNAMIC" : L"STATIC"},
        {L"_ANT", site.AntennaType},
    };
}

}  // namespace

void CheckSiteEvents(const SiteParameters& site) {
    for (const auto& [key, value] : SiteEvents(site)) devio::CheckCommandArgument(value, true);
}

// Every value is checked before the first event goes: a text the receiver cannot take must not
// leave a partial site description in the log.
void WriteSiteEvents(devio::CVokReceiverMateCore& mate, const SiteParameters& site) {
    CheckSiteEvents(site);
    for (const auto& [key, value] : SiteEvents(site)) mate.SendEvent(key, value);
}
