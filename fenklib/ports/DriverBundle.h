#pragma once
#include <QString>
#include <cstdint>
#include <vector>

#include "platform/basekit/ustring.h"

// One file of a script driver kept on the controller, and where it goes on the receiver.
struct BUNDLE_FILE {
    basekit::ustring local;
    basekit::ustring target;
    std::uint64_t size = 0;
};

// A driver folder holds the driver's "version" file and its scripts, and its profiles in a
// "profiles" folder below: scripts go to "/<port>/script/", profiles to "/<port>/profile/".
// The version file comes last, so a driver cut short never claims to be the new version.
// Empty when the folder holds no version file.
std::vector<BUNDLE_FILE> ListDriverBundle(const QString& folder, const basekit::ustring& portKeyword);
