#include "fenklib/msglist/MessageViews.h"

#include <QBitmap>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPixmap>
#include <QTreeWidget>
#include <algorithm>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/msglist/PortLoad.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;

namespace fenkmsg {

namespace {
constexpr int kFullNameRole = Qt::UserRole + 1;

QIcon MessageImage() {
    QPixmap pixmap = QPixmap::fromImage(FenkBitmap(IDB_MESSAGE_TREE));
    pixmap.setMask(pixmap.createMaskFromColor(QColor(0xFF, 0x00, 0xFF)));   // magenta is transparent
    return QIcon(pixmap);
}
}  // namespace

std::vector<CATALOGUE_GROUP> ReadCatalogue(devio::CVokReceiverMate& mate) {
    std::vector<CATALOGUE_GROUP> groups;
    for (const wchar_t* group : CatalogueGroups()) groups.push_back({group, mate.ListMessages(group)});
    return groups;
}

void FillCatalogueTree(QTreeWidget* tree, const std::vector<CATALOGUE_GROUP>& groups, const CMessageRegistry& registry) {
    tree->clear();
    tree->setHeaderHidden(true);
    tree->setIconSize(QSize(16, 16));
    const QIcon image = MessageImage();
    for (const CATALOGUE_GROUP& g : groups) {
        if (g.names.empty()) continue;
        auto* node = new QTreeWidgetItem(tree, QStringList(g.group.ToQString()));
        node->setIcon(0, image);
        for (const ustring& name : g.names) {
            const ustring full = FullName(g.group, name);
            auto* child = new QTreeWidgetItem(node, QStringList(registry.DisplayText(name, full).ToQString()));
            child->setData(0, kFullNameRole, full.ToQString());
            child->setIcon(0, image);
        }
    }
}

ustring CatalogueFullName(const QTreeWidgetItem* item) {
    return item ? ustring::FromQString(item->data(0, kFullNameRole).toString()) : ustring();
}

void SetupMessageColumns(QTreeWidget* list) {
    QStringList headings;
    for (const unsigned id : {IDS_COL_MESSAGE, IDS_COL_PERIOD, IDS_COL_PHASE, IDS_COL_COUNT, IDS_COL_FLAGS, IDS_COL_DESCRIPTION})
        headings << LoadResString(id).ToQString();
    list->setColumnCount(static_cast<int>(headings.size()));
    list->setHeaderLabels(headings);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->header()->resizeSection(0, 110);
    for (int c = 1; c < 5; ++c) list->header()->resizeSection(c, 55);
}

void ShowMessageRow(QTreeWidgetItem* row, const devio::vok::MSG& msg, const CMessageRegistry& registry) {
    row->setText(0, msg.name.ToQString());
    row->setText(1, ustring::Format(L"%.2f", msg.period).ToQString());
    row->setText(2, ustring::Format(L"%.2f", msg.phase).ToQString());
    row->setText(3, ustring::Format(L"%d", msg.count).ToQString());
    row->setText(4, ustring::Format(L"0x%X", msg.flags).ToQString());
    row->setText(5, registry.Description(msg.name).ToQString());
}

void ShowMessages(QTreeWidget* list, const MessageList& messages, const CMessageRegistry& registry) {
    list->clear();
    for (const devio::vok::MSG& msg : messages) ShowMessageRow(new QTreeWidgetItem(list), msg, registry);
}

std::vector<int> SelectedRows(const QTreeWidget* list) {
    std::vector<int> rows;
    for (QTreeWidgetItem* item : list->selectedItems()) rows.push_back(list->indexOfTopLevelItem(item));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ShowPortLoad(QLabel* label, const MessageList& messages, int lineRate) {
    const PORT_LOAD load = ComputePortLoad(messages, CMessageRegistry::Instance(), lineRate);
    const QLocale locale;
    label->setText(lineRate > 0 ? basekit::ustring::Format(LoadResString(IDS_PORT_LOAD).c_str(), LoadPercent(load.share),
                                                          basekit::ustring::FromQString(locale.toString(lineRate))).ToQString()
                                : basekit::ustring::Format(LoadResString(IDS_PORT_LOAD_NO_RATE).c_str(),
                                                          basekit::ustring::FromQString(locale.toString(load.bytesPerSecond, 'f', 0))).ToQString());
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, load.share > 1.0 ? Qt::red : label->window()->palette().color(QPalette::WindowText));
    label->setPalette(palette);
}

basekit::ustring LoadPercent(double share) {
    return basekit::ustring::FromQString(QLocale().toString(share * 100, 'f', 0) + QLocale().percent());
}

}  // namespace fenkmsg
