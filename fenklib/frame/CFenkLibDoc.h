#pragma once
#include "fenklib/frame/FenkExport.h"
#include "platform/basekit/ustring.h"

// The application's name and version texts. The flag picks the loading operation: true xload
// (through the translation hook), false load.
class FENK_EXPORT CFenkLibDoc {
public:
    static basekit::ustring GetApplicationVersion(bool translated);
    static basekit::ustring GetLongApplicationName(bool translated);
    static basekit::ustring GetShortApplicationName(bool translated);
};
