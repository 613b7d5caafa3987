#include <gtest/gtest.h>

#include "platform/devio/CWireLog.h"

using devio::CWireLog;

namespace {

TEST(WireLog, TextRoundTripsForReplay) {
    CWireLog log;
    log.Record(CWireLog::Direction::Out, "ignored while off");
    log.Enable(true);
    const std::string binary("\x00\x01\xff@R1,0,2:\r\n", 12);
    log.Record(CWireLog::Direction::Out, "%1%print,rcv/model\r\n");
    log.Record(CWireLog::Direction::In, "@R1,0,7:FNK-600*22A3\r\n$GPGGA,a\\b*00\r\n");
    log.Record(CWireLog::Direction::In, binary);
    const auto entries = CWireLog::Parse(log.ToText() + "garbage line\n12 ? T x\n");
    ASSERT_EQ(entries.size(), 3u) << "the off-time chunk and malformed lines are not there";
    EXPECT_EQ(entries[0].direction, CWireLog::Direction::Out);
    EXPECT_EQ(entries[0].bytes, "%1%print,rcv/model\r\n");
    EXPECT_EQ(entries[1].bytes, "@R1,0,7:FNK-600*22A3\r\n$GPGGA,a\\b*00\r\n");
    EXPECT_EQ(entries[2].bytes, binary) << "binary chunks travel as hex";
    EXPECT_NE(log.ToText().find(" < H 0001ff"), std::string::npos);
    EXPECT_LE(entries[0].ms, entries[2].ms);
}

}  // namespace
