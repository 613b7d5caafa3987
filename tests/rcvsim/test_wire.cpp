// The wire protocol as docs/wire-protocol.md writes it down: frames, checks and host lines.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tools/rcvsim/Frame.h"
#include "tools/rcvsim/HostLineReader.h"

namespace rcvsim::test {
namespace {

std::string ReadDoc() {
    std::ifstream in("docs/wire-protocol.md");
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

struct FrameRow {
    char kind;
    const char* id;
    int status;
    const char* payload;
    const char* frame;
    const char* legend;
};
// The frames quoted in docs/wire-protocol.md.
const FrameRow kDocFrames[] = {
    {'R', "1", 0, "FNK-600", "@R1,0,7:FNK-600*22A3\r\n", "successful reply"},
    {'R', "7", -2, "{2,,wrong command}", "@R7,-2,18:{2,,wrong command}*CAB4\r\n", "error reply"},
    {'E', "7", 0, "", "@E7,0,0:*0000\r\n", "event 7"},
    {'M', "DL", 0, "2;A,R,12,1.0,3476,2,120;E,T,401,0.6,812,0,480",
     "@MDL,0,45:2;A,R,12,1.0,3476,2,120;E,T,401,0.6,812,0,480*8F08\r\n", "data-link message"},
};

TEST(WireDoc, FramesMatchTheDocumentByteForByte) {
    const std::string doc = ReadDoc();
    ASSERT_FALSE(doc.empty()) << "tests run from the repository root";
    for (const auto& row : kDocFrames) {
        const std::string made = Frame::Make(row.kind, row.id, row.status, row.payload);
        EXPECT_EQ(made, row.frame) << row.legend;
        std::string quoted = made.substr(0, made.size() - 2) + "\\r\\n";
        EXPECT_NE(doc.find(quoted), std::string::npos) << row.legend << " is quoted in the doc";
    }
}

TEST(Frame, PayloadMayHoldAnyBytes) {
    const std::string payload("a\r\nb\0c*", 7);
    const std::string frame = Frame::Reply("", 0, payload);
    EXPECT_EQ(frame.substr(0, 7), "@R,0,7:");
    EXPECT_EQ(frame.substr(7, 7), payload);
    EXPECT_EQ(Frame::Fletcher16(std::string(1000, '\xff')), Frame::Fletcher16(std::string(1000, '\0')))
        << "255 is 0 modulo 255";
}

struct LineRow {
    const char* bytes;
    std::vector<std::pair<std::string, std::string>> lines;  // tag, command
    std::size_t dropped;
    const char* legend;
};
const LineRow kLineRows[] = {
    {"%1%print,rcv/model\r\n", {{"1", "print,rcv/model"}}, 0, "tagged"},
    {"print,/cur/term\r", {{"", "print,/cur/term"}}, 0, "typed, CR only"},
    {"%12%a\n%13%b\r\n\r\n", {{"12", "a"}, {"13", "b"}}, 0, "two lines, blank line ignored"},
    {"%1234567890%x\r\n", {}, 1, "tag of ten digits"},
    {"%1x%x\r\n", {}, 1, "tag not digits"},
    {"%%x\r\n", {}, 1, "empty tag"},
    {"%5%pri\x01nt\r\n%6%ok\r\n", {{"6", "ok"}}, 1, "control byte spoils only its line"},
    {"\x7f\r\n%7%ok\n", {{"7", "ok"}}, 1, "DEL is garbage"},
    {"%9%set,a,\"\xc2\xb0\"\r\n", {{"9", "set,a,\"\xc2\xb0\""}}, 0, "UTF-8 text is a command's own"},
    {"%8%\r\n", {}, 1, "tag without command"},
};

TEST(HostLineReader, CutsTheStreamIntoCommandsAndDropsGarbage) {
    for (const auto& row : kLineRows) {
        HostLineReader reader;
        std::vector<HostLine> got;
        // Fed a byte at a time: lines may arrive split anywhere.
        for (const char* p = row.bytes; *p; ++p)
            for (auto& l : reader.Feed(std::string_view(p, 1))) got.push_back(l);
        ASSERT_EQ(got.size(), row.lines.size()) << row.legend;
        for (std::size_t i = 0; i < got.size(); ++i) {
            EXPECT_EQ(got[i].tag, row.lines[i].first) << row.legend;
            EXPECT_EQ(got[i].command, row.lines[i].second) << row.legend;
        }
        EXPECT_EQ(reader.Dropped(), row.dropped) << row.legend;
    }
}

TEST(HostLineReader, AnOverlongLineIsDroppedAndTheNextOneRead) {
    HostLineReader reader;
    EXPECT_TRUE(reader.Feed(std::string(HostLineReader::kMaxLine + 10, 'x')).empty());
    const auto lines = reader.Feed("\r\n%3%print,rcv/sn\r\n");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].tag, "3");
    EXPECT_EQ(reader.Dropped(), 1u);
}

}  // namespace
}  // namespace rcvsim::test
