// The message model: list operations, the predefined sets reader, the registry and the load
// figure, on the shipped data files and on broken ones.
#include <gtest/gtest.h>

#include <QFile>

#include "fenklib/msglist/MessageList.h"
#include "fenklib/msglist/MessageRegistry.h"
#include "fenklib/msglist/PortLoad.h"
#include "fenklib/msglist/PredefinedMessageSets.h"

using basekit::ustring;
using devio::vok::MSG;
using fenkmsg::MessageList;

namespace {

QByteArray Shipped(const char* name) {
    QFile file(QStringLiteral(FENK_DATA_DIR "/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

MSG Msg(const wchar_t* name, double period = 1) { return MSG{name, period, 0, 0, 0}; }

std::vector<ustring> Names(const MessageList& list) {
    std::vector<ustring> names;
    for (const MSG& m : list) names.push_back(m.name);
    return names;
}

}  // namespace

TEST(MessageList, MergeKeepsOrderAndNeverDuplicates) {
    struct Case { MessageList start, more; std::vector<ustring> expected; int added; const char* legend; };
    const Case cases[] = {
        {{}, {Msg(L"nmea/GGA"), Msg(L"nmea/RMC")}, {L"nmea/GGA", L"nmea/RMC"}, 2, "into an empty list, in order"},
        {{Msg(L"nmea/GGA")}, {Msg(L"nmea/GGA", 5)}, {L"nmea/GGA"}, 0, "same name not added twice"},
        {{Msg(L"/msg/nmea/GGA")}, {Msg(L"nmea/GGA"), Msg(L"nmea/ZDA")}, {L"/msg/nmea/GGA", L"nmea/ZDA"}, 1,
         "the port's /msg/ form is the same message"},
        {{}, {Msg(L"rtcm3/1004"), Msg(L"rtcm3/1004")}, {L"rtcm3/1004"}, 1, "duplicates within the added list"},
    };
    for (const Case& c : cases) {
        MessageList list = c.start;
        EXPECT_EQ(fenkmsg::MergeByName(list, c.more), c.added) << c.legend;
        EXPECT_EQ(Names(list), c.expected) << c.legend;
    }
}

TEST(MessageList, RemoveRowsTakesTheSelection) {
    struct Case { std::vector<int> rows; std::vector<ustring> expected; const char* legend; };
    const Case cases[] = {
        {{0}, {L"b", L"c", L"d"}, "first row"},
        {{3, 1}, {L"a", L"c"}, "rows in any order"},
        {{2, 2, 9, -1}, {L"a", L"b", L"d"}, "repeated and out-of-range rows ignored"},
        {{}, {L"a", L"b", L"c", L"d"}, "nothing selected"},
    };
    for (const Case& c : cases) {
        MessageList list{Msg(L"a"), Msg(L"b"), Msg(L"c"), Msg(L"d")};
        fenkmsg::RemoveRows(list, c.rows);
        EXPECT_EQ(Names(list), c.expected) << c.legend;
    }
}

TEST(PredefinedSets, Reader) {
    struct Case { const char* xml; std::size_t sets; std::size_t firstCount; const char* legend; };
    const Case cases[] = {
        {"<PredefinedMessageSets><A Name='x'><Message Name='nmea/GGA' Period='0.5'/></A></PredefinedMessageSets>", 1, 1,
         "any element is a set"},
        {"<predefinedmessagesets><Set Name='x'/><Set Name='y'/></predefinedmessagesets>", 2, 0, "root compared without case"},
        {"<MessageSets><Set Name='x'><Message Name='nmea/GGA' Period='1'/></Set></MessageSets>", 0, 0, "wrong root"},
        {"<PredefinedMessageSets><Set Name='x'><Message Name='nmea/GGA' Period='1'/></Set>", 0, 0, "broken off"},
        {"<PredefinedMessageSets><Set Name='x'><Message Name='nmea/GGA' Period='1'></Set></PredefinedMessageSets>", 0, 0,
         "mismatched tags"},
        {"", 0, 0, "empty file"},
        {"<PredefinedMessageSets><Set Name='x'><Other Name='a'/><Message Period='1'/><Message Name='b' Period='1'/></Set>"
         "</PredefinedMessageSets>", 1, 1, "other children and nameless messages skipped"},
    };
    for (const Case& c : cases) {
        const auto sets = fenkmsg::ParsePredefinedMessageSets(QByteArray(c.xml));
        ASSERT_EQ(sets.size(), c.sets) << c.legend;
        if (c.sets) {
            EXPECT_EQ(sets[0].messages.size(), c.firstCount) << c.legend;
        }
    }
}

TEST(PredefinedSets, MessageFields) {
    const auto sets = fenkmsg::ParsePredefinedMessageSets(
        "<PredefinedMessageSets><Set Name=' Base '><Message Name='rtcm3/1004' Period='0.5'/>"
        "<Message Name='rtcm3/1006' Period='0'/><Message Name='nmea/GGA' Period='-3'/><Message Name='nmea/ZDA' Period='x'/>"
        "</Set></PredefinedMessageSets>");
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].name, L"Base");
    struct Row { MSG expected; const char* legend; };
    const Row rows[] = {
        {MSG{L"rtcm3/1004", 0.5, 0, 0, 0}, "period in the C locale; phase, count and flags zero"},
        {MSG{L"rtcm3/1006", 0, 0, 0, 0}, "period 0 stays 0: the port page's period"},
        {MSG{L"nmea/GGA", 0, 0, 0, 0}, "a negative period is no period"},
        {MSG{L"nmea/ZDA", 0, 0, 0, 0}, "a period that is no number is no period"},
    };
    ASSERT_EQ(sets[0].messages.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(sets[0].messages[i], rows[i].expected) << rows[i].legend;
}

// The shipped sets name only messages the registry (and so the simulator) knows.
TEST(ShippedData, SetsAndRegistryAgree) {
    const auto sets = fenkmsg::ParsePredefinedMessageSets(Shipped("PredefinedMessageSets.xml"));
    const auto registry = fenkmsg::CMessageRegistry::Parse(Shipped("ReceiverMessageRegistry.xml"));
    ASSERT_GE(sets.size(), 4u);
    ASSERT_GE(registry.Size(), 30u);
    for (const auto& set : sets) {
        EXPECT_FALSE(set.name.empty());
        EXPECT_FALSE(set.messages.empty()) << set.name.ToUtf8();
        for (const MSG& m : set.messages) {
            EXPECT_FALSE(registry.Description(m.name).empty()) << m.name.ToUtf8();
            EXPECT_GT(registry.Bytes(m.name), 0) << m.name.ToUtf8();
        }
    }
}

TEST(Registry, DisplayText) {
    const auto registry = fenkmsg::CMessageRegistry::Parse(
        "<ReceiverMessageRegistry><Message Name='nmea/GGA' Description='GPS fix data' Bytes='74'/>"
        "<Message Name='/msg/qls/PV' Description='Position' Bytes='51'/></ReceiverMessageRegistry>");
    struct Case { const wchar_t* shown; const wchar_t* full; const wchar_t* expected; const char* legend; };
    const Case cases[] = {
        {L"GGA", L"nmea/GGA", L"GGA (GPS fix data)", "with description"},
        {L"/msg/nmea/GGA", L"/msg/nmea/GGA", L"/msg/nmea/GGA (GPS fix data)", "port form of the name"},
        {L"PV", L"qls/PV", L"PV (Position)", "registry entry in port form"},
        {L"XYZ", L"nmea/XYZ", L"XYZ", "bare name without description"},
    };
    for (const Case& c : cases) EXPECT_EQ(registry.DisplayText(c.shown, c.full), c.expected) << c.legend;
    EXPECT_EQ(fenkmsg::CMessageRegistry::Parse("<Other><Message Name='a' Description='b'/></Other>").Size(), 0u);
    EXPECT_EQ(fenkmsg::CMessageRegistry::Parse("<ReceiverMessageRegistry><Message Name='a'").Size(), 0u);
}

TEST(PortLoad, ShareOfTheLineRate) {
    const auto registry = fenkmsg::CMessageRegistry::Parse(
        "<ReceiverMessageRegistry><Message Name='nmea/GGA' Bytes='74'/><Message Name='rtcm3/1004' Bytes='200'/>"
        "</ReceiverMessageRegistry>");
    struct Case { MessageList list; int rate; double share; int unknown; const char* legend; };
    const Case cases[] = {
        {{Msg(L"nmea/GGA", 1)}, 9600, 740.0 / 9600, 0, "ten bits a byte"},
        {{Msg(L"nmea/GGA", 0.1), Msg(L"rtcm3/1004", 1)}, 9600, (740.0 + 200) * 10 / 9600, 0, "10 Hz counts ten times"},
        {{Msg(L"rtcm3/1004", 0.1)}, 9600, 20000.0 / 9600, 0, "above a full line"},
        {{Msg(L"nmea/GGA", 0), Msg(L"nmea/XYZ", 1)}, 9600, 0, 2, "period 0 and unknown sizes counted apart"},
        {{Msg(L"nmea/GGA", 1)}, 0, 0, 0, "no line rate: no share"},
    };
    for (const Case& c : cases) {
        const auto load = fenkmsg::ComputePortLoad(c.list, registry, c.rate);
        EXPECT_NEAR(load.share, c.share, 1e-9) << c.legend;
        EXPECT_EQ(load.unknown, c.unknown) << c.legend;
    }
}
