// Sentence checksum and fields, field parsers, satellite numbering.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "devio/NmeaTestSupport.h"
#include "platform/devio/SatelliteRecord.h"
#include "platform/devio/nmea/CNmeaSentence.h"
#include "platform/devio/nmea/NmeaFields.h"
#include "platform/devio/nmea/SatelliteMapping.h"

namespace devio {
namespace {

using test::WithChecksum;
using Status = CNmeaSentence::Status;

TEST(NmeaSentence, ChecksumAndAddress)
{
    struct ROW { const char* legend; std::string text; Status status; const char* talker; const char* type; };
    const ROW rows[] = {
        {"good, from a capture", "$GPZDA,131519.00,03,02,2016,00,00*6C", Status::Ok, "GP", "ZDA"},
        {"lower-case checksum digits", "$GPZDA,131519.00,03,02,2016,00,00*6c", Status::Ok, "GP", "ZDA"},
        {"one bit flipped in the body", "$GPZDA,131519.00,03,02,2017,00,00*6C", Status::BadChecksum, "", ""},
        {"no checksum at all", "$GPTXT,TELIT SW Version: SL869 v3.1.2.1 -STD -N96", Status::NoChecksum, "", ""},
        {"checksum cut to one digit", "$GPZDA,131519.00,03,02,2016,00,00*6", Status::Malformed, "", ""},
        {"checksum digits not hex", "$GPZDA,131519.00,03,02,2016,00,00*6G", Status::Malformed, "", ""},
        {"proprietary: no talker", WithChecksum("PGLOR,1,FIX,1.0,1.0"), Status::Ok, "", "PGLOR"},
        {"encapsulated '!' sentence", "!" + WithChecksum("AIVDM,1,1,,A,13aEOK,0").substr(1), Status::Ok, "AI", "VDM"},
        {"address of odd length", WithChecksum("GPGGAX,1"), Status::Ok, "", "GPGGAX"},
    };
    for (const ROW& row : rows) {
        CNmeaSentence sentence;
        EXPECT_EQ(sentence.Parse(row.text), row.status) << row.legend;
        EXPECT_EQ(sentence.Talker(), row.talker) << row.legend;
        EXPECT_EQ(sentence.Type(), row.type) << row.legend;
    }
}

TEST(NmeaSentence, FieldsIncludingEmptyOnes)
{
    CNmeaSentence sentence;
    const std::string text = WithChecksum("GPGSA,A,3,,07,,");  // the fields are views into it
    ASSERT_EQ(sentence.Parse(text), Status::Ok);
    ASSERT_TRUE(sentence.Split());
    ASSERT_EQ(sentence.FieldCount(), 6u);
    const char* expected[] = {"A", "3", "", "07", "", ""};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(sentence.Field(i), expected[i]) << i;
    EXPECT_EQ(sentence.Field(6), "") << "past the end reads as empty";

    // "GPXXX" and n commas hold n data fields.
    const std::string most = WithChecksum("GPXXX" + std::string(CNmeaSentence::kMaxFields, ','));
    ASSERT_EQ(sentence.Parse(most), Status::Ok);
    EXPECT_TRUE(sentence.Split()) << "kMaxFields fields";
    EXPECT_EQ(sentence.FieldCount(), CNmeaSentence::kMaxFields);
    const std::string tooMany = WithChecksum("GPXXX" + std::string(CNmeaSentence::kMaxFields + 1, ','));
    ASSERT_EQ(sentence.Parse(tooMany), Status::Ok);
    EXPECT_FALSE(sentence.Split()) << "one field more than kMaxFields";
}

TEST(NmeaFields, Numbers)
{
    struct ROW { const char* legend; const char* text; bool ok; double value; };
    const ROW rows[] = {
        {"integer", "42", true, 42},           {"fraction", "0.95", true, 0.95},
        {"negative", "-33.8", true, -33.8},    {"explicit plus", "+1.5", true, 1.5},
        {"trailing dot", "12.", true, 12},     {"empty", "", false, 0},
        {"sign only", "-", false, 0},          {"two dots", "1.2.3", false, 0},
        {"exponent", "1e3", false, 0},         {"not a number", "nan", false, 0},
        {"space", " 1", false, 0},
    };
    for (const ROW& row : rows) {
        double value = -1;
        EXPECT_EQ(ParseDecimal(row.text, value), row.ok) << row.legend;
        if (row.ok) {
            EXPECT_DOUBLE_EQ(value, row.value) << row.legend;
        }
    }
    unsigned u = 0;
    EXPECT_FALSE(ParseUnsigned("-1", u));
    EXPECT_FALSE(ParseUnsigned("99999999999", u)) << "overflow";
    int i = 0;
    EXPECT_TRUE(ParseSigned("+00", i) && i == 0);
    EXPECT_TRUE(ParseSigned("-05", i) && i == -5);
}

TEST(NmeaFields, UtcTime)
{
    struct ROW { const char* legend; const char* text; bool ok; int h, m, s, ms; };
    const ROW rows[] = {
        {"no fraction", "131519", true, 13, 15, 19, 0},
        {"hundredths", "003956.00", true, 0, 39, 56, 0},
        {"milliseconds", "053229.438", true, 5, 32, 29, 438},
        {"tenths", "132819.6", true, 13, 28, 19, 600},
        {"more digits are cut, not rounded", "120000.9996", true, 12, 0, 0, 999},
        {"leap second", "235960", true, 23, 59, 60, 0},
        {"hour 24", "240000", false, 0, 0, 0, 0},
        {"minute 60", "126000", false, 0, 0, 0, 0},
        {"too short", "13151", false, 0, 0, 0, 0},
        {"comma instead of dot", "131519,00", false, 0, 0, 0, 0},
    };
    for (const ROW& row : rows) {
        UTC_TIME t;
        ASSERT_EQ(ParseUtcTime(row.text, t), row.ok) << row.legend;
        if (!row.ok)
            continue;
        EXPECT_EQ(t.hour, row.h) << row.legend;
        EXPECT_EQ(t.minute, row.m) << row.legend;
        EXPECT_EQ(t.second, row.s) << row.legend;
        EXPECT_EQ(t.millisecond, row.ms) << row.legend;
    }
}

TEST(NmeaFields, Coordinates)
{
    struct ROW { const char* legend; bool latitude; const char* value; const char* hemisphere; bool ok; double degrees; };
    const ROW rows[] = {
        {"south latitude", true, "4552.65403", "S", true, -(45 + 52.65403 / 60)},
        {"west longitude, 3 degree digits", false, "12157.6709", "W", true, -(121 + 57.6709 / 60)},
        {"leading zero longitude", false, "00908.43828", "W", true, -(9 + 8.43828 / 60)},
        {"eight decimals", true, "4134.49795459", "N", true, 41 + 34.49795459 / 60},
        {"no fraction", true, "5000", "N", true, 50},
        {"east", false, "01958.828604", "E", true, 19 + 58.828604 / 60},
        {"minutes 60", true, "4560.0", "N", false, 0},
        {"latitude over 90", true, "9100.0", "N", false, 0},
        {"longitude hemisphere on a latitude", true, "4552.65403", "E", false, 0},
        {"hemisphere missing", true, "4552.65403", "", false, 0},
        {"too few digits", true, "52.6", "N", false, 0},
        {"letters", true, "45a2.6", "N", false, 0},
    };
    for (const ROW& row : rows) {
        double degrees = 0;
        const bool ok = row.latitude ? ParseLatitude(row.value, row.hemisphere, degrees)
                                     : ParseLongitude(row.value, row.hemisphere, degrees);
        ASSERT_EQ(ok, row.ok) << row.legend;
        if (ok) {
            EXPECT_NEAR(degrees, row.degrees, 1e-12) << row.legend;
        }
    }
}

TEST(SatelliteMapping, EveryTalkerAndNumberingScheme)
{
    using S = SATELLITE_RECORD;
    struct ROW { const char* legend; const char* talker; unsigned id; int system; int number; };
    const ROW rows[] = {
        {"GPS", "GP", 5, S::GPS, 5},
        {"GPS, highest", "GP", 32, S::GPS, 32},
        {"SBAS under GP: NMEA 33 is PRN 120", "GP", 33, S::SBAS, 120},
        {"SBAS, highest", "GN", 64, S::SBAS, 151},
        {"GLONASS under GN: 65 is slot 1", "GN", 65, S::GLO, 1},
        {"GLONASS under GL", "GL", 85, S::GLO, 21},
        {"GLONASS slot numbering under GL", "GL", 5, S::GLO, 5},
        {"QZSS short numbering under GQ", "GQ", 2, S::QZSS, 194},
        {"QZSS under GP", "GP", 195, S::QZSS, 195},
        {"BeiDou under BD", "BD", 13, S::BeiDou, 13},
        {"BeiDou 401 numbering", "GB", 437, S::BeiDou, 37},
        {"BeiDou under GP in older captures", "GP", 214, S::BeiDou, 14},
        {"Galileo under GA", "GA", 36, S::Galileo, 36},
        {"Galileo 33 is Galileo, not SBAS", "GA", 33, S::Galileo, 33},
        {"Galileo 301 numbering", "GN", 301, S::Galileo, 1},
        {"NavIC has no system code", "GI", 3, S::Unused, 3},
        {"id 0", "GP", 0, S::Unused, 0},
        {"between the ranges", "GP", 150, S::Unused, 150},
    };
    for (const ROW& row : rows) {
        const SAT_ID id = MapSatellite(row.talker, row.id);
        EXPECT_EQ(id.system, row.system) << row.legend;
        EXPECT_EQ(id.number, row.number) << row.legend;
    }
    EXPECT_EQ(TalkerOfSystemId(3), "GA");
    EXPECT_EQ(TalkerOfSystemId(4), "GB");
    EXPECT_EQ(TalkerOfSystemId(9), "");
}

}  // namespace
}  // namespace devio
