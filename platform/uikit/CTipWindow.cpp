#include "platform/uikit/CTipWindow.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>

namespace uikit {

namespace {

QRect AreaAround(const QWidget* owner) {
    if (owner && owner->isVisible()) return QRect(owner->mapToGlobal(QPoint(0, 0)), owner->size());
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

}  // namespace

CTipWindow::CTipWindow(QWidget* owner, const basekit::ustring& text)
    : m_label(std::make_unique<QLabel>(text.ToQString(), nullptr,
                                       Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)) {
    m_label->setAttribute(Qt::WA_ShowWithoutActivating);
    m_label->setForegroundRole(QPalette::ToolTipText);
    m_label->setBackgroundRole(QPalette::ToolTipBase);
    m_label->setAutoFillBackground(true);
    m_label->setFrameStyle(QFrame::Box | QFrame::Plain);
    m_label->setMargin(10);
    m_label->adjustSize();
    const QRect area = AreaAround(owner);
    if (area.isValid()) m_label->move(area.center() - m_label->rect().center());
    m_label->show();
    // The operation that follows blocks the event loop, so the note is painted now.
    m_label->repaint();
}

CTipWindow::~CTipWindow() { m_label->hide(); }

}  // namespace uikit
