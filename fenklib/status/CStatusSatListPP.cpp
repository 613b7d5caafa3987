#include "fenklib/status/CStatusSatListPP.h"

#include <QPixmap>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/status/SatelliteLook.h"

namespace {

enum : unsigned { IDC_LIST = 100 };
constexpr DLG_ITEM kItems[] = {{IDC_LIST, CtlKind::ListView, 0, 4, 4, 232, 218, uikit::kAnchorFill}};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_SAT_LIST, 240, 226, kItems};
const CLayoutRegistration kRegistered("CStatusSatListPP", {{&kNormal}});
constexpr unsigned kColumns[] = {IDS_COL_USED, IDS_COL_SYSTEM, IDS_COL_NUMBER, IDS_COL_ELEVATION, IDS_COL_AZIMUTH, IDS_COL_SNR};
enum Column { kUsed, kSystem, kNumber, kElevation, kAzimuth, kSnr };

// Numbers sort as numbers, not as text.
class CSatItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override {
        const int c = treeWidget() ? treeWidget()->sortColumn() : 0;
        const QVariant a = data(c, Qt::UserRole), b = other.data(c, Qt::UserRole);
        if (a.isValid() && b.isValid()) return a.toInt() < b.toInt();
        return QTreeWidgetItem::operator<(other);
    }
};

}  // namespace

CStatusSatListPP::CStatusSatListPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), IDD_STATUS_SAT_LIST, LoadResString(IDS_PAGE_SVS_LIST)) {}

bool CStatusSatListPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal);
    m_view = m_controls.Get<QTreeWidget>(IDC_LIST);
    QStringList headings;
    for (const unsigned id : kColumns) headings << LoadResString(id).ToQString();
    m_view->setHeaderLabels(headings);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(kSystem, Qt::AscendingOrder);
    Show();
    return true;
}

void CStatusSatListPP::OnSatList(const devio::SATLIST_RECORD& list) {
    m_list = list;
    if (IsWindowCreated()) Show();
}

void CStatusSatListPP::Show() {
    if (!m_view) return;
    const auto& symbols = satlook::CSatelliteSymbols::Instance();
    m_view->setSortingEnabled(false);
    while (m_view->topLevelItemCount() > static_cast<int>(m_list.size())) delete m_view->takeTopLevelItem(m_view->topLevelItemCount() - 1);
    for (size_t i = 0; i < m_list.size(); ++i) {
        const auto& sat = m_list[i];
        QTreeWidgetItem* item = m_view->topLevelItem(static_cast<int>(i));
        if (!item) item = new CSatItem(m_view);
        const bool used = devio::SATELLITE_RECORD::IsUsed(sat.navStatus);
        const int index = symbols.Index(satlook::CSatelliteSymbols::Key(sat.system, used));
        item->setIcon(kUsed, index >= 0 ? QIcon(QPixmap::fromImage(symbols.Image(index))) : QIcon());
        item->setData(kUsed, Qt::UserRole, used ? 1 : 0);
        const unsigned name = satlook::SystemNameId(sat.system);
        item->setText(kSystem, name ? LoadResString(name).ToQString() : QString::number(sat.system));
        item->setData(kSystem, Qt::UserRole, sat.system);
        item->setText(kNumber, QString::number(sat.number));
        item->setData(kNumber, Qt::UserRole, sat.number);
        const bool elevationKnown = sat.elevation != devio::SATELLITE_RECORD::kUnknownElevation;
        item->setText(kElevation, elevationKnown ? QString::number(sat.elevation) : QString());
        item->setData(kElevation, Qt::UserRole, elevationKnown ? sat.elevation : -1000);
        const bool azimuthKnown = sat.azimuth != devio::SATELLITE_RECORD::kUnknownAzimuth;
        item->setText(kAzimuth, azimuthKnown ? QString::number(sat.azimuth) : QString());
        item->setData(kAzimuth, Qt::UserRole, azimuthKnown ? sat.azimuth : -1);
        item->setText(kSnr, sat.snr ? QString::number(sat.snr) : QString());
        item->setData(kSnr, Qt::UserRole, sat.snr);
        const unsigned tip = satlook::NavStatusTextId(sat.navStatus);
        const QString tipText = tip ? LoadResString(tip).ToQString() : QString();
        for (int c = 0; c < m_view->columnCount(); ++c) item->setToolTip(c, tipText);
    }
    m_view->setSortingEnabled(true);
}
