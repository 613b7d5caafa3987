// Links libfenk and calls what it exports: the name text, the settings, the launcher's address.
#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/CFenkLibDoc.h"
#include "fenklib/frame/PortHooks.h"

int main() {
    if (CFenkLibDoc::GetLongApplicationName(false) != L"Lyn Utility") return 1;
    if (CFenkGlobalSettings::Ref().GetZedSettings().word != 9) return 2;
    if (!PreOpenPort(nullptr)) return 3;
    return &run_ReceiverInfoDlg != nullptr ? 0 : 4;
}
