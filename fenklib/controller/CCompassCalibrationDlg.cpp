#include "fenklib/controller/CCompassCalibrationDlg.h"

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <tuple>
#include <utility>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/hwctl/IControllerBackend.h"

using basekit::ustring;

namespace {
using C = CCompassCalibrationDlg;
constexpr DLG_ITEM kItems[] = {
    {C::IDC_STEP, CtlKind::Static, 0, 6, 8, 228, 30, uikit::kAnchorTopWide},
    {C::IDC_PROGRESS, CtlKind::Progress, 0, 6, 42, 228, 12, uikit::kAnchorTopWide},
    {C::IDC_NEXT, CtlKind::Button, IDS_NEXT, 6, 62, 60, 14, uikit::kAnchorBottomLeft},
    {C::IDC_STORE, CtlKind::Button, IDS_STORE, 110, 62, 60, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 174, 62, 60, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kLayout{IDD_COMPASS_CALIBRATION, 240, 82, kItems};
const CLayoutRegistration kRegistered("CCompassCalibrationDlg", {{&kLayout}});

ustring Degrees(double value) { return ustring::FromQString(QLocale().toString(value, 'f', 1)); }

}  // namespace

CCompassCalibrationDlg::CCompassCalibrationDlg(QWidget* parent)
    : CFenkDialog({}, IDD_COMPASS_CALIBRATION, parent, L"CCompassCalibrationDlg"), m_controls(CLayoutFactory::Build(this, kLayout)) {
    setWindowTitle(LoadResString(IDS_COMPASS_CALIBRATION).ToQString());
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setRange(0, static_cast<int>(CompassCalibration::Targets().size()));
    connect(m_controls.Get<QPushButton>(IDC_NEXT), &QPushButton::clicked, this, [this] { Next(); });
    connect(m_controls.Get<QPushButton>(IDC_STORE), &QPushButton::clicked, this, [this] { Store(); });
}

CCompassCalibrationDlg::~CCompassCalibrationDlg() { DestroyWindow(); }

// A compass that cannot be asked is shown as none.
bool CCompassCalibrationDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    RunJob(
        [](CJobContext&) {
            const auto compass = hwctl::CreateBackend();
            const bool present = compass->HasDevice("compass");
            return std::pair{present, present ? compass->HeadingCorrection() : 0.0};
        },
        [this](const JOB_RESULT<std::pair<bool, double>>& r) {
            if (r.Ok()) std::tie(m_present, m_previousCorrection) = *r.value;
            ShowStep();
        });
    return true;
}

// The readings already carry the correction stored before; the new one replaces it. A failed
// reading is shown and the step stays to be repeated.
void CCompassCalibrationDlg::Next() {
    if (m_calibration.Complete()) return;
    RunJob([](CJobContext&) { return hwctl::CreateBackend()->ReadHeading(); },
           [this](const JOB_RESULT<double>& r) {
               if (r.Ok()) m_calibration.Add(*r.value);
               ShowStep();
           });
}

void CCompassCalibrationDlg::Store() {
    const double correction = AngleDifference(m_previousCorrection + m_calibration.Correction(), 0);
    RunJob([correction](CJobContext&) { hwctl::CreateBackend()->StoreHeadingCorrection(correction); },
           [this](const JOB_RESULT<void>& r) {
               if (r.Ok()) EndDialog(IDOK_BUTTON);
           });
}

void CCompassCalibrationDlg::ShowStep() {
    ustring text;
    if (!m_present) text = LoadResString(IDS_NO_COMPASS);
    else if (!m_calibration.Complete())
        text = ustring::Format(LoadResString(IDS_CALIBRATION_STEP).c_str(),
                               Degrees(CompassCalibration::Targets()[m_calibration.Taken()]));
    else
        text = ustring::Format(LoadResString(IDS_CALIBRATION_RESULT).c_str(), Degrees(m_calibration.Correction()),
                               Degrees(m_calibration.Spread()));
    m_controls.Get<QLabel>(IDC_STEP)->setText(text.ToQString());
    m_controls.Get<QLabel>(IDC_STEP)->setWordWrap(true);
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setValue(static_cast<int>(m_calibration.Taken()));
    UpdateControls();
}

void CCompassCalibrationDlg::UpdateControls() {
    const bool usable = m_present && !IsBusy();
    m_controls.Item(IDC_NEXT)->setEnabled(usable && !m_calibration.Complete());
    m_controls.Item(IDC_STORE)->setEnabled(usable && m_calibration.Complete());
}
