// Frames with any payload and the host's command lines. That the frames match docs/wire-protocol.md
// follows from the lexer's check of the document and the integration tests reading these frames.
#include <gtest/gtest.h>

#include "tools/rcvsim/Frame.h"
#include "tools/rcvsim/HostLineReader.h"

namespace rcvsim::test {
namespace {

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
