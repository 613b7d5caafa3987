#include "fenklib/ports/CReceiverPortGeneralPP.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/frame/RangeValidation.h"
#include "fenklib/msglist/CMessageListDlg.h"
#include "fenklib/msglist/MessageViews.h"
#include "fenklib/ports/OutputMode.h"
#include "fenklib/ports/SerialValues.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

namespace par = devio::par;
namespace vok = devio::vok;
using P = CReceiverPortGeneralPP;
constexpr unsigned IDC_LABEL = 0xFFFF;
constexpr uikit::ANCHOR kWide = uikit::kAnchorTopWide;
constexpr double kPeriodMin = 0.0, kPeriodMax = 86400.0;

constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_INPUT_MODE, 7, 7, 196, 9},
    {P::IDC_IMODE, CtlKind::DropList, 0, 7, 17, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_OUTPUT_MODE, 7, 36, 196, 9},
    {P::IDC_OUTPUT_MODE, CtlKind::DropList, 0, 7, 46, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_PERIOD_S, 7, 65, 196, 9},
    {P::IDC_PERIOD, CtlKind::RealEdit, 0, 7, 75, 196, 14, kWide},
    {P::IDC_MESSAGES, CtlKind::Button, IDS_MESSAGES, 133, 96, 70, 16, uikit::kAnchorTopRight},
    {P::IDC_LOAD, CtlKind::Static, 0, 7, 116, 196, 10, kWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_INPUT_MODE, 7, 9, 100, 9},
    {P::IDC_IMODE, CtlKind::DropList, 0, 110, 7, 193, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_OUTPUT_MODE, 7, 27, 100, 9},
    {P::IDC_OUTPUT_MODE, CtlKind::DropList, 0, 110, 25, 193, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_PERIOD_S, 7, 45, 100, 9},
    {P::IDC_PERIOD, CtlKind::RealEdit, 0, 110, 43, 193, 14, kWide},
    {P::IDC_MESSAGES, CtlKind::Button, IDS_MESSAGES, 233, 64, 70, 16, uikit::kAnchorTopRight},
    {P::IDC_LOAD, CtlKind::Static, 0, 7, 84, 296, 10, kWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_PORT_GENERAL, 210, 132, kNormalItems};
constexpr DLG_TEMPLATE kWideLayout{IDD_PORT_GENERAL_WIDE, 310, 100, kWideItems};
const CLayoutRegistration kRegistered("CReceiverPortGeneralPP", {{&kNormal, &kWideLayout}});

}  // namespace

CReceiverPortGeneralPP::CReceiverPortGeneralPP(basekit::CSmartPtr<devio::IReceiver> receiver, vok::EDev port)
    : CReceiverPortBasePP(std::move(receiver), port, CLayoutFactory::Choose(kNormal, &kWideLayout).number,
                          LoadResString(IDS_GENERAL)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWideLayout)) {
    auto* outputMode = m_controls.Get<QComboBox>(IDC_OUTPUT_MODE);
    connect(outputMode, &QComboBox::activated, this, [this] {
        SetModified();
        UpdateControls();
        ShowLoad();
    });
    connect(m_controls.Get<QComboBox>(IDC_IMODE), &QComboBox::activated, this, [this] { SetModified(); });
    connect(m_controls.Get<QLineEdit>(IDC_PERIOD), &QLineEdit::textEdited, this, [this] {
        m_periodEdited = true;
        SetModified();
        ShowLoad();
    });
    connect(m_controls.Get<QPushButton>(IDC_MESSAGES), &QPushButton::clicked, this, [this] { OnMessages(); });
}

CReceiverPortGeneralPP::~CReceiverPortGeneralPP() { DestroyWindow(); }

bool CReceiverPortGeneralPP::OnInitDialog() {
    CReceiverPortBasePP::OnInitDialog();
    FillOutputMode();
    RunJob([port = m_port](CJobContext& job) { return Read(job.Mate(), port); },
           [this](const JOB_RESULT<READING>& r) {
               if (r.Ok()) Show(*r.value);
           });
    return true;
}

CReceiverPortGeneralPP::READING CReceiverPortGeneralPP::Read(devio::CVokReceiverMate& mate, vok::EDev port) {
    READING r;
    const auto attempt = [&r](auto&& read) {
        try {
            read();
        } catch (const basekit::CStdException&) {
            if (r.firstError.IsEmpty()) r.firstError.Capture();
        }
    };
    attempt([&] { r.imode = mate.GetMember(par::PortIMode, port); });
    attempt([&] { r.messages = mate.GetPortMessages(port); });
    attempt([&] { r.ownPort = mate.GetCurrentTerminal() == port; });
    r.lineRate = ReadLineRate(mate, port);
    return r;
}

void CReceiverPortGeneralPP::Show(const READING& reading) {
    m_read = true;
    m_ownPort = reading.ownPort;
    m_lineRate = reading.lineRate;
    m_messagesKnown = reading.messages.has_value();
    m_messages = reading.messages.value_or(fenkmsg::MessageList{});
    auto* modes = m_controls.Get<QComboBox>(IDC_IMODE);
    modes->clear();
    for (int i = 0; i < vok::MemberCount<vok::EIMode>(); ++i)
        modes->addItem(vok::ToKeyword(static_cast<vok::EIMode>(i)).ToQString(), i);
    modes->setCurrentIndex(reading.imode ? modes->findData(static_cast<int>(*reading.imode)) : -1);
    FillOutputMode();
    UpdateControls();
    ShowLoad();
    if (reading.firstError.IsEmpty()) return;
    MarkFailed();
    try {
        reading.firstError.Rethrow();
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(this, e);
    }
}

void CReceiverPortGeneralPP::FillOutputMode() {
    auto* box = m_controls.Get<QComboBox>(IDC_OUTPUT_MODE);
    box->clear();
    int selected = -1;
    box->addItem(LoadResString(IDS_OUTPUT_MODE_NONE).ToQString(), static_cast<int>(EOutputMode::None));
    if (m_messagesKnown && m_messages.empty()) selected = 0;
    box->addItem(LoadResString(IDS_OUTPUT_MODE_USER_DEFINED).ToQString(), static_cast<int>(EOutputMode::UserDefined));
    for (const fenkmsg::MESSAGE_SET& set : fenkmsg::PredefinedMessageSets()) {
        box->addItem(set.name.ToQString(), static_cast<int>(EOutputMode::NamedSet));
        if (!m_messagesKnown) continue;
        const SET_MATCH match = MatchMessageSet(set.messages, m_messages);
        if (!match.matches) continue;
        selected = box->count() - 1;
        if (match.period) m_period = *match.period;
    }
    // An output list that could not be read matches no mode: nothing is offered as if it were.
    box->setCurrentIndex(selected < 0 && m_messagesKnown ? 1 : selected);
    // The receiver's number, shown in the reader's own notation.
    m_controls.Get<QLineEdit>(IDC_PERIOD)->setText(QLocale().toString(m_period));
    m_periodEdited = false;
}

// -1 while no output mode is selected.
int CReceiverPortGeneralPP::OutputModeData() const {
    const auto* box = m_controls.Get<QComboBox>(IDC_OUTPUT_MODE);
    return box->currentIndex() < 0 ? -1 : box->currentData().toInt();
}

void CReceiverPortGeneralPP::UpdateControls() {
    m_controls.Item(IDC_IMODE)->setEnabled(m_read && !IsBusy() && !m_ownPort);
    m_controls.Item(IDC_PERIOD)->setEnabled(OutputModeData() == static_cast<int>(EOutputMode::NamedSet));
}

bool CReceiverPortGeneralPP::ApplyOutputMode() {
    if (m_periodEdited && !ValidateRange(this, m_controls.Get<QLineEdit>(IDC_PERIOD), kPeriodMin, kPeriodMax, m_period))
        return false;
    const int mode = OutputModeData();
    if (mode < 0) return true;
    switch (static_cast<EOutputMode>(mode)) {
    case EOutputMode::None:
        m_messages.clear();
        m_messagesKnown = true;
        break;
    case EOutputMode::NamedSet: {
        const basekit::ustring name = basekit::ustring::FromQString(m_controls.Get<QComboBox>(IDC_OUTPUT_MODE)->currentText());
        for (const fenkmsg::MESSAGE_SET& set : fenkmsg::PredefinedMessageSets())
            if (set.name == name) {
                m_messages = ExpandMessageSet(set.messages, m_period);
                m_messagesKnown = true;
                break;
            }
        break;
    }
    case EOutputMode::UserDefined:
        break;
    }
    return true;
}

void CReceiverPortGeneralPP::OnMessages() {
    if (!ApplyOutputMode()) return;
    CMessageListDlg dialog(m_receiver, this, m_messages);
    dialog.SetLineRate(m_lineRate);   // the load figure on this port's own line
    if (dialog.DoModal() == 1) {      // 2: the user cancelled
        m_messagesKnown = true;       // the list is now the user's own
        FillOutputMode();
        SetModified();
        UpdateControls();
        ShowLoad();
    }
}

// What Apply would write, without touching the working list: the period as it is being typed.
fenkmsg::MessageList CReceiverPortGeneralPP::ChosenList() const {
    const int mode = OutputModeData();
    if (mode < 0) return m_messages;
    switch (static_cast<EOutputMode>(mode)) {
    case EOutputMode::None:
        return {};
    case EOutputMode::NamedSet: {
        bool ok = m_periodEdited;
        const double period = ok ? QLocale().toDouble(m_controls.Get<QLineEdit>(IDC_PERIOD)->text(), &ok) : m_period;
        const basekit::ustring name = basekit::ustring::FromQString(m_controls.Get<QComboBox>(IDC_OUTPUT_MODE)->currentText());
        for (const fenkmsg::MESSAGE_SET& set : fenkmsg::PredefinedMessageSets())
            if (set.name == name) return ExpandMessageSet(set.messages, ok ? period : m_period);
        return m_messages;
    }
    case EOutputMode::UserDefined:
        break;
    }
    return m_messages;
}

void CReceiverPortGeneralPP::ShowLoad() { fenkmsg::ShowPortLoad(m_controls.Get<QLabel>(IDC_LOAD), ChosenList(), m_lineRate); }

// The port's own line rate; 0 for a port that has none (the receiver refuses the setting).
int CReceiverPortGeneralPP::ReadLineRate(devio::CVokReceiverMate& mate, vok::EDev port) {
    try {
        const std::optional<vok::EBaudRate> rate = mate.GetMember(par::PortRate, port);
        SERIAL_VALUES values;
        values.rate = rate;
        return rate ? static_cast<int>(LineOf(values).baudRate) : 0;
    } catch (const basekit::CStdException&) {   // the load figure only: no reason to trouble anyone
        return 0;
    }
}

// Writes only what was read or what the user chose: a reading that failed is never replaced
// by a guess (an empty output list would wipe the port's output).
bool CReceiverPortGeneralPP::OnApply() {
    if (IsBusy()) return false;
    if (!m_read) return true;
    if (!ApplyOutputMode()) return false;
    const int imode = m_controls.Get<QComboBox>(IDC_IMODE)->currentIndex();
    return WithReceiver([&](devio::CVokReceiverMate& mate) {
        if (imode >= 0) mate.Set(par::PortIMode, static_cast<vok::EIMode>(imode), m_port);
        if (m_messagesKnown) mate.SetPortMessages(m_port, m_messages);
    });
}
