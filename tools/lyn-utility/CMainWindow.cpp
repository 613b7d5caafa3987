#include "tools/lyn-utility/CMainWindow.h"

#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>

#include "platform/basekit/CStdException.h"
#include "tools/lyn-utility/CConnectDlg.h"
#include "tools/lyn-utility/HostStrings.h"

namespace {
constexpr int kReconnect = 4;
}

CMainWindow::CMainWindow(CFenkBinding& library, CConnection& connection) : m_library(library), m_connection(connection) {
    setWindowTitle(HostText(HS_TITLE).ToQString());
    QMenu* device = menuBar()->addMenu(HostText(HS_MENU_DEVICE).ToQString());
    device->addAction(HostText(HS_CONNECT).ToQString(), this, [this] { OnConnect(); });
    device->addAction(HostText(HS_DISCONNECT).ToQString(), this, [this] {
        m_connection.Close();
        UpdateStatus();
    });
    device->addSeparator();
    for (const auto& launcher : m_library.ReceiverLaunchers()) {
        // The entry is named after the launcher: "run_ReceiverInfoDlg" reads "ReceiverInfoDlg".
        device->addAction(QString::fromStdString(launcher.name.substr(4)), this, [this, launcher] { RunLauncher(launcher); });
    }
    device->addSeparator();
    device->addAction(HostText(HS_EXIT).ToQString(), this, &QWidget::close);
    m_status = new QLabel(this);
    statusBar()->addWidget(m_status);
    resize(480, 320);
    UpdateStatus();
}

void CMainWindow::OnConnect() {
    CConnectDlg dialog(this, m_connection.Url().empty() ? basekit::ustring(L"sim:") : m_connection.Url());
    if (dialog.exec() != QDialog::Accepted) return;
    try {
        m_connection.Open(dialog.Url());
    } catch (const basekit::CStdException& e) {
        ReportError(basekit::ustring::Format(HostText(HS_CONNECT_FAILED).c_str(), dialog.Url(), e.GetMessage()));
    }
    UpdateStatus();
}

int CMainWindow::RunLauncher(const CFenkBinding::Launcher& launcher) {
    if (!m_connection.IsOpen()) OnConnect();
    if (!m_connection.IsOpen()) return 2;
    const int result = launcher.run(m_connection.Receiver(), this);
    if (result == kReconnect) {
        statusBar()->showMessage(basekit::ustring::Format(HostText(HS_RECONNECTING).c_str(), m_connection.Url()).ToQString(), 5000);
        try {
            m_connection.Reopen();
        } catch (const basekit::CStdException& e) {
            ReportError(basekit::ustring::Format(HostText(HS_CONNECT_FAILED).c_str(), m_connection.Url(), e.GetMessage()));
        }
    }
    UpdateStatus();
    return result;
}

void CMainWindow::UpdateStatus() {
    m_status->setText(m_connection.IsOpen()
                          ? basekit::ustring::Format(HostText(HS_CONNECTED_TO).c_str(), m_connection.Url()).ToQString()
                          : HostText(HS_NOT_CONNECTED).ToQString());
}

void CMainWindow::ReportError(const basekit::ustring& text) {
    QMessageBox::critical(this, HostText(HS_TITLE).ToQString(), text.ToQString());
}
