#pragma once
#include <QDialog>
#include <QString>

#include "platform/basekit/ustring.h"

class CFenkBinding;

// What About says: the application's name and version as the library's text providers give
// them, the library actually loaded (its file and version), Qt's version and the licence.
struct ABOUT_TEXTS {
    basekit::ustring name, version;
    QString libraryPath, libraryVersion, qtVersion, licence;
};
ABOUT_TEXTS AboutTexts(const CFenkBinding& library);

class CAboutDlg : public QDialog {
public:
    CAboutDlg(QWidget* parent, const ABOUT_TEXTS& texts);
};
