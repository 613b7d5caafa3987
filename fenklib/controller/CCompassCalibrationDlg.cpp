#include "fenklib/controller/CCompassCalibrationDlg.h"

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"
#include "platform/basekit/CStdException.h"
#include "platform/hwctl/IControllerBackend.h"
#include "platform/uikit/CMessageBoxService.h"

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

template <typename F>
bool WithCompass(QWidget* owner, F&& work) {
    try {
        const auto backend = hwctl::CreateBackend();
        work(*backend);
        return true;
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(owner, e);
        return false;
    }
}
}  // namespace

CCompassCalibrationDlg::CCompassCalibrationDlg(QWidget* parent)
    : CResizableDialog(parent, L"CCompassCalibrationDlg"), m_controls(CLayoutFactory::Build(this, kLayout)) {
    setWindowTitle(LoadResString(IDS_COMPASS_CALIBRATION).ToQString());
    m_controls.Get<QProgressBar>(IDC_PROGRESS)->setRange(0, static_cast<int>(CompassCalibration::Targets().size()));
    connect(m_controls.Get<QPushButton>(IDC_NEXT), &QPushButton::clicked, this, [this] { Next(); });
    connect(m_controls.Get<QPushButton>(IDC_STORE), &QPushButton::clicked, this, [this] { Store(); });
}

bool CCompassCalibrationDlg::OnInitDialog() {
    WithCompass(this, [this](hwctl::IControllerBackend& compass) {
        m_present = compass.HasDevice("compass");
        m_previousCorrection = m_present ? compass.HeadingCorrection() : 0;
    });
    ShowStep();
    return CResizableDialog::OnInitDialog();
}

// The readings already carry the correction stored before; the new one replaces it.
void CCompassCalibrationDlg::Next() {
    if (m_calibration.Complete()) return;
    WithCompass(this, [this](hwctl::IControllerBackend& compass) { m_calibration.Add(compass.ReadHeading()); });
    ShowStep();
}

void CCompassCalibrationDlg::Store() {
    const double correction = AngleDifference(m_previousCorrection + m_calibration.Correction(), 0);
    if (WithCompass(this, [correction](hwctl::IControllerBackend& compass) { compass.StoreHeadingCorrection(correction); }))
        EndDialog(IDOK_BUTTON);
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
    m_controls.Item(IDC_NEXT)->setEnabled(m_present && !m_calibration.Complete());
    m_controls.Item(IDC_STORE)->setEnabled(m_present && m_calibration.Complete());
}
