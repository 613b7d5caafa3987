#include "fenklib/ports/CPortList.h"

#include <QBitmap>
#include <QPixmap>

#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"

CPortList::CPortList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setIconSize(QSize(16, 16));
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        if (m_onActivate && item) m_onActivate(item);
    });
}

void CPortList::AttachImages() {
    if (!m_images.empty()) return;
    for (const unsigned id : {IDB_PORT_SERIAL, IDB_PORT_USB, IDB_PORT_TCP, IDB_PORT_MVP}) {
        QPixmap pixmap = QPixmap::fromImage(FenkBitmap(id).scaled(16, 16));
        pixmap.setMask(pixmap.createMaskFromColor(QColor::fromRgb(kFenkBitmapTransparent)));
        m_images.emplace_back(id, QIcon(pixmap));
    }
}

const QIcon& CPortList::GroupImage(unsigned imageId) const {
    static const QIcon none;
    for (const auto& [id, icon] : m_images)
        if (id == imageId) return icon;
    return none;
}
