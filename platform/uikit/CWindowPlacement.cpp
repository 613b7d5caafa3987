#include "platform/uikit/CWindowPlacement.h"

#include <QSettings>
#include <QWidget>

#include "platform/basekit/StoreGuard.h"

namespace uikit {

namespace {
QSettings Store() {
    basekit::GuardDefaultStore();
    return QSettings();
}

QString KeyOf(const basekit::ustring& name) {
    return QStringLiteral("WindowPlacement/") + name.ToQString();
}
}  // namespace

void CWindowPlacement::Save(const QWidget& window, const basekit::ustring& name) {
    if (name.empty()) return;
    Store().setValue(KeyOf(name), window.saveGeometry());
}

bool CWindowPlacement::Restore(QWidget& window, const basekit::ustring& name) {
    if (name.empty()) return false;
    const QByteArray geometry = Store().value(KeyOf(name)).toByteArray();
    return !geometry.isEmpty() && window.restoreGeometry(geometry);
}

}  // namespace uikit
