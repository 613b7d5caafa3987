#pragma once

namespace uikit {

// True on a wide-screen controller: the primary screen is at least 1.5 times as wide as high.
// The environment variable FENK_WIDE_SCREEN (1 or 0) or the per-user setting
// "uikit/WideScreen" forces the answer, the variable first.
bool IsWideScreen();

}  // namespace uikit
