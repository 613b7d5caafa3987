#pragma once
#include <string>
#include <vector>

#include "fenklib/frame/DialogTemplate.h"

// The layouts of every window linked in, as each window registered them (CLayoutRegistration).
struct WINDOW_LAYOUTS {
    std::string window;
    std::vector<LAYOUT_PAIR> layouts;
};
const std::vector<WINDOW_LAYOUTS>& RegisteredLayouts();
