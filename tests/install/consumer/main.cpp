// Links libfenk and calls what it exports: the name text, the settings, the launcher's address,
// and the data files where the library looks for them.
#include <QCoreApplication>
#include <filesystem>

#include "fenklib/FenkLaunchers.h"
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/CFenkLibDoc.h"
#include "fenklib/frame/PortHooks.h"

// Exported by the library (its header is not installed).
basekit::ustring GetDataFilePath(const basekit::ustring& name, const basekit::ustring& extension);

int main(int argc, char** argv) {
    const QCoreApplication app(argc, argv);   // the data folder beside the program is asked of it
    for (const wchar_t* name : {L"PredefinedMessageSets", L"ReceiverMessageRegistry"})
        if (!std::filesystem::exists(std::filesystem::path(GetDataFilePath(name, L".xml").c_str()))) return 5;
    if (CFenkLibDoc::GetLongApplicationName(false) != L"Lyn Utility") return 1;
    if (CFenkGlobalSettings::Ref().GetZedSettings().word != 9) return 2;
    if (!PreOpenPort(nullptr)) return 3;
    return &run_ReceiverInfoDlg != nullptr ? 0 : 4;
}
