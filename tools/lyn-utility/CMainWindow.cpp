#include "tools/lyn-utility/CMainWindow.h"

#include <QAction>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <utility>
#include <QStatusBar>
#include <QTimer>

#include "platform/basekit/CStdException.h"
#include "platform/uikit/CFileDialogService.h"
#include "platform/uikit/CMessageBoxService.h"
#include "platform/uikit/CScreenFit.h"
#include "tools/lyn-utility/CConnectDlg.h"
#include "tools/lyn-utility/CHelpMenu.h"
#include "tools/lyn-utility/CLinkText.h"
#include "tools/lyn-utility/HostStrings.h"

using basekit::ustring;

namespace {
constexpr int kReconnect = 4;
constexpr int kTickMs = 1000;
}  // namespace

CMainWindow::CMainWindow(CFenkBinding& library, CConnection& connection) : m_library(library), m_connection(connection) {
    setWindowTitle(HostText(HS_TITLE).ToQString());
    QMenu* device = menuBar()->addMenu(HostText(HS_MENU_DEVICE).ToQString());
    device->addAction(HostText(HS_CONNECT).ToQString(), QKeySequence(QStringLiteral("Ctrl+O")), this, [this] { OnConnect(); });
    device->addAction(HostText(HS_RECONNECT).ToQString(), QKeySequence(QStringLiteral("Ctrl+R")), this, [this] { OnReconnect(); });
    device->addAction(HostText(HS_DISCONNECT).ToQString(), this, [this] {
        m_connection.Close();
        m_reconnectIn = -1;
        UpdateStatus();
    });
    m_wireLog = device->addAction(HostText(HS_WIRE_LOG).ToQString());
    m_wireLog->setCheckable(true);
    m_wireLog->setChecked(!m_connection.WireLogPath().empty());
    connect(m_wireLog, &QAction::toggled, this, [this](bool on) { OnWireLog(on); });
    device->addSeparator();
    const int deviceWindows = AddLauncherEntries(device, CFenkBinding::Menu::Device);
    if (deviceWindows > 0) device->addSeparator();
    device->addAction(HostText(HS_EXIT).ToQString(), QKeySequence::Quit, this, &QWidget::close);
    // Editors of a value and the tools that hold no receiver, each in a menu of its own when the
    // library has any.
    for (const auto& [menu, title] : {std::pair{CFenkBinding::Menu::Edit, HS_MENU_EDIT}, std::pair{CFenkBinding::Menu::Tools, HS_MENU_TOOLS}}) {
        QMenu* entries = new QMenu(HostText(title).ToQString(), this);
        if (AddLauncherEntries(entries, menu) > 0) menuBar()->addMenu(entries);
        else delete entries;
    }
    AddHelpMenu(*this, m_library);
    m_status = new QLabel(this);
    m_health = new QLabel(this);
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_health);
    m_timer = new QTimer(this);
    connect(m_timer, &QTimer::timeout, this, [this] { Tick(); });
    m_timer->start(kTickMs);
    resize(640, 320);
    UpdateStatus();
}

int CMainWindow::AddLauncherEntries(QMenu* menu, CFenkBinding::Menu where) {
    int added = 0;
    for (const auto& launcher : m_library.Launchers()) {
        if (launcher.menu != where) continue;
        // Windows that hold no receiver open whether or not a link is up.
        QAction* action = menu->addAction(launcher.caption.ToQString(), this, [this, launcher] {
            if (launcher.takesReceiver) RunLauncher(launcher);
            else launcher.run({}, this);
        });
        if (*launcher.shortcut) action->setShortcut(QKeySequence(QString::fromLatin1(launcher.shortcut)));
        ++added;
    }
    return added;
}

bool CMainWindow::Connect(const ustring& url) {
    try {
        m_connection.Open(url);
        m_reconnectIn = -1;
        m_backoff.Reset();
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(this, e);
        UpdateStatus();
        return false;
    }
    UpdateStatus();
    return true;
}

void CMainWindow::OnConnect() {
    CConnectDlg dialog(this, m_connection.Url().empty() ? ustring(L"sim:") : m_connection.Url());
    uikit::CScreenFit::Apply(dialog);
    if (dialog.exec() != QDialog::Accepted) return;
    Connect(dialog.Url());
}

void CMainWindow::OnReconnect() {
    if (m_connection.Url().empty()) {
        OnConnect();
        return;
    }
    Connect(m_connection.Url());
}

void CMainWindow::OnWireLog(bool on) {
    std::string path;
    if (on) {
        path = uikit::CFileDialogService::GetSaveFileName(this, L"wire.log", HostText(HS_WIRE_LOG_FILTER), L"log").ToUtf8();
        if (path.empty()) {
            const QSignalBlocker block(m_wireLog);
            m_wireLog->setChecked(false);
            return;
        }
    }
    if (!m_connection.SetWireLog(path)) {
        uikit::CMessageBoxService::ShowError(this, ustring::Format(HostText(HS_WIRE_LOG_FAILED).c_str(), ustring::FromUtf8(path)), {});
        const QSignalBlocker block(m_wireLog);
        m_wireLog->setChecked(false);
    }
}

int CMainWindow::RunLauncher(const CFenkBinding::Launcher& launcher) {
    if (!m_connection.IsOpen()) OnConnect();
    if (!m_connection.IsOpen()) return 2;
    const int result = launcher.run(m_connection.Receiver(), this);
    if (result == kReconnect) FollowReconfiguredPort();
    UpdateStatus();
    return result;
}

void CMainWindow::FollowReconfiguredPort() {
    std::optional<devio::SerialLineSettings> line;
    devio::SerialLineSettings before, after;
    if (const auto change = m_library.OwnPortChange(); change && change(before, after)) line = after;
    statusBar()->showMessage(ustring::Format(HostText(HS_RECONNECTING).c_str(), m_connection.Url()).ToQString());
    const CConnection::FOLLOW_RESULT r = m_connection.Follow(line);
    m_reconnectIn = -1;
    m_backoff.Reset();
    const auto where = [](const ustring& url) { return CLinkText::Describe(*devio::IPortAddr::Parse(url)); };
    switch (r.outcome) {
        case CConnection::EFollow::Followed:
            CConnectDlg::RememberLink(m_connection.Url());
            statusBar()->showMessage(ustring::Format(HostText(HS_FOLLOWED).c_str(), m_connection.Description()).ToQString(), 10000);
            break;
        case CConnection::EFollow::WentBack:
            statusBar()->clearMessage();
            uikit::CMessageBoxService::Show(
                {this, ustring::Format(HostText(r.restored ? HS_WENT_BACK : HS_WENT_BACK_UNRESTORED).c_str(), where(r.tried), where(r.kept)),
                 {}, uikit::MB_OK | uikit::MB_ICONWARNING, r.details});
            break;
        case CConnection::EFollow::Closed:
            statusBar()->clearMessage();
            uikit::CMessageBoxService::ShowError(this, ustring::Format(HostText(HS_FOLLOW_LOST).c_str(), where(r.tried), where(r.kept)),
                                                 r.details);
            break;
    }
}

void CMainWindow::Tick() {
    if (m_connection.IsOpen() && m_connection.Receiver()->GetLinkHealth().state == devio::LinkState::Lost) {
        // A lost link comes back by itself: the first attempt at once, then with back-off.
        if (m_reconnectIn < 0) m_reconnectIn = 0;
        if (m_reconnectIn-- == 0) {
            try {
                m_connection.Reopen();
                m_reconnectIn = -1;
                m_backoff.Reset();
            } catch (const basekit::CStdException&) {
                m_reconnectIn = m_backoff.Next();
            }
        }
    }
    UpdateStatus();
}

QString CMainWindow::StatusText() const { return m_status->text(); }

void CMainWindow::UpdateStatus() {
    if (!m_connection.IsOpen()) {
        m_status->setText(HostText(HS_NOT_CONNECTED).ToQString());
        m_health->clear();
        return;
    }
    const devio::LINK_HEALTH health = m_connection.Receiver()->GetLinkHealth();
    const ustring where = m_connection.Description();
    const auto& id = m_connection.Identity();
    const ustring connected = id ? ustring::Format(HostText(HS_STATUS_IDENTIFIED).c_str(), id->model, id->serial, id->firmware, where)
                                 : ustring::Format(HostText(HS_STATUS_UNIDENTIFIED).c_str(), where);
    switch (health.state) {
        case devio::LinkState::Lost:
            m_status->setText(m_reconnectIn > 0 ? ustring::Format(HostText(HS_STATUS_LOST).c_str(), where, m_reconnectIn).ToQString()
                                                : ustring::Format(HostText(HS_STATUS_RECONNECTING_NOW).c_str(), where).ToQString());
            break;
        case devio::LinkState::Silent:
            m_status->setText(ustring::Format(HostText(HS_STATUS_SILENT).c_str(), where).ToQString());
            break;
        case devio::LinkState::Up: m_status->setText(connected.ToQString()); break;
    }
    m_health->setText(CLinkText::Health(health).ToQString());
}
