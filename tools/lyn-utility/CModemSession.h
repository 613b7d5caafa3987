#pragma once
#include <QDir>
#include <QTextStream>
#include <functional>

#include "platform/devio/IModem.h"
#include "tools/lyn-utility/CFenkBinding.h"

// The utility on a modem instead of a receiver: opens the link (through the library's port
// hooks, which power the controller's internal modem), runs the library's modem sheet on it,
// and closes the link again. The tour opens every page of the sheet and prints each value a
// page read, "Name: value" a line.
class CModemSession {
public:
    static constexpr int kFailed = 3;   // what a launcher returns when its window could not run

    CModemSession(CFenkBinding& library, QTextStream& out) : m_library(library), m_out(out) {}
    // The sheet's result, or 3 when the link or the library's sheet is not there.
    int Run(const basekit::ustring& url, QWidget* parent);
    // The number of failures (0 when every page was read).
    int Tour(const basekit::ustring& url, const QDir& folder);

private:
    using SheetLauncher = int (*)(basekit::CSmartPtr<devio::IModem>, QWidget*);
    SheetLauncher Launcher();
    int WithModem(const basekit::ustring& url, const std::function<int(basekit::CSmartPtr<devio::IModem>)>& use);
    void Print(const QString& line) { m_out << line << Qt::endl; }

    CFenkBinding& m_library;
    QTextStream& m_out;
};
