#include "platform/uikit/CAnchorLayout.h"

#include <QFontMetrics>
#include <QWidget>
#include <QWidgetItem>
#include <cmath>

namespace uikit {

CAnchorLayout::CAnchorLayout(QWidget* parent, QSize templateUnits) : QLayout(parent), m_templateUnits(templateUnits) {
    setContentsMargins(0, 0, 0, 0);
}

CAnchorLayout::~CAnchorLayout() = default;

void CAnchorLayout::Add(QWidget* control, QRect units, ANCHOR anchor) {
    addChildWidget(control);
    m_entries.push_back(Entry{std::make_unique<QWidgetItem>(control), units, anchor});
    invalidate();
}

// Items Qt adds on its own (none expected) sit at the top left and do not follow the window.
void CAnchorLayout::addItem(QLayoutItem* item) { m_entries.push_back(Entry{std::unique_ptr<QLayoutItem>(item), {}, {}}); }

int CAnchorLayout::count() const { return static_cast<int>(m_entries.size()); }

QLayoutItem* CAnchorLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_entries[static_cast<size_t>(index)].item.get() : nullptr;
}

QLayoutItem* CAnchorLayout::takeAt(int index) {
    if (index < 0 || index >= count()) return nullptr;
    QLayoutItem* item = m_entries[static_cast<size_t>(index)].item.release();
    m_entries.erase(m_entries.begin() + index);
    return item;
}

QRect CAnchorLayout::ToPixels(QRect units) const {
    const QWidget* owner = parentWidget();
    const QFontMetrics metrics = owner ? owner->fontMetrics() : QFontMetrics(QFont());
    const double baseX = metrics.averageCharWidth() / 4.0;
    const double baseY = metrics.height() / 8.0;
    return QRect(static_cast<int>(std::lround(units.x() * baseX)), static_cast<int>(std::lround(units.y() * baseY)),
                 static_cast<int>(std::lround(units.width() * baseX)), static_cast<int>(std::lround(units.height() * baseY)));
}

QSize CAnchorLayout::sizeHint() const { return minimumSize(); }

QSize CAnchorLayout::minimumSize() const { return ToPixels(QRect(QPoint(0, 0), m_templateUnits)).size(); }

void CAnchorLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const QSize design = minimumSize();
    const int growX = std::max(0, rect.width() - design.width());
    const int growY = std::max(0, rect.height() - design.height());
    for (const Entry& e : m_entries) {
        const QRect at = ToPixels(e.units);
        const auto part = [](float factor, int grow) { return static_cast<int>(std::lround(factor * grow)); };
        e.item->setGeometry(QRect(rect.x() + at.x() + part(e.anchor.moveX, growX), rect.y() + at.y() + part(e.anchor.moveY, growY),
                                  at.width() + part(e.anchor.sizeX, growX), at.height() + part(e.anchor.sizeY, growY)));
    }
}

}  // namespace uikit
