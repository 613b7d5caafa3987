// Lyn Utility: the host program. Loads libfenk at run time, opens the receiver through the
// library's port hooks and runs the library's windows; without a display it takes a headless
// tour of every window instead.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QSettings>
#include <QTextStream>
#include <QTimer>
#include <string>
#include <string_view>
#include <vector>
#include <cstdlib>

#include "platform/basekit/CResourceInstance.h"
#include "platform/basekit/CStdException.h"
#include "platform/basekit/StoreGuard.h"
#include "tools/lyn-utility/CConnection.h"
#include "tools/lyn-utility/CHeadlessTour.h"
#include "tools/lyn-utility/CMainWindow.h"
#include "tools/lyn-utility/CModemSession.h"
#include "tools/lyn-utility/HostStrings.h"

namespace {

bool HasDisplay() { return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY"); }

// The tour prints what the windows show; the offscreen platform's remarks are not part of that.
void QuietToolkit(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    const bool toolkit = (context.category && std::string_view(context.category).starts_with("qt.")) ||
                         message.startsWith(QLatin1String("QStandardPaths:"));
    if (type == QtDebugMsg || type == QtInfoMsg || toolkit || message.startsWith(QLatin1String("This plugin does not support")))
        return;
    QTextStream(stderr) << message << Qt::endl;
}

// Every per-user store of the process (the host's, the library's, the window placements) in
// folder, emptied first.
void SandboxSettings(const QString& folder) {
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QDir(folder).absolutePath());
}

}  // namespace

int main(int argc, char** argv) {
    const bool headless = !HasDisplay() && !std::getenv("QT_QPA_PLATFORM");
    if (headless) qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") qInstallMessageHandler(QuietToolkit);
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Fenk"));
    QCoreApplication::setApplicationName(QStringLiteral("Lyn Utility"));
    basekit::CResourceInstance::SetDefault(&HostStrings());

    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption link({QStringLiteral("l"), QStringLiteral("link")},
                                  QStringLiteral("Receiver link: sim:, serial:/dev/ttyUSB0?baud=115200, tcp://host:port"),
                                  QStringLiteral("url"), QStringLiteral("sim:"));
    const QCommandLineOption tour({QStringLiteral("t"), QStringLiteral("tour")},
                                  QStringLiteral("Take the headless tour, saving screenshots into this folder"), QStringLiteral("folder"));
    const QCommandLineOption library(QStringLiteral("library"), QStringLiteral("Path of libfenk.so"), QStringLiteral("path"));
    const QCommandLineOption wireLog(QStringLiteral("wire-log"), QStringLiteral("Record every byte of the link into this file"),
                                     QStringLiteral("file"));
    const QCommandLineOption modem(QStringLiteral("modem"), QStringLiteral("Open the modem sheet on this modem link instead"),
                                   QStringLiteral("url"));
    const QCommandLineOption only(QStringLiteral("only"), QStringLiteral("Tour just these launchers, separated by commas"),
                                  QStringLiteral("names"));
    parser.addOptions({link, tour, library, wireLog, modem, only});
    parser.process(app);
    const bool touring = headless || parser.isSet(tour);
    const QString tourFolder = parser.isSet(tour) ? parser.value(tour) : QStringLiteral("lyn-utility-tour");
    // The tour starts from the defaults every time and leaves the user's own settings (window
    // placements, the library's store) as they were: its store is a folder of its own.
    if (touring) SandboxSettings(QDir(tourFolder).filePath(QStringLiteral("settings")));
    basekit::GuardDefaultStore();   // before anything reads the store: junk is set aside, not kept

    QTextStream out(stdout);
    CFenkBinding binding;
    if (!binding.Load(parser.value(library))) {
        out << basekit::ustring::Format(HostText(HS_LIBRARY_MISSING).c_str(), basekit::ustring::FromQString(binding.FileName()),
                                        basekit::ustring::FromQString(binding.ErrorText())).ToQString() << Qt::endl;
        return 2;
    }
    std::string bound;
    for (const auto& name : binding.Bound()) bound += (bound.empty() ? "" : ", ") + name;
    out << basekit::ustring::Format(HostText(HS_NAME_BOUND).c_str(), basekit::ustring::FromUtf8(bound)).ToQString() << Qt::endl;
    const basekit::ustring url = basekit::ustring::FromQString(parser.value(link));
    std::vector<std::string> onlyNames;
    for (const QString& name : parser.value(only).split(QLatin1Char(','), Qt::SkipEmptyParts)) onlyNames.push_back(name.trimmed().toStdString());
    if (const auto unknown = CHeadlessTour::Unknown(binding, onlyNames); !unknown.empty()) {
        std::string names;
        for (const auto& name : unknown) names += (names.empty() ? "" : ", ") + name;
        out << basekit::ustring::Format(HostText(HS_TOUR_UNKNOWN).c_str(), basekit::ustring::FromUtf8(names)).ToQString() << Qt::endl;
        return 2;
    }

    if (parser.isSet(modem)) {
        CModemSession session(binding, out);
        const basekit::ustring modemUrl = basekit::ustring::FromQString(parser.value(modem));
        const int status = touring ? (QDir().mkpath(tourFolder), session.Tour(modemUrl, QDir(tourFolder)) == 0 ? 0 : 1)
                                   : (session.Run(modemUrl, nullptr) == CModemSession::kFailed ? 1 : 0);
        binding.OnExitApp();
        return status;
    }

    int status = 0;
    {
        CConnection connection(binding);
        if (parser.isSet(wireLog) && !connection.SetWireLog(parser.value(wireLog).toStdString())) {
            out << basekit::ustring::Format(HostText(HS_WIRE_LOG_FAILED).c_str(), basekit::ustring::FromQString(parser.value(wireLog))).ToQString()
                << Qt::endl;
            return 2;
        }
        if (touring) {
            qInstallMessageHandler(QuietToolkit);
            QDir().mkpath(tourFolder);
            CHeadlessTour headlessTour(binding, connection, QDir(tourFolder), out);
            headlessTour.SetOnly(onlyNames);
            status = headlessTour.Run(url) == 0 ? 0 : 1;
        } else {
            CMainWindow window(binding, connection);
            window.show();
            // A failed --link says why in a box; the window then offers Connect.
            QTimer::singleShot(0, &window, [&window, url] { window.Connect(url); });
            status = app.exec();
        }
    }
    binding.OnExitApp();
    return status;
}
