#include "platform/uikit/CWindowPlacement.h"

#include <QSettings>
#include <QWidget>

namespace uikit {

namespace {
QString KeyOf(const basekit::ustring& name) {
    return QStringLiteral("WindowPlacement/") + name.ToQString();
}
}  // namespace

void CWindowPlacement::Save(const QWidget& window, const basekit::ustring& name) {
    if (name.empty()) return;
    QSettings().setValue(KeyOf(name), window.saveGeometry());
}

bool CWindowPlacement::Restore(QWidget& window, const basekit::ustring& name) {
    if (name.empty()) return false;
    const QByteArray geometry = QSettings().value(KeyOf(name)).toByteArray();
    return !geometry.isEmpty() && window.restoreGeometry(geometry);
}

}  // namespace uikit
