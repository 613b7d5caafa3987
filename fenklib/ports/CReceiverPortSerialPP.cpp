#include "fenklib/ports/CReceiverPortSerialPP.h"

#include <QCheckBox>
#include <QComboBox>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/ports/OwnPortChange.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

namespace par = devio::par;
namespace vok = devio::vok;
using P = CReceiverPortSerialPP;
constexpr unsigned IDC_LABEL = 0xFFFF;
constexpr uikit::ANCHOR kWide = uikit::kAnchorTopWide;

constexpr DLG_ITEM kNormalItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_BAUD_RATE, 7, 7, 196, 9},
    {P::IDC_BAUD_RATE, CtlKind::DropList, 0, 7, 17, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_BYTE_SIZE, 7, 35, 196, 9},
    {P::IDC_BYTE_SIZE, CtlKind::DropList, 0, 7, 45, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_STOP_BITS, 7, 63, 196, 9},
    {P::IDC_STOP_BITS, CtlKind::DropList, 0, 7, 73, 196, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_PARITY, 7, 91, 196, 9},
    {P::IDC_PARITY, CtlKind::DropList, 0, 7, 101, 196, 14, kWide},
    {P::IDC_RTS_CTS, CtlKind::CheckBox, IDS_RTS_CTS, 7, 122, 196, 12, kWide},
};
constexpr DLG_ITEM kWideItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_BAUD_RATE, 7, 9, 100, 9},
    {P::IDC_BAUD_RATE, CtlKind::DropList, 0, 110, 7, 193, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_BYTE_SIZE, 7, 27, 100, 9},
    {P::IDC_BYTE_SIZE, CtlKind::DropList, 0, 110, 25, 193, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_STOP_BITS, 7, 45, 100, 9},
    {P::IDC_STOP_BITS, CtlKind::DropList, 0, 110, 43, 193, 14, kWide},
    {IDC_LABEL, CtlKind::Static, IDS_PARITY, 7, 63, 100, 9},
    {P::IDC_PARITY, CtlKind::DropList, 0, 110, 61, 193, 14, kWide},
    {P::IDC_RTS_CTS, CtlKind::CheckBox, IDS_RTS_CTS, 110, 80, 193, 12, kWide},
};
constexpr DLG_TEMPLATE kNormal{IDD_PORT_SERIAL, 210, 140, kNormalItems};
constexpr DLG_TEMPLATE kWideLayout{IDD_PORT_SERIAL_WIDE, 310, 100, kWideItems};
const CLayoutRegistration kRegistered("CReceiverPortSerialPP", {{&kNormal, &kWideLayout}});

// Every keyword of a table in table order, each item carrying its value; the current one chosen.
template <typename E>
void FillChoice(QComboBox* box, std::optional<E> current) {
    box->clear();
    for (int i = 0; i < vok::MemberCount<E>(); ++i) box->addItem(vok::ToKeyword(static_cast<E>(i)).ToQString(), i);
    box->setCurrentIndex(current ? box->findData(static_cast<int>(*current)) : -1);
}

template <typename E>
E ChosenOr(const QComboBox* box, E fallback) {
    return box->currentIndex() < 0 ? fallback : static_cast<E>(box->currentData().toInt());
}

}  // namespace

CReceiverPortSerialPP::CReceiverPortSerialPP(basekit::CSmartPtr<devio::IReceiver> receiver, vok::EDev port,
                                             std::uint8_t* portChanged)
    : CReceiverPortBasePP(std::move(receiver), port, CLayoutFactory::Choose(kNormal, &kWideLayout).number,
                          LoadResString(IDS_PORT_GROUP_SERIAL)),
      m_controls(CLayoutFactory::Build(this, kNormal, &kWideLayout)),
      m_portChanged(portChanged) {
    for (const unsigned id : {IDC_BAUD_RATE, IDC_BYTE_SIZE, IDC_STOP_BITS, IDC_PARITY})
        connect(m_controls.Get<QComboBox>(id), &QComboBox::activated, this, [this] { SetModified(); });
    connect(m_controls.Get<QCheckBox>(IDC_RTS_CTS), &QCheckBox::clicked, this, [this] { SetModified(); });
}

CReceiverPortSerialPP::~CReceiverPortSerialPP() { DestroyWindow(); }

bool CReceiverPortSerialPP::OnInitDialog() {
    CReceiverPortBasePP::OnInitDialog();
    ShowValues();
    RunJob([port = m_port](CJobContext& job) { return Read(job.Mate(), port); },
           [this](const JOB_RESULT<READING>& r) {
               if (!r.Ok()) return;
               m_read = r.value->values;
               m_readDone = true;
               ShowValues();
               if (r.value->firstError.IsEmpty()) return;
               MarkFailed();
               try {
                   r.value->firstError.Rethrow();
               } catch (const basekit::CStdException& e) {
                   uikit::CMessageBoxService::ReportError(this, e);
               }
           });
    return true;
}

// Each setting is read on its own: one the receiver refuses leaves the others shown.
CReceiverPortSerialPP::READING CReceiverPortSerialPP::Read(devio::CVokReceiverMate& mate, vok::EDev port) {
    READING r;
    const auto attempt = [&r](auto&& read) {
        try {
            read();
        } catch (const basekit::CStdException&) {
            if (r.firstError.IsEmpty()) r.firstError.Capture();
        }
    };
    attempt([&] { r.values.rate = mate.GetMember(par::PortRate, port); });
    attempt([&] { r.values.rts = mate.GetMember(par::PortRtsCts, port); });
    attempt([&] { r.values.stops = mate.GetMember(par::PortStops, port); });
    attempt([&] { r.values.parity = mate.GetMember(par::PortParity, port); });
    attempt([&] { r.values.bits = mate.GetMember(par::PortBits, port); });
    return r;
}

void CReceiverPortSerialPP::ShowValues() {
    FillChoice(m_controls.Get<QComboBox>(IDC_BAUD_RATE), m_read.rate);
    FillChoice(m_controls.Get<QComboBox>(IDC_BYTE_SIZE), m_read.bits);
    FillChoice(m_controls.Get<QComboBox>(IDC_STOP_BITS), m_read.stops);
    FillChoice(m_controls.Get<QComboBox>(IDC_PARITY), m_read.parity);
    m_controls.Get<QCheckBox>(IDC_RTS_CTS)->setChecked(m_read.rts == vok::RTS_ON);
}

CReceiverPortSerialPP::SERIAL_VALUES CReceiverPortSerialPP::ChosenValues() const {
    SERIAL_VALUES v;
    v.rate = ChosenOr(m_controls.Get<QComboBox>(IDC_BAUD_RATE), vok::BAUD_115200);
    v.bits = ChosenOr(m_controls.Get<QComboBox>(IDC_BYTE_SIZE), vok::BITS_8);
    v.stops = ChosenOr(m_controls.Get<QComboBox>(IDC_STOP_BITS), vok::STOPS_1);
    v.parity = ChosenOr(m_controls.Get<QComboBox>(IDC_PARITY), vok::PARITY_N);
    v.rts = m_controls.Get<QCheckBox>(IDC_RTS_CTS)->isChecked() ? vok::RTS_ON : vok::RTS_OFF;
    return v;
}

// Only a setting that was read can have been changed: one the receiver did not give is not
// compared (its default would count as a change and reconnect the host for nothing).
bool CReceiverPortSerialPP::Changed(const SERIAL_VALUES& read, const SERIAL_VALUES& chosen) {
    const auto differs = [](const auto& was, const auto& now) { return was.has_value() && was != now; };
    return differs(read.rate, chosen.rate) || differs(read.rts, chosen.rts) || differs(read.stops, chosen.stops) ||
           differs(read.parity, chosen.parity) || differs(read.bits, chosen.bits);
}

// Sent on every Apply, changed or not: the receiver may have been changed from elsewhere. Whose
// port it is is asked afterwards; when the controller's own port has switched, that question
// goes unanswered at the old settings, and an unanswered question after a change is taken as
// the answer: the host must follow the port.
bool CReceiverPortSerialPP::OnApply() {
    if (IsBusy()) return false;
    const SERIAL_VALUES chosen = ChosenValues();
    const bool changed = m_readDone && Changed(m_read, chosen);
    return WithReceiver([&](devio::CVokReceiverMate& mate) {
        mate.SetSerialParameters(m_port, *chosen.rate, *chosen.rts, *chosen.stops, *chosen.parity, *chosen.bits);
        bool ownPort = false;
        try {
            ownPort = mate.GetCurrentTerminal() == m_port;
        } catch (const basekit::CStdException&) {
            if (!changed) throw;
            ownPort = true;
        }
        if (!ownPort || !changed) return;
        RecordOwnPortChange({m_port, m_read, chosen});
        if (m_portChanged) *m_portChanged = 1;
    });
}
