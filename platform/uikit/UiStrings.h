#pragma once
#include <QString>

#include "platform/basekit/CResourceInstance.h"

namespace uikit {

// The window platform's own few texts (key captions and tips of the on-screen keypad).
enum UiStringId : unsigned {
    kStrKeypadTip = 1,
    kStrKeypadSign,
    kStrKeypadPoint,
    kStrKeypadBackspace,
    kStrKeypadSpace,
    kStrKeypadClose,
};

const basekit::CResourceInstance& UiStrings();

// The text of entry id of UiStrings() as a QString.
QString UiText(unsigned id);

}  // namespace uikit
