#pragma once
#include <QMainWindow>

#include "tools/lyn-utility/CBackoff.h"
#include "tools/lyn-utility/CConnection.h"

class QAction;
class QLabel;
class QMenu;
class QTimer;

// The utility's window: a Device menu with Connect, Reconnect, the wire log, one entry per bound
// launcher on the receiver (the window's own caption) and Exit, an Edit menu of the value
// editors and a Tools menu of the windows that hold no receiver; a status bar that says what answered, the
// link's health, and when the link is lost, while it reconnects by itself with back-off.
class CMainWindow : public QMainWindow {
public:
    CMainWindow(CFenkBinding& library, CConnection& connection);

    // Runs a launcher on the open receiver; when it answers 4 the link follows the receiver's
    // reconfigured port (or goes back, saying why).
    int RunLauncher(const CFenkBinding::Launcher& launcher);
    // Opens the link, reporting a failure in an error box; the link that was open stays.
    bool Connect(const basekit::ustring& url);
    // Looks at the link once (the status timer does this every second).
    void Tick();
    QString StatusText() const;

private:
    int AddLauncherEntries(QMenu* menu, CFenkBinding::Menu where);
    void OnConnect();
    void OnReconnect();
    void OnWireLog(bool on);
    void FollowReconfiguredPort();
    void UpdateStatus();

    CFenkBinding& m_library;
    CConnection& m_connection;
    QLabel* m_status;
    QLabel* m_health;
    QAction* m_wireLog;
    QTimer* m_timer;
    CBackoff m_backoff;
    int m_reconnectIn = -1;   // seconds until the next attempt; -1: the link is not lost
};
