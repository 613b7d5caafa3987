#include "fenklib/config/ReceiverInfoRows.h"

#include <array>

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/FenkImages.h"
#include "fenklib/resources/ImageIds.h"
#include "fenklib/resources/StringIds.h"

using basekit::ustring;
using devio::CVokReceiverMate;
namespace par = devio::par;

namespace {

template <const devio::Param<devio::conv::Text>& P>
ustring Text(CVokReceiverMate& m) { return m.Get(P); }

template <const devio::Param<devio::conv::Int>& P>
ustring Integer(CVokReceiverMate& m) { return ustring::Format(L"%d", m.Get(P)); }

template <const devio::Param<devio::conv::UInt>& P>
ustring Kilobytes(CVokReceiverMate& m) { return ustring::Format(L"%u", m.Get(P) / 1024u); }

// Voltages come as text and are shown with two decimals.
template <const devio::Param<devio::conv::Text>& P>
ustring Volts(CVokReceiverMate& m) { return ustring::fcvt(devio::conv::Real::Parse(m.Get(P)), 2); }

ustring PowerBoardVersion(CVokReceiverMate& m) {
    const int hw = m.Get(par::RcvVerPowHw);
    return ustring::Format(LoadResString(IDS_FMT_POWER_BOARD_VERSION).c_str(), hw, m.Get(par::RcvVerPowFw));
}

ustring RamKilobytes(CVokReceiverMate& m) { return ustring::Format(L"%d", m.Get(par::RcvMem) / 1024); }

// Blocks times block size in unsigned 32-bit arithmetic, as the receiver's own counters are.
ustring FlashTotal(CVokReceiverMate& m) {
    const unsigned blocks = m.Get(par::DevBlkABlocks);
    const unsigned size = m.Get(par::DevBlkABlockSize);
    return ustring::Format(L"%u", blocks * size / 1024u);
}

constexpr RECEIVER_INFO_ROW kSeparator{0, 0, nullptr};

constexpr std::array<RECEIVER_INFO_ROW, 23> kRows{{
    {IDS_ROW_MODEL, IDI_RECEIVER, &Text<par::RcvModel>},
    {IDS_ROW_ID, IDI_RECEIVER, &Text<par::RcvId>},
    {IDS_ROW_SERIAL_NUMBER, IDI_RECEIVER, &Text<par::RcvSn>},
    {IDS_ROW_BOARD_VERSION, IDI_RECEIVER, &Text<par::RcvVerBoard>},
    {IDS_ROW_FIRMWARE_VERSION, IDI_RECEIVER, &Text<par::RcvVerMain>},
    {IDS_ROW_HARDWARE_VERSION, IDI_RECEIVER, &Text<par::RcvVerHw>},
    {IDS_ROW_AUX_FIRMWARE_VERSION, IDI_RECEIVER, &Text<par::ExtRcvVerMain>},
    {IDS_ROW_AUX_HARDWARE_VERSION, IDI_RECEIVER, &Text<par::ExtRcvVerHw>},
    {IDS_ROW_POWER_BOARD_VERSION, IDI_RECEIVER, &PowerBoardVersion},
    {IDS_ROW_VENDOR, IDI_RECEIVER, &Text<par::RcvVendor>},
    kSeparator,
    {IDS_ROW_CPU_FREQ, IDI_CPU, &Integer<par::CpuFrq>},
    {IDS_ROW_RAM_SIZE, IDI_RAM, &RamKilobytes},
    kSeparator,
    {IDS_ROW_FLASH_TOTAL, IDI_FLASH, &FlashTotal},
    {IDS_ROW_FLASH_AVAILABLE, IDI_FLASH, &Kilobytes<par::DevBlkASize>},
    {IDS_ROW_FLASH_FREE, IDI_FLASH, &Kilobytes<par::DevBlkAFree>},
    kSeparator,
    {IDS_ROW_BATTERY_A, IDI_BATTERY, &Volts<par::PwrBatA>},
    {IDS_ROW_BATTERY_B, IDI_BATTERY, &Volts<par::PwrBatB>},
    {IDS_ROW_CHARGER, IDI_BATTERY, &Volts<par::PwrCharger>},
    {IDS_ROW_POWER_SUPPLY, IDI_BATTERY, &Volts<par::PwrExt>},
    {IDS_ROW_POWER_BOARD, IDI_BATTERY, &Volts<par::PwrBoard>},
}};

}  // namespace

std::span<const RECEIVER_INFO_ROW> ReceiverInfoRows() { return kRows; }
