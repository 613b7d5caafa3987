#include "tools/lyn-utility/CHelpMenu.h"

#include <QAction>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QUrl>
#include <algorithm>

#include "platform/uikit/CMessageBoxService.h"
#include "platform/uikit/CScreenFit.h"
#include "tools/lyn-utility/CAboutDlg.h"
#include "tools/lyn-utility/CFenkBinding.h"
#include "tools/lyn-utility/HostStrings.h"

using basekit::ustring;

namespace {

constexpr const char* kCommandLineHelp = "run_CLTHelpDlg";

QString FirstExisting(const QStringList& folders, const QString& name) {
    for (const QString& folder : folders)
        if (const QString path = QDir(folder).filePath(name); QFileInfo(path).isFile()) return path;
    return {};
}

void OpenUserGuide(QWidget* owner) {
    const QStringList folders = DocFolders();
    const QString guide = FindUserGuide(folders);
    if (guide.isEmpty()) {
        uikit::CMessageBoxService::ShowError(
            owner, ustring::Format(HostText(HS_GUIDE_MISSING).c_str(), ustring::FromQString(folders.join(QStringLiteral(", ")))), {});
        return;
    }
    // Without a desktop (the offscreen platform) nothing opens it; that is no error.
    QDesktopServices::openUrl(QUrl::fromLocalFile(guide));
}

}  // namespace

QStringList DocFolders() {
    const QDir here(QCoreApplication::applicationDirPath());
    return {QDir::cleanPath(here.filePath(QStringLiteral("../share/doc/lyn-utility"))), QStringLiteral("/usr/share/doc/lyn-utility"),
            QStringLiteral(FENK_SOURCE_DIR "/docs"), QStringLiteral(FENK_SOURCE_DIR)};
}

QString FindUserGuide(const QStringList& folders) {
    const QString guide = FirstExisting(folders, QStringLiteral("user-guide.md"));
    return guide.isEmpty() ? FirstExisting(folders, QStringLiteral("README.md")) : guide;
}

QMenu* AddHelpMenu(QMainWindow& window, const CFenkBinding& library) {
    QMenu* help = window.menuBar()->addMenu(HostText(HS_MENU_HELP).ToQString());
    help->addAction(HostText(HS_USERS_GUIDE).ToQString(), QKeySequence::HelpContents, &window, [&window] { OpenUserGuide(&window); });
    QAction* commandLine = help->addAction(HostText(HS_COMMAND_LINE_HELP).ToQString());
    const auto& launchers = library.Launchers();
    const auto found = std::find_if(launchers.begin(), launchers.end(), [](const auto& l) { return l.name == kCommandLineHelp; });
    commandLine->setEnabled(found != launchers.end());
    if (found != launchers.end())
        QObject::connect(commandLine, &QAction::triggered, &window, [&window, run = found->run] { run({}, &window); });
    help->addSeparator();
    help->addAction(HostText(HS_ABOUT).ToQString(), &window, [&window, &library] {
        CAboutDlg about(&window, AboutTexts(library));
        uikit::CScreenFit::Apply(about);
        about.exec();
    });
    return help;
}
