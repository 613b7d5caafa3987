#pragma once
#include <QByteArray>
#include <QString>

namespace basekit {

// A per-user store's file that does not parse as one (a power cut on a handheld can leave random
// bytes in it) would otherwise be read without a word and written back with its junk as keys.
// GuardStoreFile moves such a file aside under a dated name ("<file>.<yyyyMMdd-HHmmss>.bad")
// before anything reads it, so the program starts from the defaults. It returns where the file
// was set aside in this process, by this call or an earlier one (empty when it never was), so
// that the first window can tell the user once.
QString GuardStoreFile(const QString& file);
// The same for the store QSettings() opens: the application object's organisation and name.
QString GuardDefaultStore();

// Whether text is what a settings file holds: UTF-8 lines each blank, a comment, a [group] or a
// key=value, with no control characters but tabs.
bool StoreTextParses(const QByteArray& text);

}  // namespace basekit
