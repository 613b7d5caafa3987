#pragma once
#include <QString>
#include <QStringList>

class CFenkBinding;
class QMainWindow;
class QMenu;

// The Help menu: the user's guide, the library's command-line help (disabled when the library
// does not export it) and About.
QMenu* AddHelpMenu(QMainWindow& window, const CFenkBinding& library);

// Where the guide may be: the installed documentation beside the program, the system's, and
// the source tree the program was built from.
QStringList DocFolders();
// The first folder's user-guide.md, else the first README.md; empty when there is neither.
QString FindUserGuide(const QStringList& folders);
