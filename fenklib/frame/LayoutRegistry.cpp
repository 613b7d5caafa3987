#include "fenklib/frame/LayoutRegistry.h"

namespace {

// Filled by the registrations during static initialisation, in whatever order the objects come.
std::vector<WINDOW_LAYOUTS>& Registry() {
    static std::vector<WINDOW_LAYOUTS> registry;
    return registry;
}

}  // namespace

CLayoutRegistration::CLayoutRegistration(const char* window, std::initializer_list<LAYOUT_PAIR> layouts) {
    Registry().push_back({window, layouts});
}

const std::vector<WINDOW_LAYOUTS>& RegisteredLayouts() { return Registry(); }
