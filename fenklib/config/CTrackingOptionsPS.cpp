#include "fenklib/config/CTrackingOptionsPS.h"

#include <QLabel>

#include "fenklib/frame/WideLayout.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/DialogIds.h"
#include "fenklib/resources/StringIds.h"

namespace {

namespace par = devio::par;

enum : unsigned {
    IDC_LOCK_ELM = 100, IDC_L5, IDC_AJM, IDC_MP_CODE, IDC_MP_CARRIER, IDC_SBAS_LOCKS, IDC_QZSS_LOCKS,
    IDC_SBAS_FIXED = 150, IDC_SLOT_SAT = 160, IDC_SLOT_ION = 170, IDC_SLOT_INSTEAD0 = 180, IDC_SLOT_LABEL = 190,
    IDC_LABEL = 200,
};
constexpr int kSlots = 3;

constexpr DLG_ITEM kLocksItems[] = {
    {IDC_LABEL, CtlKind::Static, IDS_LOCK_ELEVATION_MASK, 6, 8, 120, 10, uikit::kAnchorTopLeft},
    {IDC_LOCK_ELM, CtlKind::NumberEdit, 0, 128, 6, 96, 13, uikit::kAnchorTopWide},
    {IDC_LABEL + 1, CtlKind::Static, IDS_ANTI_JAMMING, 6, 24, 120, 10, uikit::kAnchorTopLeft},
    {IDC_AJM, CtlKind::DropList, 0, 128, 22, 96, 13, uikit::kAnchorTopWide},
    {IDC_L5, CtlKind::CheckBox, IDS_LOCK_GPS_L5, 6, 38, 218, 12, uikit::kAnchorTopWide},
    {IDC_MP_CODE, CtlKind::CheckBox, IDS_MP_CODE, 6, 52, 218, 12, uikit::kAnchorTopWide},
    {IDC_MP_CARRIER, CtlKind::CheckBox, IDS_MP_CARRIER, 6, 66, 218, 12, uikit::kAnchorTopWide},
    {IDC_LABEL + 2, CtlKind::Static, IDS_LOCK_SBAS, 6, 84, 108, 10, uikit::kAnchorTopLeft},
    {IDC_SBAS_LOCKS, CtlKind::ListBox, 0, 6, 96, 106, 110, uikit::ANCHOR{0, 0, 0.5, 1}},
    {IDC_LABEL + 3, CtlKind::Static, IDS_LOCK_QZSS, 118, 84, 106, 10, uikit::ANCHOR{0.5, 0, 0, 0}},
    {IDC_QZSS_LOCKS, CtlKind::ListBox, 0, 118, 96, 106, 110, uikit::ANCHOR{0.5, 0, 0.5, 1}},
};
constexpr DLG_TEMPLATE kLocks{IDD_TRACKING_LOCKS, 230, 212, kLocksItems};
constexpr auto kLocksWideItems = Widened(kLocksItems);
constexpr DLG_TEMPLATE kLocksWide{IDD_TRACKING_LOCKS_WIDE, 230 + kWideGrow, 212, kLocksWideItems};

// One row per SBAS slot: its label, satellite, ionosphere use and the satellite it replaces.
#define FENK_SLOT(n)                                                                                       \
    DLG_ITEM{IDC_SLOT_LABEL + (n), CtlKind::Static, 0, 6, 40 + (n) * 16, 70, 10, uikit::kAnchorTopLeft},  \
        DLG_ITEM{IDC_SLOT_SAT + (n), CtlKind::NumberEdit, 0, 78, 38 + (n) * 16, 40, 13, uikit::kAnchorTopLeft}, \
        DLG_ITEM{IDC_SLOT_ION + (n), CtlKind::DropList, 0, 122, 38 + (n) * 16, 60, 13, uikit::kAnchorTopLeft}, \
        DLG_ITEM { IDC_SLOT_INSTEAD0 + (n), CtlKind::NumberEdit, 0, 186, 38 + (n) * 16, 40, 13, uikit::kAnchorTopLeft }

constexpr DLG_ITEM kSbasItems[] = {
    {IDC_SBAS_FIXED, CtlKind::CheckBox, IDS_SBAS_FIXED, 6, 6, 218, 12, uikit::kAnchorTopWide},
    {IDC_LABEL, CtlKind::Static, IDS_SBAS_IONO, 122, 26, 60, 10, uikit::kAnchorTopLeft},
    {IDC_LABEL + 1, CtlKind::Static, IDS_SBAS_INSTEAD0, 186, 26, 40, 10, uikit::kAnchorTopLeft},
    FENK_SLOT(0), FENK_SLOT(1), FENK_SLOT(2),
};
#undef FENK_SLOT
constexpr DLG_TEMPLATE kSbas{IDD_TRACKING_SBAS, 230, 96, kSbasItems};
constexpr auto kSbasWideItems = Widened(kSbasItems);
constexpr DLG_TEMPLATE kSbasWide{IDD_TRACKING_SBAS_WIDE, 230 + kWideGrow, 96, kSbasWideItems};
const CLayoutRegistration kRegistered("CTrackingOptionsPS", {{&kLocks, &kLocksWide}, {&kSbas, &kSbasWide}});

std::vector<PARAM_FIELD> LockFields() {
    return {
        field::Of(IDC_LOCK_ELM, par::LockElm),
        field::Choice(IDC_AJM, par::AjmMode,
                      {IDS_SYSTEM_GPS, IDS_SYSTEM_GLO, IDS_AJM_L1, IDS_AJM_L2, IDS_ANT_AUTO, IDS_OFF_TEXT, IDS_AJM_MANUAL}),
        field::GpsL5Lock(IDC_L5),
        field::Of(IDC_MP_CODE, par::RawCorrCaCode),
        field::Of(IDC_MP_CARRIER, par::RawCorrCaCarrier),
        field::SatLocks(IDC_SBAS_LOCKS, L"waas"),
        field::SatLocks(IDC_QZSS_LOCKS, L"qzss"),
    };
}

std::vector<PARAM_FIELD> SbasFields() {
    std::vector<PARAM_FIELD> fields{field::Of(IDC_SBAS_FIXED, par::WaasNumb)};
    for (int slot = 0; slot < kSlots; ++slot) {
        fields.push_back(field::Of(IDC_SLOT_SAT + slot, par::WaasSat, slot + 1));
        fields.push_back(field::Choice(IDC_SLOT_ION + slot, par::WaasIon, {IDS_IONO_0, IDS_IONO_1, IDS_IONO_2}, slot + 1));
        fields.push_back(field::Of(IDC_SLOT_INSTEAD0 + slot, par::WaasInstead0, slot + 1));
    }
    return fields;
}

}  // namespace

CTrackingOptionsPS::CTrackingOptionsPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent)
    : CFenkPropertySheet(receiver, LoadResString(IDS_TRACKING_OPTIONS), parent, L"CTrackingOptionsPS"),
      m_locks(receiver, IDS_PAGE_LOCKS, kLocks, LockFields(), &kLocksWide),
      m_sbas(receiver, IDS_PAGE_SBAS, kSbas, SbasFields(), &kSbasWide) {
    for (int slot = 0; slot < kSlots; ++slot)
        m_sbas.Controls().Get<QLabel>(IDC_SLOT_LABEL + slot)->setText(
            QString::fromStdWString(basekit::ustring::Format(LoadResString(IDS_SBAS_SLOT).c_str(), slot + 1)));
    AddPage(&m_locks);
    AddPage(&m_sbas);
}

CTrackingOptionsPS::~CTrackingOptionsPS() { DestroyWindow(); }
