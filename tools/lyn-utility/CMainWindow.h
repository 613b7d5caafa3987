#pragma once
#include <QMainWindow>

#include "tools/lyn-utility/CConnection.h"

class QLabel;

// The utility's window: a Device menu with Connect, one entry per bound launcher, and Exit.
class CMainWindow : public QMainWindow {
public:
    CMainWindow(CFenkBinding& library, CConnection& connection);

    // Runs a launcher on the open receiver; reconnects when it answers 4.
    int RunLauncher(const CFenkBinding::Launcher& launcher);

private:
    void OnConnect();
    void UpdateStatus();
    void ReportError(const basekit::ustring& text);

    CFenkBinding& m_library;
    CConnection& m_connection;
    QLabel* m_status;
};
