// The host's Help menu and About, on the built library, and the tour of chosen windows only,
// run as the user runs it.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>

#include "tools/lyn-utility/CAboutDlg.h"
#include "tools/lyn-utility/CFenkBinding.h"
#include "tools/lyn-utility/CHelpMenu.h"

namespace {

QString Canonical(const QString& path) { return QFileInfo(path).canonicalFilePath(); }

QString ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// About says what the loaded library says of itself, and which file that library is.
TEST(Help, AboutTextsComeFromTheLoadedLibrary) {
    CFenkBinding binding;
    ASSERT_TRUE(binding.Load(QStringLiteral(FENK_LIBRARY_PATH))) << binding.ErrorText().toStdString();
    const ABOUT_TEXTS texts = AboutTexts(binding);
    struct ROW {
        const char* legend;
        QString shown, expected;
    };
    const ROW rows[] = {
        {"the name from the library's text provider", texts.name.ToQString(), QStringLiteral("Lyn Utility")},
        {"the version from the library's text provider", texts.version.ToQString(), QStringLiteral("Version 2.3 [September 9, 2011]")},
        {"the file the system loaded", Canonical(texts.libraryPath), Canonical(QStringLiteral(FENK_LIBRARY_PATH))},
        {"the library's version from its real file", texts.libraryVersion, QStringLiteral(FENK_PROJECT_VERSION)},
        {"the Qt the program runs on", texts.qtVersion, QString::fromLatin1(qVersion())},
        {"the licence, whole", texts.licence, ReadFile(QStringLiteral(FENK_SOURCE_DIR "/LICENSE"))},
    };
    for (const ROW& row : rows) {
        EXPECT_FALSE(row.expected.isEmpty()) << row.legend;
        EXPECT_EQ(row.shown.toStdString(), row.expected.toStdString()) << row.legend;
    }
    EXPECT_TRUE(texts.licence.startsWith(QLatin1String("MIT License")));

    // The window shows them.
    const CAboutDlg about(nullptr, texts);
    QStringList labels;
    for (const QLabel* label : about.findChildren<QLabel*>()) labels << label->text();
    const QString all = labels.join(QLatin1Char('\n'));
    for (const QString& part : {texts.name.ToQString(), texts.version.ToQString(), texts.libraryPath, texts.libraryVersion, texts.qtVersion})
        EXPECT_TRUE(all.contains(part)) << part.toStdString() << " not in:\n" << all.toStdString();
}

// Command-Line Help is offered exactly when the library exports its window.
TEST(Help, CommandLineHelpIsEnabledOnlyWhenTheLibraryHasIt) {
    struct ROW {
        const char* legend;
        bool load;
    };
    const ROW rows[] = {{"the built library", true}, {"no library", false}};
    for (const ROW& row : rows) {
        CFenkBinding binding;
        if (row.load) {
            ASSERT_TRUE(binding.Load(QStringLiteral(FENK_LIBRARY_PATH))) << row.legend;
        }
        const auto& bound = binding.Bound();
        const bool exported = std::find(bound.begin(), bound.end(), "run_CLTHelpDlg") != bound.end();
        QMainWindow window;
        const QMenu* help = AddHelpMenu(window, binding);
        const auto actions = help->actions();
        ASSERT_GE(actions.size(), 3) << row.legend;
        EXPECT_TRUE(actions[0]->isEnabled()) << row.legend << ": the guide";
        EXPECT_EQ(actions[1]->isEnabled(), exported) << row.legend << ": command-line help";
        EXPECT_TRUE(actions.back()->isEnabled()) << row.legend << ": About";
    }
}

// The guide where it is installed, else the README, else nothing.
TEST(Help, UserGuideFallsBackToTheReadme) {
    const QTemporaryDir root;
    const QDir dir(root.path());
    for (const char* folder : {"both", "readme", "empty"}) dir.mkpath(QString::fromLatin1(folder));
    const auto touch = [&dir](const char* path) {
        QFile file(dir.filePath(QString::fromLatin1(path)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    };
    touch("both/user-guide.md");
    touch("both/README.md");
    touch("readme/README.md");
    const auto at = [&dir](const char* folder) { return dir.filePath(QString::fromLatin1(folder)); };
    struct ROW {
        const char* legend;
        QStringList folders;
        QString found;
    };
    const ROW rows[] = {
        {"guide and README: the guide", {at("both")}, at("both/user-guide.md")},
        {"only a README: the README", {at("readme")}, at("readme/README.md")},
        {"a later folder's guide before an earlier README", {at("readme"), at("both")}, at("both/user-guide.md")},
        {"nothing installed", {at("empty"), at("missing")}, QString()},
    };
    for (const ROW& row : rows) EXPECT_EQ(FindUserGuide(row.folders).toStdString(), row.found.toStdString()) << row.legend;
}

struct TOUR_RESULT {
    int status = -1;
    QString output;
    QStringList shots;
};

TOUR_RESULT Tour(const QString& only) {
    const QTemporaryDir folder;
    QProcess program;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    program.setProcessEnvironment(env);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(LYN_UTILITY_PATH), {QStringLiteral("--tour"), folder.path(), QStringLiteral("--library"),
                                                     QStringLiteral(FENK_LIBRARY_PATH), QStringLiteral("--only"), only});
    TOUR_RESULT result;
    if (!program.waitForFinished(240000)) {
        program.kill();
        program.waitForFinished();
        return result;
    }
    result.status = program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
    result.output = QString::fromUtf8(program.readAll());
    result.shots = QDir(folder.path()).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    return result;
}

// --only tours exactly the named windows, and refuses names the library does not have.
TEST(Help, TourOfTheNamedWindowsOnly) {
    struct ROW {
        const char* legend;
        QString only;
        bool ok;
        QStringList visited;   // the launchers whose summary line the tour prints, in order
        QString says;          // a line the output has
    };
    const ROW rows[] = {
        {"two windows, one a sheet", QStringLiteral("run_ReceiverInfoDlg,run_ReceiverStatusPS"), true,
         {QStringLiteral("run_ReceiverInfoDlg"), QStringLiteral("run_ReceiverStatusPS")}, QStringLiteral("nothing failed")},
        {"one window", QStringLiteral("run_ReceiverInfoDlg"), true, {QStringLiteral("run_ReceiverInfoDlg")}, QStringLiteral("nothing failed")},
        {"an unknown name among known ones", QStringLiteral("run_ReceiverInfoDlg,run_NoSuchDlg,run_Other"), false, {},
         QStringLiteral("The library has no window named run_NoSuchDlg, run_Other.")},
    };
    for (const ROW& row : rows) {
        const TOUR_RESULT tour = Tour(row.only);
        EXPECT_EQ(tour.status == 0, row.ok) << row.legend << ": status " << tour.status << "\n" << tour.output.toStdString();
        EXPECT_TRUE(tour.output.contains(row.says)) << row.legend << "\n" << tour.output.toStdString();
        QStringList visited;
        for (const auto& match : QRegularExpression(QStringLiteral("^ *(run_\\w+): \\d+ row\\(s\\) read"), QRegularExpression::MultilineOption)
                                     .globalMatch(tour.output))
            visited << match.captured(1);
        EXPECT_EQ(visited, row.visited) << row.legend << "\n" << tour.output.toStdString();
        // Every screenshot is of a named window, and each named window has one.
        for (const QString& shot : tour.shots)
            EXPECT_TRUE(std::any_of(row.visited.begin(), row.visited.end(), [&shot](const QString& name) {
                return shot == name + QStringLiteral(".png") || shot.startsWith(name + QLatin1Char('-'));
            })) << row.legend << ": " << shot.toStdString();
        for (const QString& name : row.visited)
            EXPECT_TRUE(std::any_of(tour.shots.begin(), tour.shots.end(), [&name](const QString& shot) { return shot.startsWith(name); }))
                << row.legend << ": no screenshot of " << name.toStdString();
        if (!row.ok) {
            EXPECT_TRUE(tour.shots.isEmpty()) << row.legend;
        }
    }
}

}  // namespace
