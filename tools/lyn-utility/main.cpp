// Lyn Utility: the host program. Loads libfenk at run time, opens the receiver through the
// library's port hooks and runs the library's windows; without a display it takes a headless
// tour of every window instead.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>
#include <cstdlib>

#include "platform/basekit/CResourceInstance.h"
#include "platform/basekit/CStdException.h"
#include "tools/lyn-utility/CConnection.h"
#include "tools/lyn-utility/CHeadlessTour.h"
#include "tools/lyn-utility/CMainWindow.h"
#include "tools/lyn-utility/HostStrings.h"

namespace {

bool HasDisplay() { return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY"); }

}  // namespace

int main(int argc, char** argv) {
    const bool headless = !HasDisplay() && !std::getenv("QT_QPA_PLATFORM");
    if (headless) qputenv("QT_QPA_PLATFORM", "offscreen");
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
    parser.addOptions({link, tour, library});
    parser.process(app);

    QTextStream out(stdout);
    CFenkBinding binding;
    if (!binding.Load(parser.value(library))) {
        out << basekit::ustring::Format(HostText(HS_LIBRARY_MISSING).c_str(), basekit::ustring::FromQString(binding.FileName()),
                                        basekit::ustring::FromQString(binding.ErrorText())).ToQString() << Qt::endl;
        return 2;
    }
    for (const auto& name : binding.Bound()) out << basekit::ustring::Format(HostText(HS_NAME_BOUND).c_str(), basekit::ustring::FromUtf8(name)).ToQString() << Qt::endl;
    const basekit::ustring url = basekit::ustring::FromQString(parser.value(link));

    int status = 0;
    {
        CConnection connection(binding);
        if (headless || parser.isSet(tour)) {
            const QString folder = parser.isSet(tour) ? parser.value(tour) : QStringLiteral("lyn-utility-tour");
            QDir().mkpath(folder);
            status = CHeadlessTour(binding, connection, QDir(folder), out).Run(url) == 0 ? 0 : 1;
        } else {
            CMainWindow window(binding, connection);
            try {
                connection.Open(url);
            } catch (const basekit::CStdException&) {
                // The window offers Connect; the status bar says that nothing is open.
            }
            window.show();
            status = app.exec();
        }
    }
    binding.OnExitApp();
    return status;
}
