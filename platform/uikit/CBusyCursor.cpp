#include "platform/uikit/CBusyCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace uikit {

CBusyCursor::CBusyCursor() : m_active(qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
    if (m_active) QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

CBusyCursor::~CBusyCursor() {
    if (m_active) QGuiApplication::restoreOverrideCursor();
}

}  // namespace uikit
