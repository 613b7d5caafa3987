// The "DL" message: payload parsing and its path from the byte stream to the sink.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "devio/NmeaTestSupport.h"
#include "platform/devio/lexer/CStreamLexer.h"
#include "platform/devio/nmea/CDataLinkDecoder.h"
#include "platform/devio/nmea/CLiveDataDecoder.h"

namespace devio {
namespace {

TEST(DataLinkDecoder, TheDocumentedExample)
{
    std::vector<DATALINK_RECORD> links;
    ASSERT_TRUE(CDataLinkDecoder::Parse("2;A,R,12,1.0,3476,2,120;E,T,401,0.6,812,0,480", links));
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[0].port, 'A');
    EXPECT_EQ(links[0].format, 'R');
    EXPECT_EQ(links[0].stationId, 12u);
    EXPECT_FLOAT_EQ(links[0].age, 1.0f);
    EXPECT_EQ(links[0].received, 3476u);
    EXPECT_EQ(links[0].errors, 2u);
    EXPECT_EQ(links[0].rate, 120u);
    EXPECT_EQ(links[1].port, 'E');
    EXPECT_EQ(links[1].format, 'T');
    EXPECT_EQ(links[1].stationId, 401u);
    EXPECT_FLOAT_EQ(links[1].age, 0.6f);
    EXPECT_EQ(links[1].rate, 480u);
}

TEST(DataLinkDecoder, AcceptsAndRejects)
{
    struct ROW { const char* legend; const char* payload; bool ok; std::size_t links; };
    const ROW rows[] = {
        {"no links", "0", true, 0},
        {"every port and format letter", "4;L,C,1,0.0,0,0,0;U,J,2,9.9,1,1,1;D,R,3,1.5,2,2,2;I,T,4,100.5,3,3,3", true, 4},
        {"trailing line end", "1;A,R,12,1.0,3476,2,120\r\n", true, 1},
        {"count larger than the links", "2;A,R,12,1.0,3476,2,120", false, 0},
        {"count smaller than the links", "1;A,R,12,1.0,3476,2,120;E,T,401,0.6,812,0,480", false, 0},
        {"empty payload", "", false, 0},
        {"port J does not exist", "1;J,R,12,1.0,3476,2,120", false, 0},
        {"format X does not exist", "1;A,X,12,1.0,3476,2,120", false, 0},
        {"age without fraction", "1;A,R,12,1,3476,2,120", false, 0},
        {"age with two fraction digits", "1;A,R,12,1.05,3476,2,120", false, 0},
        {"negative age", "1;A,R,12,-1.0,3476,2,120", false, 0},
        {"six fields", "1;A,R,12,1.0,3476,2", false, 0},
        {"eight fields", "1;A,R,12,1.0,3476,2,120,7", false, 0},
        {"empty field", "1;A,R,,1.0,3476,2,120", false, 0},
        {"counter over 32 bits", "1;A,R,12,1.0,4294967296,2,120", false, 0},
        {"trailing separator", "1;A,R,12,1.0,3476,2,120;", false, 0},
    };
    for (const ROW& row : rows) {
        std::vector<DATALINK_RECORD> links;
        EXPECT_EQ(CDataLinkDecoder::Parse(row.payload, links), row.ok) << row.legend;
        if (row.ok) {
            EXPECT_EQ(links.size(), row.links) << row.legend;
        }
    }
}

TEST(LiveDataDecoder, FramesAndSentencesReachTheirDecoders)
{
    test::RecordingSink sink;
    CLiveDataDecoder decoder(sink);
    const std::string stream = "@MDL,0,45:2;A,R,12,1.0,3476,2,120;E,T,401,0.6,812,0,480*8F08\r\n"
        + CStreamLexer::EncodeFrame('M', "DL", 0, "1;A,Q,12,1.0,3476,2,120")   // malformed: dropped whole
        + CStreamLexer::EncodeFrame('R', "7", -2, "{2,,wrong command}")
        + CStreamLexer::EncodeFrame('M', "XY", 0, "other")
        + "$GPZDA,131519.00,03,02,2016,00,00*6C\r\n";
    for (const char c : stream)
        decoder.Feed(&c, 1);
    decoder.Finish();
    EXPECT_EQ(sink.dataLinks.size(), 2u);
    EXPECT_EQ(sink.otherFrames, (std::vector<std::string>{"R7,-2:{2,,wrong command}", "MXY,0:other"}));
    EXPECT_EQ(sink.dateTimes.size(), 1u);
    const LIVEDATA_COUNTERS c = decoder.Counters();
    EXPECT_EQ(c.dataLinkMessages, 1u);
    EXPECT_EQ(c.dataLinkMalformed, 1u);
    EXPECT_EQ(c.otherFrames, 2u);
    EXPECT_EQ(c.lexer.frames, 4u);
    EXPECT_EQ(c.nmea.decoded, 1u);
}

}  // namespace
}  // namespace devio
