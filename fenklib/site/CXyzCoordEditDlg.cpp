#include "fenklib/site/CXyzCoordEditDlg.h"

#include <QLabel>
#include <QLineEdit>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "fenklib/site/CoordInput.h"
#include "fenklib/site/Wgs84.h"

namespace {

enum : unsigned { IDC_X = 3001, IDC_Y, IDC_Z, IDC_OTHER_FORM, IDC_X_LABEL = 100, IDC_Y_LABEL, IDC_Z_LABEL };
constexpr unsigned kAxes[] = {IDC_X, IDC_Y, IDC_Z};

constexpr DLG_ITEM kItems[] = {
    {IDC_X_LABEL, CtlKind::Static, IDS_X_M, 6, 8, 30, 8},
    {IDC_X, CtlKind::RealEdit, 0, 40, 6, 114, 12, uikit::kAnchorTopWide},
    {IDC_Y_LABEL, CtlKind::Static, IDS_Y_M, 6, 24, 30, 8},
    {IDC_Y, CtlKind::RealEdit, 0, 40, 22, 114, 12, uikit::kAnchorTopWide},
    {IDC_Z_LABEL, CtlKind::Static, IDS_Z_M, 6, 40, 30, 8},
    {IDC_Z, CtlKind::RealEdit, 0, 40, 38, 114, 12, uikit::kAnchorTopWide},
    {IDC_OTHER_FORM, CtlKind::Static, 0, 6, 56, 148, 20, uikit::kAnchorTopWide},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 26, 82, 50, 14, uikit::kAnchorBottomCentre},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 84, 82, 50, 14, uikit::kAnchorBottomCentre},
};
constexpr DLG_TEMPLATE kLayout{IDD_XYZ_COORD_EDIT, 160, 100, kItems};
const CLayoutRegistration kRegistered("CXyzCoordEditDlg", {{&kLayout}});

}  // namespace

CXyzCoordEditDlg::CXyzCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_XYZ& pos)
    : CFenkDialog(std::move(receiver), IDD_XYZ_COORD_EDIT, parent, L"CXyzCoordEditDlg"),
      m_pos(pos),
      m_controls(CLayoutFactory::Build(this, kLayout)) {
    setWindowTitle(LoadResString(IDS_CARTESIAN_COORDINATES).ToQString());
    m_controls.Get<QLabel>(IDC_OTHER_FORM)->setWordWrap(true);
    for (const unsigned id : kAxes) connect(m_controls.Get<QLineEdit>(id), &QLineEdit::textChanged, this, [this] { ShowOtherForm(); });
}

CXyzCoordEditDlg::~CXyzCoordEditDlg() { DestroyWindow(); }

bool CXyzCoordEditDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    const double values[] = {m_pos.x, m_pos.y, m_pos.z};
    for (int i = 0; i < 3; ++i) m_controls.Get<QLineEdit>(kAxes[i])->setText(coordinput::Show(values[i], 4));
    ShowOtherForm();
    return true;
}

void CXyzCoordEditDlg::ShowOtherForm() {
    double values[3] = {};
    for (int i = 0; i < 3; ++i) {
        const std::optional<double> v = coordinput::Parse(m_controls.Get<QLineEdit>(kAxes[i])->text());
        if (!v) return m_controls.Get<QLabel>(IDC_OTHER_FORM)->clear();
        values[i] = *v;
    }
    m_controls.Get<QLabel>(IDC_OTHER_FORM)->setText(FormatGeoText(wgs84::ToGeo({values[0], values[1], values[2]})).ToQString());
}

void CXyzCoordEditDlg::accept() {
    double values[3] = {};
    for (int i = 0; i < 3; ++i) {
        const std::optional<double> v = coordinput::Take(this, m_controls.Get<QLineEdit>(kAxes[i]), -kMaxMetres, kMaxMetres);
        if (!v) return;
        values[i] = *v;
    }
    m_pos = {values[0], values[1], values[2]};
    CFenkDialog::accept();
}
