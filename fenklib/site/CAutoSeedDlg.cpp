#include "fenklib/site/CAutoSeedDlg.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/receiver/ParamCatalogue.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/site/CoordInput.h"
#include "fenklib/site/PositionEditing.h"

using basekit::ustring;
using devio::vok::POS_GEO;

namespace {

enum : unsigned {
    IDC_AVERAGING = 3301, IDC_CHECK, IDC_SPAN, IDC_LIMIT, IDC_POINT_ID, IDC_POINT_NAME,
    IDC_POINT_ARP, IDC_POINT_POS, IDC_REF_ARP, IDC_REF_POS,
    IDC_POINT_ARP_EDIT, IDC_POINT_POS_EDIT, IDC_REF_ARP_EDIT, IDC_REF_POS_EDIT,
    IDC_AVERAGING_GROUP = 100, IDC_POINT_GROUP, IDC_REF_GROUP, IDC_SPAN_LABEL, IDC_LIMIT_LABEL, IDC_ID_LABEL,
    IDC_NAME_LABEL, IDC_POINT_ARP_LABEL, IDC_POINT_POS_LABEL, IDC_REF_ARP_LABEL, IDC_REF_POS_LABEL,
};

using uikit::kAnchorTopWide;
constexpr uikit::ANCHOR kTopRight{1, 0, 0, 0};

constexpr DLG_ITEM kItems[] = {
    {IDC_AVERAGING_GROUP, CtlKind::Group, IDS_AVERAGING, 2, 2, 196, 56, kAnchorTopWide},
    {IDC_AVERAGING, CtlKind::CheckBox, IDS_AVERAGE_POSITION, 8, 14, 184, 10},
    {IDC_CHECK, CtlKind::CheckBox, IDS_CHECK_POSITION, 8, 26, 184, 10},
    {IDC_SPAN_LABEL, CtlKind::Static, IDS_SPAN_S, 8, 42, 44, 8},
    {IDC_SPAN, CtlKind::NumberEdit, 0, 54, 40, 40, 12},
    {IDC_LIMIT_LABEL, CtlKind::Static, IDS_LIMIT_M, 102, 42, 44, 8},
    {IDC_LIMIT, CtlKind::RealEdit, 0, 148, 40, 44, 12},
    {IDC_POINT_GROUP, CtlKind::Group, IDS_CURRENT_POINT, 2, 62, 196, 88, kAnchorTopWide},
    {IDC_ID_LABEL, CtlKind::Static, IDS_POINT_ID, 8, 76, 16, 8},
    {IDC_POINT_ID, CtlKind::NumberEdit, 0, 26, 74, 32, 12},
    {IDC_NAME_LABEL, CtlKind::Static, IDS_POINT_NAME, 60, 76, 27, 8},
    {IDC_POINT_NAME, CtlKind::TextEdit, 0, 88, 74, 104, 12, kAnchorTopWide},
    {IDC_POINT_ARP_LABEL, CtlKind::Static, IDS_ANTENNA_POINT, 8, 94, 40, 8},
    {IDC_POINT_ARP, CtlKind::Static, 0, 50, 92, 104, 26, kAnchorTopWide},
    {IDC_POINT_ARP_EDIT, CtlKind::Button, IDS_EDIT_ELLIPSIS, 158, 92, 34, 12, kTopRight},
    {IDC_POINT_POS_LABEL, CtlKind::Static, IDS_POSITION_LABEL, 8, 122, 40, 8},
    {IDC_POINT_POS, CtlKind::Static, 0, 50, 120, 104, 26, kAnchorTopWide},
    {IDC_POINT_POS_EDIT, CtlKind::Button, IDS_EDIT_ELLIPSIS, 158, 120, 34, 12, kTopRight},
    {IDC_REF_GROUP, CtlKind::Group, IDS_REFERENCE_STATION, 2, 154, 196, 68, kAnchorTopWide},
    {IDC_REF_ARP_LABEL, CtlKind::Static, IDS_ANTENNA_POINT, 8, 168, 40, 8},
    {IDC_REF_ARP, CtlKind::Static, 0, 50, 166, 104, 26, kAnchorTopWide},
    {IDC_REF_ARP_EDIT, CtlKind::Button, IDS_EDIT_ELLIPSIS, 158, 166, 34, 12, kTopRight},
    {IDC_REF_POS_LABEL, CtlKind::Static, IDS_POSITION_LABEL, 8, 196, 40, 8},
    {IDC_REF_POS, CtlKind::Static, 0, 50, 194, 104, 26, kAnchorTopWide},
    {IDC_REF_POS_EDIT, CtlKind::Button, IDS_EDIT_ELLIPSIS, 158, 194, 34, 12, kTopRight},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 46, 228, 50, 14, uikit::kAnchorBottomCentre},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 104, 228, 50, 14, uikit::kAnchorBottomCentre},
};
constexpr DLG_TEMPLATE kLayout{IDD_AUTO_SEED, 200, 246, kItems};
const CLayoutRegistration kRegistered("CAutoSeedDlg", {{&kLayout}});

}  // namespace

struct CAutoSeedDlg::COORD_ROW {
    unsigned textId, buttonId;
    POS_GEO VALUES::*position;
};

namespace {
constexpr CAutoSeedDlg::COORD_ROW kCoordRows[] = {
    {IDC_POINT_ARP, IDC_POINT_ARP_EDIT, &CAutoSeedDlg::VALUES::pointArp},
    {IDC_POINT_POS, IDC_POINT_POS_EDIT, &CAutoSeedDlg::VALUES::pointPos},
    {IDC_REF_ARP, IDC_REF_ARP_EDIT, &CAutoSeedDlg::VALUES::referenceArp},
    {IDC_REF_POS, IDC_REF_POS_EDIT, &CAutoSeedDlg::VALUES::referencePos},
};

// The receiver keeps each position in both forms; the window reads and writes the form its
// editor works in, so what the person saw is what is stored.
POS_GEO ReadPosition(CoordEditor editor, const std::function<POS_GEO()>& geo,
                     const std::function<devio::vok::POS_XYZ()>& xyz) {
    return editor == CoordEditor::Geo ? geo() : wgs84::ToGeo(xyz());
}
}  // namespace

CAutoSeedDlg::CAutoSeedDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), IDD_AUTO_SEED, parent, L"CAutoSeedDlg"),
      m_controls(CLayoutFactory::Build(this, kLayout)),
      m_editor(EditorUnlessGeodetic(CFenkGlobalSettings::Ref().GetCoordSystem())) {
    setWindowTitle(LoadResString(IDS_AUTO_SEED).ToQString());
    for (const COORD_ROW& row : kCoordRows) {
        m_controls.Get<QLabel>(row.textId)->setWordWrap(true);
        connect(m_controls.Get<QPushButton>(row.buttonId), &QPushButton::clicked, this, [this, &row] { EditPosition(row); });
    }
    connect(m_controls.Get<QCheckBox>(IDC_AVERAGING), &QCheckBox::toggled, this, [this] { UpdateControls(); });
}

CAutoSeedDlg::~CAutoSeedDlg() { DestroyWindow(); }

bool CAutoSeedDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    RunJob([editor = m_editor](CJobContext& job) { return Read(job.Mate(), editor); },
           [this](const JOB_RESULT<VALUES>& r) {
               if (!r.Ok()) return;
               m_values = *r.value;
               PutValues();
           });
    return true;
}

CAutoSeedDlg::VALUES CAutoSeedDlg::Read(devio::CVokReceiverMate& mate, CoordEditor editor) {
    VALUES v;
    v.averaging = mate.Get(devio::par::RefAvgMode);
    v.check = mate.Get(devio::par::RefAvgCheck);
    v.span = mate.Get(devio::par::RefAvgSpan);
    v.limit = mate.Get(devio::par::RefAvgLimit);
    v.pointId = mate.Get(devio::par::RefAvgCurPointId);
    v.pointName = mate.Get(devio::par::RefAvgCurPointName);
    struct SOURCE { const wchar_t* which; POS_GEO VALUES::*point; POS_GEO VALUES::*reference; };
    for (const SOURCE& s : {SOURCE{L"arp", &VALUES::pointArp, &VALUES::referenceArp},
                            SOURCE{L"pos", &VALUES::pointPos, &VALUES::referencePos}}) {
        v.*s.point = ReadPosition(editor, [&] { return mate.GetCurrentPointGeo(s.which); },
                                  [&] { return mate.GetCurrentPointXyz(s.which); });
        v.*s.reference = ReadPosition(editor, [&] { return mate.GetReferenceGeo(s.which); },
                                      [&] { return mate.GetReferenceXyz(s.which); });
    }
    return v;
}

void CAutoSeedDlg::Write(devio::CVokReceiverMate& mate, CoordEditor editor, const VALUES& v) {
    mate.Set(devio::par::RefAvgMode, v.averaging);
    mate.Set(devio::par::RefAvgCheck, v.check);
    mate.Set(devio::par::RefAvgSpan, v.span);
    mate.Set(devio::par::RefAvgLimit, v.limit);
    mate.Set(devio::par::RefAvgCurPointId, v.pointId);
    mate.Set(devio::par::RefAvgCurPointName, v.pointName);
    struct TARGET { const wchar_t* which; const POS_GEO& point; const POS_GEO& reference; };
    for (const TARGET& t : {TARGET{L"arp", v.pointArp, v.referenceArp}, TARGET{L"pos", v.pointPos, v.referencePos}}) {
        if (editor == CoordEditor::Geo) {
            mate.SetCurrentPointPosition(t.which, t.point);
            mate.SetReferencePosition(t.which, t.reference);
        } else {
            mate.SetCurrentPointPosition(t.which, wgs84::ToXyz(t.point));
            mate.SetReferencePosition(t.which, wgs84::ToXyz(t.reference));
        }
    }
}

void CAutoSeedDlg::PutValues() {
    const VALUES& v = *m_values;
    m_controls.Get<QCheckBox>(IDC_AVERAGING)->setChecked(v.averaging);
    m_controls.Get<QCheckBox>(IDC_CHECK)->setChecked(v.check);
    m_controls.Get<QLineEdit>(IDC_SPAN)->setText(QString::number(v.span));
    m_controls.Get<QLineEdit>(IDC_LIMIT)->setText(coordinput::Show(v.limit, 3));
    m_controls.Get<QLineEdit>(IDC_POINT_ID)->setText(QString::number(v.pointId));
    m_controls.Get<QLineEdit>(IDC_POINT_NAME)->setText(v.pointName.ToQString());
    for (const COORD_ROW& row : kCoordRows)
        m_controls.Get<QLabel>(row.textId)->setText(positionediting::Show(m_editor, v.*row.position).ToQString());
}

void CAutoSeedDlg::EditPosition(const COORD_ROW& row) {
    if (!m_values) return;
    if (!positionediting::Edit(GetReceiver(), this, m_editor, (*m_values).*row.position)) return;
    m_controls.Get<QLabel>(row.textId)->setText(positionediting::Show(m_editor, (*m_values).*row.position).ToQString());
}

void CAutoSeedDlg::UpdateControls() {
    const bool ready = m_values.has_value() && !IsBusy();
    for (const unsigned id : {unsigned{IDC_AVERAGING}, unsigned{IDC_CHECK}, unsigned{IDC_SPAN}, unsigned{IDC_LIMIT}, unsigned{IDC_POINT_ID}, unsigned{IDC_POINT_NAME},
                              unsigned{IDC_POINT_ARP_EDIT}, unsigned{IDC_POINT_POS_EDIT}, unsigned{IDC_REF_ARP_EDIT}, unsigned{IDC_REF_POS_EDIT},
                              unsigned{IDOK_BUTTON}})
        m_controls.Item(id)->setEnabled(ready);
    const bool averaging = ready && m_controls.Get<QCheckBox>(IDC_AVERAGING)->isChecked();
    for (const unsigned id : {IDC_CHECK, IDC_SPAN, IDC_LIMIT}) m_controls.Item(id)->setEnabled(averaging);
}

std::optional<CAutoSeedDlg::VALUES> CAutoSeedDlg::TakeValues() {
    VALUES v = *m_values;
    const auto span = coordinput::Take(this, m_controls.Get<QLineEdit>(IDC_SPAN), 1, kMaxSpan);
    if (!span) return std::nullopt;
    const auto limit = coordinput::Take(this, m_controls.Get<QLineEdit>(IDC_LIMIT), 0, kMaxLimit);
    if (!limit) return std::nullopt;
    const auto id = coordinput::Take(this, m_controls.Get<QLineEdit>(IDC_POINT_ID), 0, kMaxPointId);
    if (!id) return std::nullopt;
    v.averaging = m_controls.Get<QCheckBox>(IDC_AVERAGING)->isChecked();
    v.check = m_controls.Get<QCheckBox>(IDC_CHECK)->isChecked();
    v.span = static_cast<int>(*span);
    v.limit = *limit;
    v.pointId = static_cast<int>(*id);
    v.pointName = ustring::FromQString(m_controls.Get<QLineEdit>(IDC_POINT_NAME)->text().trimmed());
    return v;
}

// A refused value keeps the window open, as does a receiver that refuses a setting.
void CAutoSeedDlg::accept() {
    if (!m_values) return;
    const std::optional<VALUES> values = TakeValues();
    if (!values) return;
    RunJob([editor = m_editor, v = *values](CJobContext& job) { Write(job.Mate(), editor, v); },
           [this, values](const JOB_RESULT<void>& r) {
               if (!r.Ok()) return;
               m_values = values;
               CFenkDialog::accept();
           });
}
