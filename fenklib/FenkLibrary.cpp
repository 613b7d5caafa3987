// libfenk.so: the library object exists from load to unload.
#include "fenklib/frame/CFenkLibApp.h"

namespace {
[[maybe_unused]] const CFenkLibApp& g_app = CFenkLibApp::Instance();
}  // namespace
