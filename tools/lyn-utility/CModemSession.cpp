#include "tools/lyn-utility/CModemSession.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QLibrary>
#include <QMessageBox>
#include <QTabWidget>
#include <QTimer>

#include "platform/basekit/CStdException.h"
#include "platform/devio/CModem.h"

using basekit::ustring;

namespace {
constexpr int kPollMs = 50;
constexpr int kPageLimitMs = 60000;   // a page still busy after this counts as failed
}  // namespace

CModemSession::SheetLauncher CModemSession::Launcher() {
    // The same file the binding loaded: QLibrary shares the handle, nothing is loaded twice.
    QLibrary library(m_library.FileName());
    return reinterpret_cast<SheetLauncher>(library.resolve("run_UniversalModemPS"));
}

int CModemSession::WithModem(const ustring& url, const std::function<int(basekit::CSmartPtr<devio::IModem>)>& use) {
    basekit::CSmartPtr<devio::IPortAddr> address;
    try {
        address = devio::IPortAddr::Parse(url);
        if (!m_library.PreOpenPort(address)) return kFailed;
        int result = kFailed;
        {
            const basekit::CSmartPtr<devio::CModem> modem = devio::CModem::Open(address);
            result = use(basekit::CSmartPtr<devio::IModem>(modem.Get()));
        }
        m_library.PostClosePort(address);
        return result;
    } catch (const basekit::CStdException& e) {
        if (address) m_library.PostClosePort(address);
        Print(e.GetMessage().ToQString());
        return kFailed;
    }
}

int CModemSession::Run(const ustring& url, QWidget* parent) {
    const SheetLauncher launcher = Launcher();
    if (!launcher) return kFailed;
    return WithModem(url, [&](basekit::CSmartPtr<devio::IModem> modem) { return launcher(modem, parent); });
}

// The sheet runs modally; a timer inside its loop waits for each page's reading, prints it and
// moves on to the next page, then closes the sheet. A message box (nothing answers, a dead
// link) is printed and counted as a failure.
int CModemSession::Tour(const ustring& url, const QDir& folder) {
    const SheetLauncher launcher = Launcher();
    if (!launcher) return 1;
    int failures = 0;
    int page = -1;
    QDeadlineTimer deadline(kPageLimitMs);
    QTimer watcher;
    watcher.setInterval(kPollMs);
    QObject::connect(&watcher, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            Print(box->text());
            ++failures;
            box->reject();
            return;
        }
        auto* sheet = qobject_cast<QDialog*>(modal);
        QTabWidget* tabs = sheet ? sheet->findChild<QTabWidget*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
        if (!tabs) return;
        const bool idle = sheet->property("fenkIdle").toBool();
        const bool read = tabs->count() > 1 || page >= 0;
        if (deadline.hasExpired()) {
            ++failures;
            sheet->reject();
            return;
        }
        if (!idle || !read) return;
        if (page >= 0) {
            QWidget* shown = tabs->widget(page);
            Print(QStringLiteral("[%1]").arg(tabs->tabText(page)));
            for (const QString& line : shown->property("fenkReadings").toStringList()) Print(line);
            sheet->grab().save(folder.filePath(QStringLiteral("modem-%1.png").arg(page + 1)));
        }
        if (++page >= tabs->count()) {
            sheet->reject();
            return;
        }
        deadline = QDeadlineTimer(kPageLimitMs);
        tabs->setCurrentIndex(page);
    });
    watcher.start();
    const int result = WithModem(url, [&](basekit::CSmartPtr<devio::IModem> modem) { return launcher(modem, nullptr); });
    watcher.stop();
    if (result != 2 || page < 0) ++failures;
    return failures;
}
