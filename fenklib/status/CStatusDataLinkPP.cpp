#include "fenklib/status/CStatusDataLinkPP.h"

#include <QHeaderView>
#include <QLocale>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CReceiverEnumWrapper.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

enum : unsigned { IDC_LIST = 100 };
constexpr DLG_ITEM kItems[] = {{IDC_LIST, CtlKind::ListView, 0, 4, 4, 232, 218, uikit::kAnchorFill}};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_DATA_LINK, 240, 226, kItems};
const CLayoutRegistration kRegistered("CStatusDataLinkPP", {{&kNormal}});
constexpr unsigned kColumns[] = {IDS_COL_PORT, IDS_COL_FORMAT, IDS_COL_STATION, IDS_COL_AGE,
                                 IDS_COL_RECEIVED, IDS_COL_ERRORS, IDS_COL_RATE};

}  // namespace

CStatusDataLinkPP::CStatusDataLinkPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), IDD_STATUS_DATA_LINK, LoadResString(IDS_PAGE_DATA_LINK)) {}

bool CStatusDataLinkPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal);
    m_list = m_controls.Get<QTreeWidget>(IDC_LIST);
    QStringList headings;
    for (const unsigned id : kColumns) headings << LoadResString(id).ToQString();
    m_list->setHeaderLabels(headings);
    Show();
    return true;
}

void CStatusDataLinkPP::OnDataLink(const devio::DATALINK_RECORD& record) {
    LINK_ROW& row = m_links[record.port];
    const bool ageing = row.record.port && record.age > row.record.age;
    row.stale = record.age >= kStaleAgeSeconds && (ageing || row.stale) && record.age >= row.record.age;
    row.record = record;
    if (IsWindowCreated()) Show();
}

void CStatusDataLinkPP::Show() {
    if (!m_list) return;
    const QLocale locale;
    int i = 0;
    for (const auto& [port, row] : m_links) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        if (!item) item = new QTreeWidgetItem(m_list);
        const auto& r = row.record;
        const QStringList texts{devio::vok::DataLinkPortName(static_cast<wchar_t>(r.port)).ToQString(),
                                devio::vok::DataLinkFormatName(static_cast<wchar_t>(r.format)).ToQString(),
                                QString::number(r.stationId), locale.toString(r.age, 'f', 1),
                                locale.toString(r.received), locale.toString(r.errors), locale.toString(r.rate)};
        for (int c = 0; c < texts.size(); ++c) {
            item->setText(c, texts[c]);
            item->setForeground(c, row.stale ? QBrush(Qt::red) : QBrush());
        }
        ++i;
    }
}
