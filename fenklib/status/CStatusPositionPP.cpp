#include "fenklib/status/CStatusPositionPP.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QPushButton>
#include <QTreeWidget>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/WideScreen.h"

using basekit::ustring;

namespace {

enum : unsigned { IDC_LIST = 100, IDC_COPY, IDC_BOTH_FORMS };
constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 232, 200, uikit::kAnchorFill},
    {IDC_BOTH_FORMS, CtlKind::CheckBox, IDS_SHOW_OTHER_FORM, 4, 208, 148, 14, uikit::kAnchorBottomLeft},
    {IDC_COPY, CtlKind::Button, IDS_COPY_POSITION, 156, 208, 80, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LIST, CtlKind::ListView, 0, 4, 4, 258, 140, uikit::kAnchorFill},
    {IDC_COPY, CtlKind::Button, IDS_COPY_POSITION, 310, 4, 70, 14, uikit::kAnchorTopRight},
    {IDC_BOTH_FORMS, CtlKind::CheckBox, IDS_SHOW_OTHER_FORM, 266, 22, 114, 24, uikit::kAnchorTopRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_STATUS_POSITION, 240, 226, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_STATUS_POSITION_WIDE, 384, 148, kWideItems};
const CLayoutRegistration kRegistered("CStatusPositionPP", {{&kNormal, &kWide}});

}  // namespace

CStatusPositionPP::CStatusPositionPP(basekit::CSmartPtr<devio::IReceiver> receiver)
    : CFenkPropertyPage(std::move(receiver), uikit::IsWideScreen() ? IDD_STATUS_POSITION_WIDE : IDD_STATUS_POSITION,
                        LoadResString(IDS_PAGE_POSITION)) {}

bool CStatusPositionPP::OnInitDialog() {
    CFenkPropertyPage::OnInitDialog();
    m_controls = CLayoutFactory::Build(this, kNormal, &kWide);
    m_list = m_controls.Get<QTreeWidget>(IDC_LIST);
    m_list->setHeaderLabels({LoadResString(IDS_COL_NAME).ToQString(), LoadResString(IDS_COL_VALUE).ToQString()});
    connect(m_controls.Get<QPushButton>(IDC_COPY), &QPushButton::clicked, this, [this] { OnCopyPosition(); });
    auto* both = m_controls.Get<QCheckBox>(IDC_BOTH_FORMS);
    both->setChecked(m_bothForms);
    connect(both, &QCheckBox::toggled, this, [this](bool on) { ShowBothForms(on); });
    Show();
    return true;
}

void CStatusPositionPP::OnPosition(const devio::POSITION_RECORD& record) {
    m_last = record;
    m_summary.SetPosition(record);
    ++m_positions;
    if (IsWindowCreated()) Show();
}

void CStatusPositionPP::OnSatList(const devio::SATLIST_RECORD& list) {
    m_summary.SetSatellites(list);
    if (IsWindowCreated()) Show();
}

void CStatusPositionPP::OnDateTime(const QDateTime& utc) {
    m_summary.SetUtc(utc);
    if (IsWindowCreated()) Show();
}

void CStatusPositionPP::ShowBothForms(bool on) {
    m_bothForms = on;
    if (IsWindowCreated()) Show();
}

// The setting is read on every showing: the host may change it while the sheet is open.
std::vector<CPositionSummary::ROW> CStatusPositionPP::Rows() const {
    return m_summary.Rows(CFenkGlobalSettings::Ref().GetCoordSystem(), m_bothForms);
}

ustring CStatusPositionPP::PositionText() const { return CPositionSummary::Text(Rows()); }

void CStatusPositionPP::OnCopyPosition() { QApplication::clipboard()->setText(PositionText().ToQString()); }

void CStatusPositionPP::Show() {
    if (!m_list) return;
    const auto rows = Rows();
    const bool held = m_summary.IsHeld();
    while (m_list->topLevelItemCount() > static_cast<int>(rows.size())) delete m_list->takeTopLevelItem(m_list->topLevelItemCount() - 1);
    for (size_t i = 0; i < rows.size(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(static_cast<int>(i));
        if (!item) item = new QTreeWidgetItem(m_list);
        item->setText(0, LoadResString(rows[i].label).ToQString());
        item->setText(1, rows[i].value);
        item->setDisabled(held);   // greyed: the receiver is coasting on its last position
    }
    m_list->resizeColumnToContents(0);
}
