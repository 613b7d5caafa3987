#include "fenklib/ports/PortSheetCaption.h"

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"

basekit::ustring PortSheetCaption(const basekit::ustring& keyword) {
    return basekit::ustring::Format(L"%s %s", keyword, LoadResString(IDS_PROPERTIES));
}
