#include "fenklib/ports/CPortList.h"

#include <QAction>
#include <QBitmap>
#include <QKeyEvent>
#include <QPixmap>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

QAction* AddMenuAction(QTreeWidget* tree, unsigned textId, const QList<QKeySequence>& keys) {
    auto* action = new QAction(LoadResString(textId).ToQString(), tree);
    action->setShortcuts(keys);
    // Only while the tree has the focus: Enter elsewhere in the dialog keeps its own meaning.
    action->setShortcutContext(Qt::WidgetShortcut);
    tree->addAction(action);
    return action;
}

}  // namespace

CPortList::CPortList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setIconSize(QSize(16, 16));
    setContextMenuPolicy(Qt::ActionsContextMenu);
    m_properties = AddMenuAction(this, IDS_PROPERTIES, {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    m_refresh = AddMenuAction(this, IDS_REFRESH, {QKeySequence(Qt::Key_F5)});
    // The shortcut takes Enter before the view would turn it into an activation: one opening.
    connect(m_properties, &QAction::triggered, this, [this] { Activate(currentItem()); });
    connect(m_refresh, &QAction::triggered, this, [this] {
        if (m_onRefresh) m_onRefresh();
        UpdateActions();
    });
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { Activate(item); });
    connect(this, &QTreeWidget::currentItemChanged, this, [this] { UpdateActions(); });
    UpdateActions();
}

void CPortList::keyPressEvent(QKeyEvent* event) {
    const QKeySequence key(event->keyCombination());
    if (m_properties->shortcuts().contains(key)) {
        Activate(currentItem());   // a group ignores it, as it ignores a double click
    } else if (m_refresh->shortcuts().contains(key)) {
        m_refresh->trigger();
    } else {
        QTreeWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

void CPortList::Activate(QTreeWidgetItem* item) {
    if (m_onActivate && item) m_onActivate(item);
}

// A group node has no properties of its own.
void CPortList::UpdateActions() { m_properties->setEnabled(currentItem() && currentItem()->parent()); }

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
