#include "fenklib/config/CRawMeasurementDlg.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

#include "fenklib/frame/WideLayout.h"
#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

enum : unsigned { IDC_INTERVAL_LABEL = 100, IDC_INTERVAL, IDC_CLP_STATIC, IDC_MP_GROUP, IDC_MP_CODE, IDC_MP_CARRIER, IDC_STATUS };

constexpr DLG_ITEM kItems[] = {
    {IDC_INTERVAL_LABEL, CtlKind::Static, IDS_RAW_INTERVAL_MS, 6, 8, 110, 10, uikit::kAnchorTopLeft},
    {IDC_INTERVAL, CtlKind::NumberEdit, 0, 120, 6, 60, 13, uikit::kAnchorTopLeft},
    {IDC_CLP_STATIC, CtlKind::CheckBox, IDS_RAW_CLP_STATIC, 6, 26, 200, 12, uikit::kAnchorTopWide},
    {IDC_MP_GROUP, CtlKind::Group, IDS_MULTIPATH_GROUP, 4, 44, 204, 44, uikit::kAnchorTopWide},
    {IDC_MP_CODE, CtlKind::CheckBox, IDS_MP_CODE, 12, 56, 190, 12, uikit::kAnchorTopWide},
    {IDC_MP_CARRIER, CtlKind::CheckBox, IDS_MP_CARRIER, 12, 70, 190, 12, uikit::kAnchorTopWide},
    {IDC_STATUS, CtlKind::Static, 0, 4, 94, 204, 10, uikit::kAnchorBottomWide},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 96, 108, 54, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 154, 108, 54, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_RAW_MEASUREMENT, 212, 126, kItems};
constexpr auto kWideItems = Widened(kItems);
constexpr DLG_TEMPLATE kWide{IDD_RAW_MEASUREMENT_WIDE, 212 + kWideGrow, 126, kWideItems};
const CLayoutRegistration kRegistered("CRawMeasurementDlg", {{&kNormal, &kWide}});

using RAW_SETTINGS = CRawMeasurementDlg::RAW_SETTINGS;

RAW_SETTINGS ReadRaw(devio::CVokReceiverMate& mate) {
    namespace par = devio::par;
    return {mate.Get(par::RawMsint), mate.Get(par::RawClpStatic), mate.Get(par::RawCorrCaCode), mate.Get(par::RawCorrCaCarrier)};
}

// Only what the user changed goes to the receiver.
void WriteRaw(devio::CVokReceiverMate& mate, const RAW_SETTINGS& was, const RAW_SETTINGS& now) {
    namespace par = devio::par;
    if (now.intervalMs != was.intervalMs) mate.Set(par::RawMsint, now.intervalMs);
    if (now.clpStatic != was.clpStatic) mate.Set(par::RawClpStatic, now.clpStatic);
    if (now.codeMultipath != was.codeMultipath) mate.Set(par::RawCorrCaCode, now.codeMultipath);
    if (now.carrierMultipath != was.carrierMultipath) mate.Set(par::RawCorrCaCarrier, now.carrierMultipath);
}

}  // namespace

CRawMeasurementDlg::CRawMeasurementDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkDialog(std::move(receiver), CLayoutFactory::Choose(kNormal, &kWide).number, parent, L"CRawMeasurementDlg"),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)) {
    setWindowTitle(LoadResString(IDS_RAW_MEASUREMENT).ToQString());
    m_controls.Get<QLineEdit>(IDC_INTERVAL)->setMaxLength(8);
    connect(m_controls.Get<QLineEdit>(IDC_INTERVAL), &QLineEdit::textChanged, this, [this] { UpdateControls(); });
}

CRawMeasurementDlg::~CRawMeasurementDlg() { DestroyWindow(); }

bool CRawMeasurementDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    m_controls.Get<QLabel>(IDC_STATUS)->setText(LoadResString(IDS_READING_SETTINGS).ToQString());
    RunJob([](CJobContext& job) { return ReadRaw(job.Mate()); },
           [this](const JOB_RESULT<RAW_SETTINGS>& r) {
               m_controls.Get<QLabel>(IDC_STATUS)->clear();
               if (!r.Ok()) return;
               m_read = *r.value;
               Show(*r.value);
           });
    return true;
}

void CRawMeasurementDlg::Show(const RAW_SETTINGS& s) {
    m_controls.Get<QLineEdit>(IDC_INTERVAL)->setText(QLocale().toString(s.intervalMs).remove(QLocale().groupSeparator()));
    m_controls.Get<QCheckBox>(IDC_CLP_STATIC)->setChecked(s.clpStatic);
    m_controls.Get<QCheckBox>(IDC_MP_CODE)->setChecked(s.codeMultipath);
    m_controls.Get<QCheckBox>(IDC_MP_CARRIER)->setChecked(s.carrierMultipath);
}

std::optional<RAW_SETTINGS> CRawMeasurementDlg::Shown() const {
    if (!m_read) return std::nullopt;
    bool ok = false;
    const int interval = QLocale().toInt(m_controls.Get<QLineEdit>(IDC_INTERVAL)->text(), &ok);
    if (!ok || interval <= 0) return std::nullopt;
    return RAW_SETTINGS{interval, m_controls.Get<QCheckBox>(IDC_CLP_STATIC)->isChecked(),
                        m_controls.Get<QCheckBox>(IDC_MP_CODE)->isChecked(), m_controls.Get<QCheckBox>(IDC_MP_CARRIER)->isChecked()};
}

void CRawMeasurementDlg::accept() {
    const auto now = Shown();
    if (!now) return;
    AcceptAsJob([was = *m_read, now = *now](CJobContext& job) { WriteRaw(job.Mate(), was, now); });
}

bool CRawMeasurementDlg::IsOkEnabled() const { return m_controls.Get<QPushButton>(IDOK_BUTTON)->isEnabled(); }

void CRawMeasurementDlg::UpdateControls() {
    const bool editable = !IsBusy() && m_read.has_value();
    for (const unsigned id : {IDC_INTERVAL, IDC_CLP_STATIC, IDC_MP_CODE, IDC_MP_CARRIER}) m_controls.Item(id)->setEnabled(editable);
    m_controls.Get<QPushButton>(IDOK_BUTTON)->setEnabled(editable && Shown().has_value());
}
