#include "tools/lyn-utility/CHeadlessTour.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QListWidget>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>

#include "platform/basekit/CStdException.h"
#include "tools/lyn-utility/HostStrings.h"

using basekit::ustring;

namespace {
constexpr int kPollMs = 50;
constexpr int kWorkLimitMs = 60000;   // a window still busy after this counts as failed

// Hands every hide of a modal dialog to the tour, for the windows that end by themselves.
class CHideWatch : public QObject {
public:
    explicit CHideWatch(std::function<void(QWidget*)> onHide) : m_onHide(std::move(onHide)) { qApp->installEventFilter(this); }
    ~CHideWatch() override { qApp->removeEventFilter(this); }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Hide)
            if (auto* dialog = qobject_cast<QDialog*>(object); dialog && dialog->isModal()) m_onHide(dialog);
        return false;
    }

private:
    std::function<void(QWidget*)> m_onHide;
};

QTabWidget* SheetTabs(QWidget* window) { return window->findChild<QTabWidget*>(QString(), Qt::FindDirectChildrenOnly); }

}  // namespace

void CHeadlessTour::Print(const ustring& line) { m_out << line.ToQString() << Qt::endl; }

int CHeadlessTour::Run(const ustring& url) {
    Print(ustring::Format(HostText(HS_TOUR_START).c_str(), url, ustring::FromQString(m_folder.absolutePath())));
    if (!m_library.Missing().empty()) {
        std::string names;
        for (const auto& name : m_library.Missing()) names += (names.empty() ? "" : ", ") + name;
        Print(ustring::Format(HostText(HS_NAMES_MISSING).c_str(), ustring::FromUtf8(names)));
    }
    try {
        m_connection.Open(url);
    } catch (const basekit::CStdException& e) {
        const ustring plain = e.GetPlainMessage();
        Print(plain.empty() ? e.GetMessage() : plain);
        if (!plain.empty()) Print(e.GetMessage());
        return 1;
    }
    for (const auto& launcher : m_library.Launchers())
        if (m_only.empty() || m_only.count(launcher.name)) Visit(launcher);
    if (m_shown == 0) ++m_failures;
    Print(m_failures == 0 ? ustring::Format(HostText(HS_TOUR_DONE).c_str(), m_shown)
                          : ustring::Format(HostText(HS_TOUR_FAILED).c_str(), m_failures));
    return m_failures;
}

std::vector<std::string> CHeadlessTour::Unknown(const CFenkBinding& library, const std::vector<std::string>& names) {
    std::vector<std::string> unknown;
    const auto& launchers = library.Launchers();
    for (const auto& name : names)
        if (std::none_of(launchers.begin(), launchers.end(), [&name](const auto& l) { return l.name == name; })) unknown.push_back(name);
    return unknown;
}

void CHeadlessTour::Visit(const CFenkBinding::Launcher& launcher) {
    Print(ustring::Format(HostText(HS_TOUR_DIALOG).c_str(), ustring::FromUtf8(launcher.name)));
    m_visit = VISIT{};
    m_visit.name = launcher.name;
    // The launcher runs its window modally; a timer looks at it from inside that loop.
    const QDeadlineTimer deadline(kWorkLimitMs);
    QTimer watcher;
    watcher.setInterval(kPollMs);
    QObject::connect(&watcher, &QTimer::timeout, [&] { Step(deadline); });
    const CHideWatch closing([this](QWidget* window) { CaptureClosing(window); });
    watcher.start();
    const int result = launcher.run(m_connection.Receiver(), nullptr);
    watcher.stop();
    Print(ustring::Format(HostText(HS_TOUR_WINDOW).c_str(), ustring::FromUtf8(launcher.name), m_visit.rows, m_visit.failed,
                          m_visit.shots, result));
    m_failures += m_visit.failed;
    if (m_visit.shots == 0 || (result != 1 && result != 2)) ++m_failures;
    else ++m_shown;
}

// One look at the modal window: wait for its work, shoot it (page after page for a sheet), close it.
void CHeadlessTour::Step(const QDeadlineTimer& deadline) {
    QWidget* window = QApplication::activeModalWidget();
    if (!window || window == m_visit.opener) return;
    if (m_visit.done.count(window)) {
        window->close();   // a window that kept itself open when asked once
        return;
    }
    if (window != m_visit.window) {
        m_visit.window = window;
        m_visit.page = 0;
        m_visit.failedSeen = 0;
        ++m_visit.windows;
    }
    // Windows that read the receiver in the background say when they are done, live windows
    // when their first data have arrived.
    const QVariant idle = window->property("fenkIdle");
    if ((idle.isValid() && !idle.toBool()) || window->property("fenkAwaitingData").toBool()) {
        if (!deadline.hasExpired()) return;
        Print(ustring::Format(HostText(HS_TOUR_TIMEOUT).c_str(), ustring::FromUtf8(m_visit.name)));
        ++m_visit.failed;
    }
    if (OpenNextItem(window)) return;
    QTabWidget* tabs = SheetTabs(window);
    const int pages = tabs ? tabs->count() : 0;
    if (pages > 1) Print(ustring::Format(HostText(HS_TOUR_PAGE).c_str(), m_visit.page + 1, ustring::FromQString(tabs->tabText(m_visit.page))));
    Capture(window, pages > 1 ? tabs->currentWidget() : window, ShotName(pages));
    if (pages > 1 && ++m_visit.page < pages && !deadline.hasExpired()) {
        // The next page reads on activation; the next look waits for it.
        tabs->setCurrentIndex(m_visit.page);
        return;
    }
    MarkDone(window);
    window->close();
}

// A window at a reused address is a new one: it leaves the done set when it goes.
void CHeadlessTour::MarkDone(QWidget* window) {
    if (!m_visit.done.insert(window).second) return;
    QObject::connect(window, &QObject::destroyed, [this, window] { m_visit.done.erase(window); });
}

bool CHeadlessTour::OpenNextItem(QWidget* window) {
    auto* tree = window->findChild<QTreeWidget*>();
    if (!tree || !tree->property("fenkItemsOpenWindows").toBool()) return false;
    int& next = m_visit.groupsOpened[window];
    while (next < tree->topLevelItemCount()) {
        QTreeWidgetItem* group = tree->topLevelItem(next++);
        if (group->childCount() == 0) continue;
        QTreeWidgetItem* item = group->child(0);
        Print(ustring::Format(HostText(HS_TOUR_OPENING).c_str(), ustring::FromQString(group->text(0)), ustring::FromQString(item->text(0))));
        // Opened from the list's own loop, not from this timer's call: the window it opens runs
        // a loop of its own, in which this timer must go on looking.
        m_visit.opener = window;
        QTimer::singleShot(0, tree, [this, tree, item] {
            tree->setCurrentItem(item);
            emit tree->itemActivated(item, 0);
            m_visit.opener = nullptr;
        });
        return true;
    }
    return false;
}

QString CHeadlessTour::ShotName(int pages) const {
    QString base = QString::fromStdString(m_visit.name);
    if (m_visit.windows > 1) base += QStringLiteral("-w%1").arg(m_visit.windows);
    if (pages > 1) base += QStringLiteral("-p%1").arg(m_visit.page + 1);
    return m_folder.filePath(base + QStringLiteral(".png"));
}

void CHeadlessTour::CaptureClosing(QWidget* window) {
    if (m_visit.done.count(window)) return;
    MarkDone(window);
    if (window != m_visit.window) {
        m_visit.window = window;
        m_visit.failedSeen = 0;
        ++m_visit.windows;
    }
    const QTabWidget* tabs = SheetTabs(window);
    Capture(window, tabs ? tabs->currentWidget() : window, ShotName(0));
}

void CHeadlessTour::Capture(QWidget* window, QWidget* content, const QString& file) {
    // Windows that read the receiver count their failed readings on themselves.
    const int failed = window->property("fenkFailed").toInt();
    if (failed > m_visit.failedSeen) {
        Print(ustring::Format(HostText(HS_TOUR_READINGS_FAILED).c_str(), ustring::FromUtf8(m_visit.name), failed - m_visit.failedSeen));
        m_visit.failed += failed - m_visit.failedSeen;
        m_visit.failedSeen = failed;
    }
    const auto row = [this](const QString& name, const QString& value) {
        if (name.isEmpty() && value.isEmpty()) return;
        Print(value.isEmpty() ? ustring::Format(HostText(HS_TOUR_ITEM).c_str(), ustring::FromQString(name))
                              : ustring::Format(HostText(HS_TOUR_ROW).c_str(), ustring::FromQString(name), ustring::FromQString(value)));
        ++m_visit.rows;
    };
    for (const QTreeWidget* tree : content->findChildren<QTreeWidget*>())
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            // A name and its value, or a table's row with its empty cells (an icon's) left out.
            const QTreeWidgetItem* item = tree->topLevelItem(i);
            if (tree->columnCount() <= 2) {
                row(item->text(0), item->text(1));
                continue;
            }
            QStringList cells;
            for (int c = 0; c < tree->columnCount(); ++c)
                if (!item->text(c).isEmpty()) cells << item->text(c);
            row(cells.join(QStringLiteral(" \u00b7 ")), {});
        }
    if (QString readout = content->property("fenkReadout").toString(); !readout.isEmpty())
        row(readout.replace(QLatin1Char('\n'), QStringLiteral(" \u00b7 ")), {});
    for (const QListWidget* list : content->findChildren<QListWidget*>())
        for (int i = 0; i < list->count(); ++i) row(list->item(i)->text(), {});
    if (!window->grab().save(file)) {
        ++m_visit.failed;
        return;
    }
    ++m_visit.shots;
    Print(ustring::Format(HostText(HS_TOUR_SHOT).c_str(), ustring::FromQString(file)));
}
