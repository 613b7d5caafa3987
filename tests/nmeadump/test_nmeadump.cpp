// nmeadump as a user runs it: a capture in, JSON lines out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
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

std::vector<std::string> ReadLines(const std::string& path)
{
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
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

// ---------------------------------------------------------------- golden files

// Where two lines part, with a caret under the first differing character.
std::string DescribeDivergence(std::size_t number, const std::string& expected, const std::string& actual)
{
    std::size_t at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at])
        ++at;
    const std::size_t from = at > 60 ? at - 60 : 0;
    std::ostringstream text;
    text << "line " << number << ", column " << at + 1 << ":\n"
         << "  golden:  " << expected.substr(from, 140) << "\n"
         << "  nmeadump: " << actual.substr(from, 140) << "\n"
         << "            " << std::string(at - from, ' ') << "^\n";
    return text.str();
}

// A readable diff: the first few lines that differ, and lines only one side has.
std::string Diff(const std::vector<std::string>& golden, const std::vector<std::string>& actual)
{
    std::string report;
    std::size_t shown = 0;
    const std::size_t common = std::min(golden.size(), actual.size());
    for (std::size_t i = 0; i < common && shown < 5; ++i) {
        if (golden[i] != actual[i]) {
            report += DescribeDivergence(i + 1, golden[i], actual[i]);
            ++shown;
        }
    }
    if (golden.size() != actual.size())
        report += "golden has " + std::to_string(golden.size()) + " lines, nmeadump wrote " + std::to_string(actual.size()) + "\n";
    return report;
}

// Each shared capture has a golden file of its decoded records (tests/nmeadump/golden), made
// by nmeadump --stats once and checked by hand against the sentences; the first line names
// the capture and the tool.
TEST(NmeadumpGolden, EveryCaptureDecodesAsItsGoldenFile)
{
    // Heights modelled from the EGM96 grid need Debian's proj-data.
    const bool gridInstalled = std::ifstream("/usr/share/proj/egm96_15.gtx").good()
        || std::ifstream("/usr/share/proj/us_nga_egm96_15.tif").good();
    std::string skipped;
    for (const std::string& capture : devio::test::CaptureNames()) {
        const std::string stem = capture.substr(0, capture.rfind('.'));
        std::vector<std::string> golden = ReadLines("tests/nmeadump/golden/" + stem + ".jsonl");
        ASSERT_FALSE(golden.empty()) << "no golden file for " << capture;
        EXPECT_NE(golden.front().find(capture), std::string::npos) << "header names another capture";
        EXPECT_NE(golden.front().find("nmeadump --stats"), std::string::npos);
        golden.erase(golden.begin());
        const bool needsGrid = std::any_of(golden.begin(), golden.end(), [](const std::string& line) {
            return line.find("\"separationModelled\":true") != std::string::npos;
        });
        if (needsGrid && !gridInstalled) {
            skipped += capture + " ";
            continue;
        }
        int status = 0;
        const std::vector<std::string> actual = RunNmeadump("--stats " + devio::test::CapturePath(capture), status);
        EXPECT_EQ(status, 0) << capture;
        const std::string diff = Diff(golden, actual);
        EXPECT_TRUE(diff.empty()) << capture << " diverges from its golden file:\n" << diff;
    }
    if (!skipped.empty())
        GTEST_SKIP() << "proj-data (EGM96 grid) is not installed, not checked: " << skipped;
}

// Read from standard input and without --stats: the golden records alone.
TEST(NmeadumpGolden, StandardInputGivesTheRecordsWithoutStats)
{
    std::vector<std::string> golden = ReadLines("tests/nmeadump/golden/sl869.jsonl");
    ASSERT_GE(golden.size(), 2u);
    golden.erase(golden.begin());
    golden.pop_back();
    int status = 0;
    EXPECT_EQ(RunNmeadump("< " + devio::test::CapturePath("sl869.log"), status), golden);
    EXPECT_EQ(status, 0);
}

// --gpsd writes gpsd's TPV/SKY shape: checked on sentences whose values are read off by hand.
TEST(NmeadumpGpsd, TpvAndSkyShape)
{
    struct ROW { const char* legend; const char* capture; const char* expected; };
    const ROW rows[] = {
        {"first TPV: GNGGA 4552.65403,S,17030.00668,E 14.2 1.8, VTG 0.024 km/h, RMC date 120419", "ublox-zed-f9p-nmea.log",
         R"({"class":"TPV","device":"stdin","mode":3,"time":"2019-04-12T00:39:56.000Z","lat":-45.877567167,"lon":170.500111333,"altHAE":16.0000,"altMSL":14.2000,"speed":0.013,"geoidSep":1.800})"},
        {"GPS 13 on signals 1 and 6 (L2 CL, sigid 3)", "ublox-zed-f9p-nmea.log",
         R"({"PRN":13,"el":37.0,"az":124.0,"ss":0.0,"used":true,"gnssid":0,"svid":13,"sigid":3})"},
        {"QZSS 193 under the QZ talker", "sl869.log", R"({"PRN":193,"el":34.0,"az":332.0,"ss":0.0,"used":false,"gnssid":5,"svid":1})"},
        {"GLONASS 66 is slot 2", "ublox-zed-f9p-nmea.log", R"({"PRN":66,"el":58.0,"az":305.0,"ss":32.0,"used":true,"gnssid":6,"svid":2})"},
    };
    for (const ROW& row : rows) {
        int status = 0;
        const std::vector<std::string> lines = RunNmeadump("--gpsd " + devio::test::CapturePath(row.capture), status);
        EXPECT_EQ(status, 0) << row.legend;
        const bool found = std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(row.expected) != std::string::npos;
        });
        EXPECT_TRUE(found) << row.legend;
    }
}

}  // namespace
