#include <gtest/gtest.h>

#include "fenklib/receiver/CReceiverEnumWrapper.h"

using namespace devio::vok;
using basekit::ustring;

namespace {

template <typename E, E N>
E Read(const wchar_t* text) { return CReceiverEnumWrapper<E, N>().FromKeyword(text).Value(); }
template <typename E, E N>
ustring Write(int value) { return CReceiverEnumWrapper<E, N>(static_cast<E>(value)).ToKeyword(); }

TEST(Keywords, ReadingKeywords) {
    struct Case { const char* legend; int got; int want; };
    const Case cases[] = {
        {"exact match", Read<ERTKDynamic, RTK_STATIC>(L"stopandgo"), RTK_STOPANDGO},
        {"capital S is not static: the default 0", Read<ERTKDynamic, RTK_STATIC>(L"Static"), 0},
        {"unknown reads as N", Read<EAmbiguityFixingLevel, AFL_MEDIUM>(L"extreme"), AFL_MEDIUM},
        {"unknown position output reads as delay", Read<EPositionOutputMode, POSOUT_DELAY>(L"x"), POSOUT_DELAY},
        {"unknown anti-jamming reads as auto", Read<EAntiJamming, AJM_AUTO>(L"?"), AJM_AUTO},
        {"a trailing blank is not trimmed here", Read<EBaudRate, BAUD_115200>(L"4800 "), BAUD_115200},
        {"input mode falls back to 0 whatever N", Read<EIMode, IMODE_CMD>(L"bogus"), IMODE_NONE},
        {"modem mode falls back to 0 whatever N", Read<EModemMode, MODEM_SLAVE>(L"bogus"), MODEM_OFF},
        {"EDev with a leading slash", Read<EDev, DEV_NULL>(L"/dev/ser/b"), DEV_SER_B},
        {"EDev with an attribute suffix", Read<EDev, DEV_NULL>(L"dev/ser/b&size"), DEV_SER_B},
        {"EDev unknown reads as dev/null", Read<EDev, DEV_NULL>(L"dev/xyz"), DEV_NULL},
        {"ECom by substring", Read<ECom, COM_A>(L"/com/c/profile"), COM_C},
        {"EIonoCorrections reads 02 as 2", Read<EIonoCorrections, IONO_0>(L"02"), IONO_2},
        {"EIonoCorrections reads a letter as 0", Read<EIonoCorrections, IONO_1>(L"x"), IONO_0},
        {"EIonoCorrections out-of-table number gives N", Read<EIonoCorrections, IONO_1>(L"7"), IONO_1},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.legend;
}

TEST(Keywords, WritingValues) {
    struct Case { const char* legend; ustring got; const wchar_t* want; };
    const Case cases[] = {
        {"in range", Write<EBaudRate, BAUD_115200>(BAUD_921600), L"921600"},
        {"baud rate out of range writes 115200", Write<EBaudRate, BAUD_115200>(99), L"115200"},
        {"anti-jamming 9 writes gps", Write<EAntiJamming, AJM_AUTO>(9), L"gps"},
        {"position output out of range writes extrap", Write<EPositionOutputMode, POSOUT_DELAY>(5), L"extrap"},
        {"ambiguity level out of range writes medium", Write<EAmbiguityFixingLevel, AFL_MEDIUM>(-1), L"medium"},
        {"antenna out of range writes auto", Write<EAntenna, ANT_AUTO>(3), L"auto"},
        {"EDev 18 is the empty text", Write<EDev, DEV_NULL>(18), L""},
        {"ECom out of range is the empty text", Write<ECom, COM_A>(4), L""},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << c.legend;
}

// Each table against its keywords as the receiver spells them, written out here once: a
// misspelled keyword in the library fails both directions.
template <typename E>
void CheckTable(const char* name, std::initializer_list<const wchar_t*> words) {
    int row = 0;
    for (const wchar_t* word : words) {
        EXPECT_EQ(ToKeyword(static_cast<E>(row)), word) << name << " row " << row;
        EXPECT_EQ(FromKeyword<E>(word), row) << name << " " << ustring(word).ToUtf8();
        ++row;
    }
    EXPECT_EQ(KeywordTableOf<E>::kTable.words.size(), words.size()) << name;
}

TEST(Keywords, EveryTableSpellsTheReceiversWords) {
    CheckTable<EDIONMode>("EDIONMode", {L"off", L"local", L"smooth"});
    CheckTable<EReceiverBehaviorOnStartUp>("EReceiverBehaviorOnStartUp", {L"off", L"on", L"always"});
    CheckTable<EButtonDynamicMode>("EButtonDynamicMode", {L"static", L"dynamic"});
    CheckTable<EFnKeyMode>("EFnKeyMode", {L"led", L"dyn"});
    CheckTable<ERTKDynamic>("ERTKDynamic", {L"static", L"kinematic", L"stopandgo"});
    CheckTable<EMotionState>("EMotionState", {L"unknown", L"static", L"kinematic"});
    CheckTable<EAmbiguityFixingLevel>("EAmbiguityFixingLevel", {L"low", L"medium", L"high"});
    CheckTable<EPositionOutputMode>("EPositionOutputMode", {L"extrap", L"delay"});
    CheckTable<EAntiJamming>("EAntiJamming", {L"gps", L"glo", L"l1", L"l2", L"auto", L"off", L"manual"});
    CheckTable<ESlotState>("ESlotState", {L"n", L"y", L"always"});
    CheckTable<EIonoCorrections>("EIonoCorrections", {L"0", L"1", L"2"});
    CheckTable<EPosComputationMode>("EPosComputationMode", {L"sp", L"cd", L"pf", L"pd"});
    CheckTable<EAntenna>("EAntenna", {L"int", L"ext", L"auto"});
    CheckTable<EByteSize>("EByteSize", {L"5", L"6", L"7", L"8"});
    CheckTable<EParity>("EParity", {L"N", L"odd", L"even", L"fodd", L"feven"});
    CheckTable<EStopBits>("EStopBits", {L"1", L"2"});
    CheckTable<ERtsControl>("ERtsControl", {L"off", L"on"});
    CheckTable<EBaudRate>("EBaudRate", {L"300", L"600", L"1200", L"2400", L"4800", L"9600", L"19200", L"38400", L"57600",
                                        L"115200", L"153600", L"230400", L"460800", L"921600"});
    CheckTable<EModemMode>("EModemMode", {L"off", L"master", L"slave", L"gprs"});
    CheckTable<EIMode>("EIMode", {L"none", L"cmd", L"echo", L"rtcm", L"rtcm3", L"cmr", L"qls", L"omni", L"dtp", L"term"});
    CheckTable<EModem>("EModem", {L"modem/a", L"modem/b", L"modem/c", L"modem/d"});
    CheckTable<ECom>("ECom", {L"com/a", L"com/b", L"com/c", L"com/d"});
    CheckTable<EDev>("EDev", {L"dev/null", L"cur/term", L"dev/ser/a", L"dev/ser/b", L"dev/ser/c", L"dev/ser/d", L"dev/usb/a",
                              L"dev/tcp/a", L"dev/tcp/b", L"dev/tcp/c", L"dev/tcp/d", L"dev/tcp/e", L"dev/mvp/a", L"dev/mvp/b",
                              L"dev/mvp/c", L"dev/mvp/d", L"cur/file/a", L"cur/file/b"});
}

TEST(Keywords, DataLinkLetters) {
    EXPECT_EQ(DataLinkFormatName(L'T'), L"RTCM 3.0");
    EXPECT_EQ(DataLinkFormatName(L'J'), L"VOK");
    EXPECT_EQ(DataLinkFormatName(L'Q'), L"Q");
    EXPECT_EQ(DataLinkPortName(L'L'), L"Bluetooth");
    EXPECT_EQ(DataLinkPortName(L'I'), L"tcp/e");
    EXPECT_EQ(DataLinkPortName(L'Z'), L"");
}

}  // namespace
