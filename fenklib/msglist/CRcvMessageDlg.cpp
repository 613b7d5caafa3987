#include "fenklib/msglist/CRcvMessageDlg.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/frame/RangeValidation.h"
#include "fenklib/msglist/CRcvMessageListDlg.h"
#include "fenklib/msglist/MessageRegistry.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;

namespace {
enum : unsigned { IDC_SCHEDULE = 200, IDC_FLAGS_GROUP, IDC_NAME_LABEL, IDC_PERIOD_LABEL, IDC_PHASE_LABEL, IDC_COUNT_LABEL };
constexpr unsigned kFlagTexts[] = {IDS_FLAG_OUT,     IDS_FLAG_CHANGE, IDS_FLAG_OUT_ON_ADD, IDS_FLAG_NOTENA,
                                   IDS_FLAG_FIX_PER, IDS_FLAG_FIX_PH, IDS_FLAG_FIX_CNT,    IDS_FLAG_FIX_FL};
constexpr unsigned F0 = CRcvMessageDlg::IDC_FLAG0;

constexpr DLG_ITEM kNormalItems[] = {
    {IDC_NAME_LABEL, CtlKind::Static, IDS_MESSAGE_LABEL, 4, 6, 50, 10},
    {CRcvMessageDlg::IDC_NAME, CtlKind::Edit, 0, 4, 18, 150, 13, uikit::kAnchorTopWide},
    {CRcvMessageDlg::IDC_BROWSE, CtlKind::Button, IDS_BROWSE, 158, 18, 18, 13, uikit::kAnchorTopRight},
    {IDC_SCHEDULE, CtlKind::Group, IDS_SCHEDULE_GROUP, 4, 36, 172, 60, uikit::kAnchorTopWide},
    {IDC_PERIOD_LABEL, CtlKind::Static, IDS_PERIOD_S, 10, 48, 60, 10},
    {CRcvMessageDlg::IDC_PERIOD, CtlKind::RealEdit, 0, 80, 46, 90, 13, uikit::kAnchorTopWide},
    {IDC_PHASE_LABEL, CtlKind::Static, IDS_PHASE_S, 10, 63, 60, 10},
    {CRcvMessageDlg::IDC_PHASE, CtlKind::RealEdit, 0, 80, 61, 90, 13, uikit::kAnchorTopWide},
    {IDC_COUNT_LABEL, CtlKind::Static, IDS_COUNT, 10, 78, 60, 10},
    {CRcvMessageDlg::IDC_COUNT, CtlKind::NumberEdit, 0, 80, 76, 90, 13, uikit::kAnchorTopWide},
    {IDC_FLAGS_GROUP, CtlKind::Group, IDS_FLAGS, 4, 100, 172, 62, uikit::kAnchorTopWide},
    {F0 + 0, CtlKind::CheckBox, IDS_FLAG_OUT, 10, 112, 78, 10},
    {F0 + 1, CtlKind::CheckBox, IDS_FLAG_CHANGE, 92, 112, 78, 10},
    {F0 + 2, CtlKind::CheckBox, IDS_FLAG_OUT_ON_ADD, 10, 124, 78, 10},
    {F0 + 3, CtlKind::CheckBox, IDS_FLAG_NOTENA, 92, 124, 78, 10},
    {F0 + 4, CtlKind::CheckBox, IDS_FLAG_FIX_PER, 10, 136, 78, 10},
    {F0 + 5, CtlKind::CheckBox, IDS_FLAG_FIX_PH, 92, 136, 78, 10},
    {F0 + 6, CtlKind::CheckBox, IDS_FLAG_FIX_CNT, 10, 148, 78, 10},
    {F0 + 7, CtlKind::CheckBox, IDS_FLAG_FIX_FL, 92, 148, 78, 10},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 70, 168, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 126, 168, 50, 14, uikit::kAnchorBottomRight},
};
// Wide: the schedule and the flags side by side.
constexpr DLG_ITEM kWideItems[] = {
    {IDC_NAME_LABEL, CtlKind::Static, IDS_MESSAGE_LABEL, 4, 6, 50, 10},
    {CRcvMessageDlg::IDC_NAME, CtlKind::Edit, 0, 56, 4, 300, 13, uikit::kAnchorTopWide},
    {CRcvMessageDlg::IDC_BROWSE, CtlKind::Button, IDS_BROWSE, 360, 4, 18, 13, uikit::kAnchorTopRight},
    {IDC_SCHEDULE, CtlKind::Group, IDS_SCHEDULE_GROUP, 4, 22, 180, 60},
    {IDC_PERIOD_LABEL, CtlKind::Static, IDS_PERIOD_S, 10, 34, 60, 10},
    {CRcvMessageDlg::IDC_PERIOD, CtlKind::RealEdit, 0, 80, 32, 98, 13},
    {IDC_PHASE_LABEL, CtlKind::Static, IDS_PHASE_S, 10, 49, 60, 10},
    {CRcvMessageDlg::IDC_PHASE, CtlKind::RealEdit, 0, 80, 47, 98, 13},
    {IDC_COUNT_LABEL, CtlKind::Static, IDS_COUNT, 10, 64, 60, 10},
    {CRcvMessageDlg::IDC_COUNT, CtlKind::NumberEdit, 0, 80, 62, 98, 13},
    {IDC_FLAGS_GROUP, CtlKind::Group, IDS_FLAGS, 190, 22, 190, 60, uikit::kAnchorTopWide},
    {F0 + 0, CtlKind::CheckBox, IDS_FLAG_OUT, 196, 32, 60, 10},
    {F0 + 1, CtlKind::CheckBox, IDS_FLAG_CHANGE, 260, 32, 54, 10},
    {F0 + 2, CtlKind::CheckBox, IDS_FLAG_OUT_ON_ADD, 314, 32, 65, 10},
    {F0 + 3, CtlKind::CheckBox, IDS_FLAG_NOTENA, 196, 46, 60, 10},
    {F0 + 4, CtlKind::CheckBox, IDS_FLAG_FIX_PER, 260, 46, 60, 10},
    {F0 + 5, CtlKind::CheckBox, IDS_FLAG_FIX_PH, 320, 46, 58, 10},
    {F0 + 6, CtlKind::CheckBox, IDS_FLAG_FIX_CNT, 196, 60, 60, 10},
    {F0 + 7, CtlKind::CheckBox, IDS_FLAG_FIX_FL, 260, 60, 60, 10},
    {IDOK_BUTTON, CtlKind::Button, IDS_OK, 274, 88, 50, 14, uikit::kAnchorBottomRight},
    {IDCANCEL_BUTTON, CtlKind::Button, IDS_CANCEL, 330, 88, 50, 14, uikit::kAnchorBottomRight},
};
constexpr DLG_TEMPLATE kNormal{IDD_RCV_MESSAGE, 180, 186, kNormalItems};
constexpr DLG_TEMPLATE kWide{IDD_RCV_MESSAGE_WIDE, 384, 106, kWideItems};
const CLayoutRegistration kRegistered("CRcvMessageDlg", {{&kNormal, &kWide}});
static_assert(std::size(kFlagTexts) == 8);

QString Number(double v) { return QLocale().toString(v, 'f', 2); }
}  // namespace

CRcvMessageDlg::CRcvMessageDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::MSG& message)
    : CFenkDialog(std::move(receiver), IDD_RCV_MESSAGE, parent, L"CRcvMessageDlg"),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWide)),
      m_message(message),
      m_name(message.name),
      m_nameGiven(!message.name.empty()) {
    setWindowTitle(LoadResString(IDS_RECEIVER_MESSAGE).ToQString());
    m_controls.Get<QLineEdit>(IDC_NAME)->setReadOnly(true);
    connect(m_controls.Get<QPushButton>(IDC_BROWSE), &QPushButton::clicked, this, [this] { OnBrowse(); });
}

CRcvMessageDlg::~CRcvMessageDlg() { DestroyWindow(); }

bool CRcvMessageDlg::OnInitDialog() {
    CFenkDialog::OnInitDialog();
    ShowName();
    m_controls.Get<QLineEdit>(IDC_PERIOD)->setText(Number(m_message.period));
    m_controls.Get<QLineEdit>(IDC_PHASE)->setText(Number(m_message.phase));
    m_controls.Get<QLineEdit>(IDC_COUNT)->setText(QLocale().toString(m_message.count));
    for (unsigned bit = 0; bit < 8; ++bit) m_controls.Get<QCheckBox>(IDC_FLAG0 + bit)->setChecked((m_message.flags >> bit) & 1u);
    UpdateControls();
    return true;
}

void CRcvMessageDlg::ShowName() {
    m_controls.Get<QLineEdit>(IDC_NAME)->setText(fenkmsg::CMessageRegistry::Instance().DisplayText(m_name, m_name).ToQString());
}

void CRcvMessageDlg::UpdateControls() {
    m_controls.Get<QPushButton>(IDC_BROWSE)->setEnabled(!m_nameGiven);
    m_controls.Get<QPushButton>(IDOK_BUTTON)->setEnabled(!m_name.empty());
}

void CRcvMessageDlg::OnBrowse() {
    ustring chosen;
    if (RunLauncher<CRcvMessageListDlg>(GetReceiver(), this, chosen) != 1) return;
    m_name = chosen;
    ShowName();
    UpdateControls();
}

void CRcvMessageDlg::accept() {
    double period = 0, phase = 0;
    int count = 0;
    if (m_name.empty() || !ValidateRange(this, m_controls.Get<QLineEdit>(IDC_PERIOD), 0.0, 86400.0, period) ||
        !ValidateRange(this, m_controls.Get<QLineEdit>(IDC_PHASE), 0.0, 86400.0, phase) ||
        !ValidateRange(this, m_controls.Get<QLineEdit>(IDC_COUNT), -256, 32767, count))
        return;
    // A number the user left as shown goes back exactly as it came: the edit shows it rounded to
    // two decimals, and a 0.025 s message must not become 0.03 s because a flag changed.
    const auto untouched = [this](unsigned id, double was) { return m_controls.Get<QLineEdit>(id)->text() == Number(was); };
    if (untouched(IDC_PERIOD, m_message.period)) period = m_message.period;
    if (untouched(IDC_PHASE, m_message.phase)) phase = m_message.phase;
    unsigned flags = 0;
    for (unsigned bit = 0; bit < 8; ++bit)
        if (m_controls.Get<QCheckBox>(IDC_FLAG0 + bit)->isChecked()) flags |= 1u << bit;
    m_message = devio::vok::MSG{m_name, period, phase, count, flags};
    CFenkDialog::accept();
}
