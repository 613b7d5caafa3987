#pragma once
#include <string_view>

#include "platform/basekit/ustring.h"

// What a script driver says about itself in its version file: "name=...;version=...;
// description=...". Entries other than "key=value" and unknown keys are ignored; keys match
// without regard to case.
struct DRIVER_VERSION {
    basekit::ustring name;
    basekit::ustring version;
    basekit::ustring description;
};

DRIVER_VERSION ParseDriverVersion(std::string_view fileBytes);
