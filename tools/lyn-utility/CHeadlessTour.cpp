#include "tools/lyn-utility/CHeadlessTour.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <QTreeWidget>

#include "platform/basekit/CStdException.h"
#include "tools/lyn-utility/HostStrings.h"

namespace {
constexpr int kPollMs = 50;
constexpr int kWorkLimitMs = 60000;   // a window still busy after this counts as failed
}  // namespace

void CHeadlessTour::Print(const basekit::ustring& line) { m_out << line.ToQString() << Qt::endl; }

int CHeadlessTour::Run(const basekit::ustring& url) {
    Print(basekit::ustring::Format(HostText(HS_TOUR_START).c_str(), url, basekit::ustring::FromQString(m_folder.absolutePath())));
    if (!m_library.Missing().empty()) {
        std::string names;
        for (const auto& name : m_library.Missing()) names += (names.empty() ? "" : ", ") + name;
        Print(basekit::ustring::Format(HostText(HS_NAMES_MISSING).c_str(), basekit::ustring::FromUtf8(names)));
    }
    try {
        m_connection.Open(url);
    } catch (const basekit::CStdException& e) {
        const basekit::ustring plain = e.GetPlainMessage();
        Print(plain.empty() ? e.GetMessage() : plain);
        if (!plain.empty()) Print(e.GetMessage());
        return 1;
    }
    for (const auto& launcher : m_library.ReceiverLaunchers()) Visit(launcher);
    if (m_shown == 0) ++m_failures;
    Print(m_failures == 0 ? basekit::ustring::Format(HostText(HS_TOUR_DONE).c_str(), m_shown)
                          : basekit::ustring::Format(HostText(HS_TOUR_FAILED).c_str(), m_failures));
    return m_failures;
}

void CHeadlessTour::Visit(const CFenkBinding::Launcher& launcher) {
    Print(basekit::ustring::Format(HostText(HS_TOUR_DIALOG).c_str(), basekit::ustring::FromUtf8(launcher.name)));
    // The launcher runs its window modally; a timer looks at it from inside that loop.
    const QDeadlineTimer deadline(kWorkLimitMs);
    bool captured = false;
    QTimer watcher;
    watcher.setInterval(kPollMs);
    QObject::connect(&watcher, &QTimer::timeout, [&] {
        QWidget* window = QApplication::activeModalWidget();
        if (!window) return;
        // Windows that read the receiver in the background say when they are done.
        const QVariant idle = window->property("fenkIdle");
        if (idle.isValid() && !idle.toBool() && !deadline.hasExpired()) return;
        if (idle.isValid() && !idle.toBool()) {
            Print(basekit::ustring::Format(HostText(HS_TOUR_TIMEOUT).c_str(), basekit::ustring::FromUtf8(launcher.name)));
            ++m_failures;
        }
        watcher.stop();
        Capture(window, launcher.name);
        captured = true;
        window->close();
    });
    watcher.start();
    const int result = launcher.run(m_connection.Receiver(), nullptr);
    watcher.stop();
    Print(basekit::ustring::Format(HostText(HS_TOUR_RESULT).c_str(), basekit::ustring::FromUtf8(launcher.name), result));
    if (!captured || (result != 1 && result != 2)) ++m_failures;
    else ++m_shown;
}

void CHeadlessTour::Capture(QWidget* window, const std::string& name) {
    // Windows that read the receiver say how many of their readings failed.
    const int failed = window->property("fenkFailed").toInt();
    if (failed > 0) {
        Print(basekit::ustring::Format(HostText(HS_TOUR_READINGS_FAILED).c_str(), basekit::ustring::FromUtf8(name), failed));
        ++m_failures;
    }
    for (const QTreeWidget* tree : window->findChildren<QTreeWidget*>()) {
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* item = tree->topLevelItem(i);
            if (item->text(0).isEmpty() && item->text(1).isEmpty()) continue;
            Print(basekit::ustring::Format(HostText(HS_TOUR_ROW).c_str(), basekit::ustring::FromQString(item->text(0)),
                                           basekit::ustring::FromQString(item->text(1))));
        }
    }
    const QString file = m_folder.filePath(QString::fromStdString(name) + QStringLiteral(".png"));
    if (!window->grab().save(file)) {
        ++m_failures;
        return;
    }
    Print(basekit::ustring::Format(HostText(HS_TOUR_SHOT).c_str(), basekit::ustring::FromQString(file)));
}
