#pragma once
#include <QDir>
#include <QPointer>
#include <QTextStream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/lyn-utility/CConnection.h"

class QDeadlineTimer;

// Without a display: connect to the receiver, run every bound launcher offscreen, save a
// screenshot of each window (of each page of a property sheet) once its work is done, print
// what it shows, and count failures. Windows that end by themselves are shot as they close.
// A list whose items open windows of their own (property "fenkItemsOpenWindows") gets the first
// item of each group opened, and those windows shot, before it is closed.
class CHeadlessTour {
public:
    CHeadlessTour(CFenkBinding& library, CConnection& connection, QDir folder, QTextStream& out)
        : m_library(library), m_connection(connection), m_folder(std::move(folder)), m_out(out) {}
    // Returns the number of failures (0 when everything worked).
    int Run(const basekit::ustring& url);
    // Tours just these launchers (empty: every one). Unknown() names those the library lacks.
    void SetOnly(const std::vector<std::string>& names) { m_only = {names.begin(), names.end()}; }
    static std::vector<std::string> Unknown(const CFenkBinding& library, const std::vector<std::string>& names);

private:
    // What the visit of one launcher found so far.
    struct VISIT {
        std::string name;
        QPointer<QWidget> window;   // the modal window being looked at
        int windows = 0;            // windows seen, message boxes included
        int page = 0;               // the sheet's page being shot
        int failedSeen = 0;         // the window's failed readings already counted
        int rows = 0, failed = 0, shots = 0;
        std::set<const QWidget*> done;   // shot and asked to close
        std::map<const QWidget*, int> groupsOpened;   // a window's item groups opened so far
        QPointer<QWidget> opener;        // a list whose item's window is on its way or open
    };

    void Visit(const CFenkBinding::Launcher& launcher);
    void Step(const QDeadlineTimer& deadline);
    bool OpenNextItem(QWidget* window);
    void MarkDone(QWidget* window);
    void Capture(QWidget* window, QWidget* content, const QString& file);
    void CaptureClosing(QWidget* window);
    QString ShotName(int pages) const;
    void Print(const basekit::ustring& line);

    CFenkBinding& m_library;
    CConnection& m_connection;
    QDir m_folder;
    QTextStream& m_out;
    VISIT m_visit;
    std::set<std::string> m_only;
    int m_failures = 0;
    int m_shown = 0;
};
