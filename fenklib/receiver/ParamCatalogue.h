#pragma once
#include <QDateTime>
#include <QTimeZone>
#include <cwchar>

#include "fenklib/receiver/CReceiverEnumWrapper.h"
#include "fenklib/receiver/CommandText.h"
#include "platform/basekit/CCLocaleScope.h"
#include "platform/basekit/ustring.h"

// The receiver parameters whose commands are alike: "print,<path>" reads one, "set,<path>,<value>"
// writes one, and a conversion turns the reply into a value and the value into command text.
// Each parameter is one row below; the path may hold "%s" for a port and "%d"/"%02d" for an
// index, filled from the arguments of Get/Set.
namespace devio {

using basekit::ustring;

namespace conv {

inline ustring Arg(vok::EDev port) { return vok::ToKeyword(port); }
inline ustring Arg(vok::ECom port) { return vok::ToKeyword(port); }
inline const ustring& Arg(const ustring& text) { return text; }
inline const wchar_t* Arg(const wchar_t* text) { return text; }
inline int Arg(int n) { return n; }

// Reply read as the receiver's text; written as a bare word.
struct Text {
    using Value = ustring;
    static constexpr bool kTrim = true;
    static Value Parse(const ustring& reply) { return reply; }
    static ustring Format(const Value& v) { CheckCommandArgument(v, false); return v; }
};
// The same, but the reply is taken as it came (names and dates with meaningful blanks).
struct RawText : Text {
    static constexpr bool kTrim = false;
};
// Written between double quotes: names, texts and file names that may hold commas.
struct Quoted {
    using Value = ustring;
    static constexpr bool kTrim = true;
    static Value Parse(const ustring& reply) {
        if (reply.size() >= 2 && reply.front() == L'"' && reply.back() == L'"') return reply.substr(1, reply.size() - 2);
        return reply;
    }
    static ustring Format(const Value& v) { CheckCommandArgument(v, true); return L"\"" + v + L"\""; }
};
// A receiver date and time ("2024/05/20 08:14:03", UTC) as a date value; invalid when the reply
// is not one. The reply is taken as it came.
struct Date {
    using Value = QDateTime;
    static constexpr bool kTrim = false;
    static Value Parse(const ustring& reply) {
        QDateTime t = QDateTime::fromString(reply.ToQString(), QStringLiteral("yyyy/MM/dd HH:mm:ss"));
        t.setTimeZone(QTimeZone::utc());
        return t;
    }
    static ustring Format(const Value& v) { return ustring::FromQString(v.toUTC().toString(QStringLiteral("yyyy/MM/dd HH:mm:ss"))); }
};
// A keyword of a table the library does not enumerate.
struct Keyword : Text {};
struct Int {
    using Value = int;
    static constexpr bool kTrim = false;
    static Value Parse(const ustring& reply) { return static_cast<int>(std::wcstol(reply.c_str(), nullptr, 10)); }
    static ustring Format(Value v) { return ustring::Format(L"%d", v); }
};
struct UInt {
    using Value = unsigned;
    static constexpr bool kTrim = false;
    static Value Parse(const ustring& reply) {
        return static_cast<unsigned>(std::wcstoul(reply.c_str(), nullptr, 10));
    }
    static ustring Format(Value v) { return ustring::Format(L"%u", v); }
};
struct Real {
    using Value = double;
    static constexpr bool kTrim = false;
    static Value Parse(const ustring& reply) { return basekit::ParseReal(reply); }
    static ustring Format(Value v) { return ustring::Format(L"%f", v); }
};
// A reply counts as true when it holds "on" anywhere.
struct Bool {
    using Value = bool;
    static constexpr bool kTrim = true;
    static Value Parse(const ustring& reply) { return reply.find(L"on") != ustring::npos; }
    static ustring Format(Value v) { return v ? L"on" : L"off"; }
};
// Code and carrier multipath correction: written "mpnew"/"normal", read back as a boolean.
struct Multipath : Bool {
    static ustring Format(Value v) { return v ? L"mpnew" : L"normal"; }
};
template <typename E>
struct Enum {
    using Value = E;
    static constexpr bool kTrim = true;
    static Value Parse(const ustring& reply) { return vok::FromKeyword<E>(reply); }
    static ustring Format(Value v) { return vok::ToKeyword<E>(v); }
};
// A port named after a slash: "set,dev/ser/a/echo,/dev/ser/b".
struct DevRef {
    using Value = vok::EDev;
    static constexpr bool kTrim = true;
    static Value Parse(const ustring& reply) { return vok::FromKeyword<vok::EDev>(reply); }
    static ustring Format(Value v) { return L"/" + vok::ToKeyword<vok::EDev>(v); }
};

}  // namespace conv

template <typename Conv>
struct Param {
    const wchar_t* path;
    template <typename... Args>
    ustring Path(const Args&... args) const {
        if constexpr (sizeof...(Args) == 0) return path;
        else return ustring::Format(path, conv::Arg(args)...);
    }
};

// A command with nothing to read back: "set,log/rot/force,on".
struct Action {
    const wchar_t* command;
};

namespace par {
// Identity and versions
inline constexpr Param<conv::Text> RcvModel{L"rcv/model"};
inline constexpr Param<conv::Text> RcvId{L"rcv/id"};
inline constexpr Param<conv::Text> RcvSn{L"rcv/sn"};
inline constexpr Param<conv::Text> RcvVendor{L"rcv/vendor"};
inline constexpr Param<conv::Text> RcvVerMain{L"rcv/ver/main"};
inline constexpr Param<conv::Text> RcvVerHw{L"rcv/ver/hw"};
inline constexpr Param<conv::Text> RcvVerBoard{L"rcv/ver/board"};
inline constexpr Param<conv::Text> RcvVerPowFw{L"rcv/ver/pow/fw"};
inline constexpr Param<conv::Int> RcvVerPowHw{L"rcv/ver/pow/hw"};
inline constexpr Param<conv::Int> RcvMem{L"rcv/mem"};
inline constexpr Param<conv::Int> CpuFrq{L"cpu/frq"};
inline constexpr Param<conv::Text> ExtRcvVerMain{L"/ext/rcv/ver/main"};
inline constexpr Param<conv::Text> ExtRcvVerHw{L"/ext/rcv/ver/hw"};
// Power
inline constexpr Param<conv::Text> PwrBatA{L"pwr/bat/a"};
inline constexpr Param<conv::Text> PwrBatB{L"pwr/bat/b"};
inline constexpr Param<conv::Text> PwrExt{L"pwr/ext"};
inline constexpr Param<conv::Text> PwrCharger{L"pwr/charger"};
inline constexpr Param<conv::Text> PwrBoard{L"pwr/board"};
inline constexpr Param<conv::Keyword> PwrSwitch{L"pwr/switch/%d"};
inline constexpr Param<conv::Bool> ExtPowerupMode{L"/ext/powerup/mode"};
// Bluetooth (extension board)
inline constexpr Param<conv::Bool> ExtBtPower{L"/ext/bt/power"};
inline constexpr Param<conv::Bool> ExtBtMux{L"/ext/bt/mux"};
inline constexpr Param<conv::Text> ExtBtVerMain{L"/ext/bt/ver/main"};
inline constexpr Param<conv::Text> ExtBtBdaddr{L"/ext/bt/bdaddr"};
inline constexpr Param<conv::Quoted> ExtBtPincode{L"/ext/bt/pincode"};
inline constexpr Param<conv::Quoted> ExtBtName{L"/ext/bt/name"};
inline constexpr Action ExtBtReset{L"set,/ext/bt/reset,yes"};
// Audio (extension board)
inline constexpr Action ExtAudioPlay{L"set,/ext/audio/play/%d,on"};
inline constexpr Param<conv::Int> ExtAudioChannelVolume{L"/ext/audio/vol/%d"};
inline constexpr Param<conv::Int> ExtAudioVolume{L"/ext/audio/vol"};
// Logging and file rotation
inline constexpr Param<conv::Bool> LogRotMode{L"log/rot/mode"};
inline constexpr Param<conv::Bool> LogRotRmold{L"log/rot/rmold"};
inline constexpr Param<conv::Int> LogRotScPeriod{L"log/rot/sc/period"};
inline constexpr Param<conv::Int> LogRotScPhase{L"log/rot/sc/phase"};
inline constexpr Param<conv::Int> LogRotScCount{L"log/rot/sc/count"};
inline constexpr Param<conv::Int> LogRotCount{L"log/rot/count"};
inline constexpr Action LogRotForce{L"set,log/rot/force,on"};
inline constexpr Param<conv::Real> LogScPeriod{L"log/sc/period"};
inline constexpr Param<conv::Quoted> CmdCreatePrefix{L"cmd/create/prefix"};
inline constexpr Param<conv::Text> LogFileAttributes{L"\"/log/%s\""};
// Current files and the block device
inline constexpr Param<conv::Int> CurFileASize{L"/cur/file/a&size"};
inline constexpr Param<conv::Int> CurFileBSize{L"/cur/file/b&size"};
inline constexpr Param<conv::Bool> DevBlkARemoved{L"dev/blk/a/removed"};
inline constexpr Param<conv::UInt> DevBlkASize{L"dev/blk/a/size"};
inline constexpr Param<conv::UInt> DevBlkAFree{L"dev/blk/a/free"};
inline constexpr Param<conv::UInt> DevBlkABlockSize{L"dev/blk/a/block_size"};
inline constexpr Param<conv::UInt> DevBlkABlocks{L"dev/blk/a/blocks"};
inline constexpr Param<conv::UInt> DevBlkAMaxFiles{L"dev/blk/a/max_files"};
inline constexpr Param<conv::UInt> DevBlkAFiles{L"dev/blk/a/files"};
inline constexpr Param<conv::UInt> DevBlkABadBlocks{L"dev/blk/a/bad_blocks"};
inline constexpr Param<conv::UInt> DevBlkAVer{L"dev/blk/a/ver"};
inline constexpr Param<conv::Text> DevBlkATfmt{L"dev/blk/a/tfmt"};
// Reference station and averaging points
inline constexpr Param<conv::Quoted> RefAntId{L"ref/ant/id"};
inline constexpr Param<conv::Bool> RefAvgMode{L"ref/avg/mode"};
inline constexpr Param<conv::Bool> RefAvgCheck{L"ref/avg/check"};
inline constexpr Param<conv::Int> RefAvgSpan{L"ref/avg/span"};
inline constexpr Param<conv::Real> RefAvgLimit{L"ref/avg/limit"};
inline constexpr Action RefAvgPointAdd{L"set,ref/avg/list/pnts/add,%d"};
inline constexpr Action RefAvgPointDelete{L"set,ref/avg/list/pnts/del,%d"};
inline constexpr Param<conv::Int> RefAvgPointId{L"ref/avg/list/pnts/%02d/id"};
inline constexpr Param<conv::RawText> RefAvgPointName{L"ref/avg/list/pnts/%02d/name"};
inline constexpr Param<conv::Date> RefAvgPointDate{L"ref/avg/list/pnts/%02d/date"};
inline constexpr Param<conv::Real> RefAvgPointDist{L"ref/avg/list/pnts/%02d/dist"};
inline constexpr Param<conv::Bool> RefAvgPointProtect{L"ref/avg/list/pnts/%02d/protect"};
inline constexpr Param<conv::Bool> RefAvgPointAuto{L"ref/avg/list/pnts/%02d/auto"};
inline constexpr Param<conv::Bool> RefAvgPointOptionProtect{L"ref/avg/list/pnts/%02d/option/protect"};
inline constexpr Param<conv::Int> RefAvgCurPointId{L"ref/avg/list/curpnt/id"};
inline constexpr Param<conv::Text> RefAvgCurPointName{L"ref/avg/list/curpnt/name"};
// Satellite locks and augmentation satellites
inline constexpr Param<conv::Int> LockElm{L"lock/elm"};
inline constexpr Param<conv::Bool> WaasNumb{L"waas/numb"};
inline constexpr Param<conv::Int> WaasSat{L"waas/%d/sat"};
inline constexpr Param<conv::Enum<vok::EIonoCorrections>> WaasIon{L"waas/%d/ion"};
inline constexpr Param<conv::Int> WaasInstead0{L"waas/%d/instead0"};
// Positioning
inline constexpr Param<conv::Enum<vok::EPosComputationMode>> PosModeCur{L"pos/mode/cur"};
inline constexpr Param<conv::Bool> PosModeSp{L"pos/mode/sp"};
inline constexpr Param<conv::Bool> PosModeCd{L"pos/mode/cd"};
inline constexpr Param<conv::Enum<vok::EDIONMode>> PosDionMode{L"pos/dion/mode"};
inline constexpr Param<conv::Enum<vok::ERTKDynamic>> PosRtkDynamic{L"pos/rtk/dynamic"};
inline constexpr Param<conv::Enum<vok::EAmbiguityFixingLevel>> PosPdAflevel{L"pos/pd/aflevel"};
inline constexpr Param<conv::Keyword> PosPdMode{L"pos/pd/mode"};
inline constexpr Param<conv::Real> PosPdDyn{L"pos/pd/dyn"};
inline constexpr Param<conv::Real> PosPdTextr{L"pos/pd/textr"};
inline constexpr Param<conv::Real> PosPdPeriod{L"pos/pd/period"};
inline constexpr Param<conv::Int> PosPdVer{L"pos/pd/ver"};
inline constexpr Action PosPdReset{L"set,pos/pd/reset,on"};
inline constexpr Param<conv::Real> PosPdop{L"pos/pdop"};
inline constexpr Param<conv::Int> PosElm{L"pos/elm"};
inline constexpr Param<conv::Int> OutElm{L"out/elm/%s"};
inline constexpr Param<conv::Int> PosMsint{L"pos/msint"};
inline constexpr Param<conv::Int> RawMsint{L"raw/msint"};
inline constexpr Param<conv::Enum<vok::EAntenna>> AntennaInput{L"/par/ant/inp"};
inline constexpr Param<conv::Enum<vok::EAntenna>> AntennaInputInUse{L"/par/ant/curinp"};
// Raw data and anti-jamming
inline constexpr Param<conv::Bool> RawClpStatic{L"raw/clp/static"};
inline constexpr Param<conv::Multipath> RawCorrCaCode{L"raw/corr/ca/code"};
inline constexpr Param<conv::Multipath> RawCorrCaCarrier{L"raw/corr/ca/carrier"};
inline constexpr Param<conv::Enum<vok::EAntiJamming>> AjmMode{L"ajm/mode"};
// Buttons
inline constexpr Param<conv::Enum<vok::EButtonDynamicMode>> ButtonDyn{L"button/dyn"};
inline constexpr Param<conv::Keyword> ButtonAction{L"button/action"};
inline constexpr Param<conv::Keyword> ButtonAuto{L"button/auto"};
// Ports ("%s" is the port)
inline constexpr Param<conv::Enum<vok::EBaudRate>> PortRate{L"%s/rate"};
inline constexpr Param<conv::Enum<vok::EByteSize>> PortBits{L"%s/bits"};
inline constexpr Param<conv::Enum<vok::EParity>> PortParity{L"%s/parity"};
inline constexpr Param<conv::Enum<vok::EStopBits>> PortStops{L"%s/stops"};
inline constexpr Param<conv::Enum<vok::ERtsControl>> PortRtsCts{L"%s/rtscts"};
inline constexpr Param<conv::Enum<vok::EIMode>> PortIMode{L"%s/imode"};
inline constexpr Param<conv::DevRef> PortEcho{L"%s/echo"};
inline constexpr Param<conv::DevRef> PortDup{L"%s/dup"};
inline constexpr Param<conv::Quoted> PortEoff{L"%s/eoff"};
inline constexpr Param<conv::Bool> PortEwrap{L"%s/ewrap"};
inline constexpr Param<conv::Bool> PortMode{L"%s/mode"};
inline constexpr Action PortClear{L"set,/par/%s/clr,y"};
inline constexpr Param<conv::Text> PortCurReport{L"%s/cur/report"};
inline constexpr Param<conv::Text> PortCurState{L"%s/cur/state"};
inline constexpr Param<conv::Text> PortCurScript{L"%s/cur/script"};
inline constexpr Param<conv::Quoted> PortProfile{L"%s/profile"};
inline constexpr Param<conv::Quoted> PortVarName{L"%s/var/%d/name"};
inline constexpr Param<conv::Quoted> PortVarValue{L"%s/var/%d/value"};
inline constexpr Param<conv::Quoted> PortId{L"%s/id"};
inline constexpr Param<conv::Int> ComProfileSize{L"\"/com/a/profile/%s&size\""};
inline constexpr Param<conv::Int> ComScriptSize{L"\"/com/a/script/%s&size\""};
}  // namespace par

}  // namespace devio
