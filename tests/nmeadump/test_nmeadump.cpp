// nmeadump as a user runs it: a capture in, JSON lines out.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "devio/NmeaTestSupport.h"

namespace {

std::vector<std::string> RunNmeadump(const std::string& arguments, int& status)
{
    const std::string command = std::string(NMEADUMP_PATH) + " " + arguments;
    std::FILE* pipe = popen(command.c_str(), "r");
    std::vector<std::string> lines;
    if (pipe == nullptr) {
        status = -1;
        return lines;
    }
    std::string line;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        if (c == '\n') {
            lines.push_back(line);
            line.clear();
        } else {
            line += static_cast<char>(c);
        }
    }
    status = pclose(pipe);
    return lines;
}

std::size_t CountType(const std::vector<std::string>& lines, const std::string& type)
{
    std::size_t n = 0;
    for (const std::string& line : lines)
        n += line.rfind("{\"type\":\"" + type + "\"", 0) == 0 ? 1 : 0;
    return n;
}

TEST(Nmeadump, DecodesACaptureIntoJsonLines)
{
    int status = 0;
    const std::vector<std::string> lines = RunNmeadump("--stats " + devio::test::CapturePath("firefly-II.log"), status);
    EXPECT_EQ(status, 0);
    ASSERT_FALSE(lines.empty());
    // $GPRMC,005947.00,A,...,080710 speaks before the first ZDA; every GGA has a bad checksum.
    EXPECT_EQ(lines.front(), R"({"type":"datetime","date":"2010-07-08","time":"00:59:47.000","zone":"+00:00"})");
    EXPECT_EQ(CountType(lines, "datetime"), 24u);
    EXPECT_EQ(CountType(lines, "position"), 0u);
    EXPECT_NE(lines.back().find(R"("badChecksum":23)"), std::string::npos) << lines.back();
    EXPECT_EQ(lines.back().rfind(R"({"type":"stats")", 0), 0u);
}

TEST(Nmeadump, PositionsAndSatelliteListsFromStandardInput)
{
    int status = 0;
    const std::vector<std::string> lines = RunNmeadump("< " + devio::test::CapturePath("sl869.log"), status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(CountType(lines, "position"), 8u);
    EXPECT_EQ(CountType(lines, "satlist"), 15u);
    EXPECT_EQ(CountType(lines, "stats"), 0u) << "only with --stats";
    bool qzss = false;
    for (const std::string& line : lines)
        qzss = qzss || line.find(R"({"system":"QZSS","number":193,"el":34,"az":332,"snr":0,"signal":0,"nav":63})") != std::string::npos;
    EXPECT_TRUE(qzss) << "QZGSV,1,1,01,193,34,332,";
}

TEST(Nmeadump, DataLinkFramesAndBadArguments)
{
    const std::string path = ::testing::TempDir() + "nmeadump_dl.txt";
    {
        std::FILE* f = std::fopen(path.c_str(), "wb");
        ASSERT_NE(f, nullptr);
        std::fputs("@MDL,0,45:2;A,R,12,1.0,3476,2,120;E,T,401,0.6,812,0,480*8F08\r\n", f);
        std::fclose(f);
    }
    int status = 0;
    const std::vector<std::string> lines = RunNmeadump(path, status);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], R"({"type":"datalink","port":"A","format":"R","station":12,"age":1.0,"received":3476,"errors":2,"rate":120})");
    std::remove(path.c_str());

    RunNmeadump("--no-such-option 2>/dev/null", status);
    EXPECT_NE(status, 0);
    RunNmeadump("/nonexistent/capture.log 2>/dev/null", status);
    EXPECT_NE(status, 0);
}

}  // namespace
