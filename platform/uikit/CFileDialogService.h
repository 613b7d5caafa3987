#pragma once
#include <QStringList>

#include "platform/uikit/FileDialogTypes.h"

namespace uikit {

// The library's open-file and save-file dialogs. A test installs a responder
// (CFileDialogResponder) that picks the path without any window.
class CFileDialogService {
public:
    // The chosen path, empty when the user cancelled. Saving asks before overwriting a file.
    static basekit::ustring GetSaveFileName(QWidget* owner, const basekit::ustring& defaultPath,
                                            const basekit::ustring& filter,
                                            const basekit::ustring& defaultExtension);
    static basekit::ustring GetOpenFileName(QWidget* owner, const basekit::ustring& defaultPath,
                                            const basekit::ustring& filter,
                                            const basekit::ustring& defaultExtension);

    static FileDialogResponder SetResponder(FileDialogResponder responder);

    // "Text Files (*.txt)|*.txt|All Files (*.*)|*.*||" as Qt name filters:
    // "Text Files (*.txt)", "All Files (*)". "*.*" means every file, dotted or not.
    static QStringList ConvertFilter(const basekit::ustring& classic);
    // path with defaultExtension added when its file name has no extension.
    static basekit::ustring WithDefaultExtension(const basekit::ustring& path,
                                                 const basekit::ustring& defaultExtension);
};

}  // namespace uikit
