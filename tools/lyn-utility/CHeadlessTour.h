#pragma once
#include <QDir>
#include <QTextStream>

#include "tools/lyn-utility/CConnection.h"

// Without a display: connect to the receiver, run every bound launcher offscreen, save a
// screenshot of each window once its work is done, print what it shows, and count failures.
class CHeadlessTour {
public:
    CHeadlessTour(CFenkBinding& library, CConnection& connection, QDir folder, QTextStream& out)
        : m_library(library), m_connection(connection), m_folder(std::move(folder)), m_out(out) {}
    // Returns the number of failures (0 when everything worked).
    int Run(const basekit::ustring& url);

private:
    void Visit(const CFenkBinding::Launcher& launcher);
    void Capture(QWidget* window, const std::string& name);
    void Print(const basekit::ustring& line);

    CFenkBinding& m_library;
    CConnection& m_connection;
    QDir m_folder;
    QTextStream& m_out;
    int m_failures = 0;
    int m_shown = 0;
};
