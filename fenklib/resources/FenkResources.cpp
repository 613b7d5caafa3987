#include "fenklib/resources/FenkResources.h"

#include "fenklib/resources/StringTable.h"

const basekit::CResourceInstance& FenkResources() {
    static const basekit::CResourceInstance instance("fenklib", &FindFenkString);
    return instance;
}
