// Writing through the command language: set-then-print round trips, refused values, ";"
// joining, restarts, files and events.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "RcvSimTestUtil.h"
#include "tools/rcvsim/CommandLine.h"
#include "tools/rcvsim/CoordText.h"

namespace rcvsim::test {
namespace {

struct RoundTrip {
    const char* set;
    const char* print;
    const char* expected;
    const char* legend;
};
const RoundTrip kRoundTrips[] = {
    {"set,/dev/ser/b/rtscts,on", "print,dev/ser/b/rtscts", "on", "leading slash form"},
    {"set,dev/tcp/c/parity,feven", "print,dev/tcp/c/parity", "feven", "parity keyword"},
    {"set,dev/ser/c/echo,/dev/ser/a", "print,dev/ser/c/echo", "/dev/ser/a", "echo target"},
    {"set,dev/ser/d/eoff,\"+++,ATH\"", "print,dev/ser/d/eoff", "+++,ATH", "quoted text with comma"},
    {"set,log/imp,{n,y}", "print,log/imp", "{n,y}", "y/n pair"},
    {"set,log/sc/period,0.5", "print,log/sc/period", "0.50", "real printed with two decimals"},
    {"set,lock/gps/l5,{off,on}", "print,lock/gps/l5", "{off,on}", "switch pair"},
    {"set,lock/waas/sat,{120=y,133=y}", "print,lock/waas/sat/133", "y", "lock list item"},
    {"set,raw/corr/ca/code,normal", "print,raw/corr/ca/code", "off", "normal reads as off"},
    {"set,raw/corr/ca/carrier,mpnew", "print,raw/corr/ca/carrier", "on", "mpnew reads as on"},
    {"set,/par/ant/inp,ext", "print,/par/ant/inp", "ext", "/par/ path form"},
    {"set,com/a/var/2/value,\"alice\"", "print,com/a/var/2/value", "alice", "script variable"},
    {"set,/msg/def/nmea/GGA,{0.500000,0.000000,10,0x3}", "print,/msg/def/nmea/GGA",
     "{0.50,0.00,10,0x3}", "default schedule"},
    {"set,/cur/file/a,\"survey1.fnk\"", "print,/cur/file/a", "/log/survey1.fnk", "new current file"},
    {"set,pwr/switch/3,auto", "print,pwr/switch:on", "{1=on,2=auto,3=auto,4=on}", "switch list"},
    {"set,ref/avg/list/pnts/01/option/protect,on", "print,ref/avg/list/pnts/01/protect", "on",
     "protect order"},
};

TEST(SetThenPrint, ReadsBackWhatWasWritten) {
    for (const auto& row : kRoundTrips) {
        SimReceiver sim;
        const Reply set = sim.Run(row.set);
        EXPECT_EQ(set.status, 0) << row.set << " (" << row.legend << "): " << set.text;
        EXPECT_EQ(sim.Run(row.print).text, row.expected) << row.legend;
    }
}

struct ErrorRow {
    const char* command;
    const char* reply;
    const char* legend;
};
const ErrorRow kErrors[] = {
    {"bogus,rcv/model", "{2,,wrong command}", "unknown command word"},
    {"", "{2,,wrong command}", "empty line"},
    {"print,rcv/modle", "{2,,wrong 1st parameter}", "unknown path"},
    {"print,com/a/var/9/name", "{2,,wrong 1st parameter}", "undefined script variable"},
    {"set,rcv/model,X", "{2,,wrong 1st parameter}", "read-only parameter"},
    {"set,dev/ser/a/rate,12345", "{2,,wrong 2nd parameter}", "rate not in the baud table"},
    {"set,dev/ser/a/rate", "{2,,wrong 2nd parameter}", "value missing"},
    {"set,dev/ser/a/rtscts,On", "{2,,wrong 2nd parameter}", "keywords are case-sensitive"},
    {"set,log/rot/sc/period,abc", "{2,,wrong 2nd parameter}", "integer expected"},
    {"set,pos/elm,91", "{2,,wrong 2nd parameter}", "integer out of range"},
    {"set,log/imp,{y,x}", "{2,,wrong 2nd parameter}", "flag pair letter"},
    {"set,lock/waas/sat,{999=y}", "{2,,wrong 2nd parameter}", "unknown satellite"},
    {"set,ref/arp//geo,{W84,N95d00m00s,E010d00m00s,1}", "{2,,wrong 2nd parameter}", "latitude > 90"},
    {"set,dev/ser/a/echo,/dev/ser/q", "{2,,wrong 2nd parameter}", "echo to an unknown port"},
    {"set,reset,no", "{2,,wrong 2nd parameter}", "reset needs yes"},
    {"em,/dev/ser/z,/msg/nmea/GGA", "{2,,wrong 1st parameter}", "unknown port"},
    {"em,/dev/ser/a,/msg/nmea/XYZ", "{2,,wrong 2nd parameter}", "unknown message"},
    {"em,/dev/ser/a,/msg/nmea/GGA:{1,0,0}", "{2,,wrong 2nd parameter}", "three schedule fields"},
    {"em,/dev/ser/a,/msg/nmea/GGA:{1,0,0,7}", "{2,,wrong 2nd parameter}", "flags not hex"},
    {"dm,/dev/xyz", "{2,,wrong 1st parameter}", "dm on unknown port"},
    {"list,/par/dev/xyz", "{2,,wrong 1st parameter}", "unknown class"},
    {"list,/msg/foo", "{2,,wrong 1st parameter}", "unknown group"},
    {"remove,\"/log/nothere.fnk\"", "{2,,wrong 1st parameter}", "no such file"},
    {"create,\"/etc/passwd\"", "{2,,wrong 1st parameter}", "outside the log folder"},
    {"event,\"no equals sign\"", "{2,,wrong 1st parameter}", "event needs name=value"},
    {"init,/nothing/here", "{2,,wrong 1st parameter}", "init of an unknown item"},
};

TEST(ErrorReplies, AreStatusMinusTwoWithTheReceiversReason) {
    SimReceiver sim;
    for (const auto& row : kErrors) {
        const Reply r = sim.Run(row.command);
        EXPECT_EQ(r.status, -2) << row.command << " (" << row.legend << ")";
        EXPECT_EQ(r.text, row.reply) << row.command << " (" << row.legend << ")";
    }
}

TEST(JoinedCommands, RunInOrderAndStopAtTheFirstFailure) {
    SimReceiver sim;
    EXPECT_EQ(sim.Run("set,dev/ser/b/rate,9600;set,dev/ser/b/eoff,\"a;b\";set,dev/ser/b/bits,7").status, 0);
    EXPECT_EQ(sim.Run("print,dev/ser/b/rate;print,dev/ser/b/eoff;print,dev/ser/b/bits").text, "9600\na;b\n7")
        << "a semicolon inside quotes does not split";

    const Reply stopped = sim.Run("set,dev/ser/c/rate,4800;set,dev/ser/c/parity,bad;set,dev/ser/c/bits,5");
    EXPECT_EQ(stopped.text, "{2,,wrong 2nd parameter}");
    EXPECT_EQ(sim.Print("dev/ser/c/rate"), "4800") << "commands before the failure ran";
    EXPECT_EQ(sim.Print("dev/ser/c/parity"), "N") << "the refused value leaves the old one";
    EXPECT_EQ(sim.Print("dev/ser/c/bits"), "8") << "commands after the failure did not";
}

TEST(Coordinates, WritingGeodeticRewritesCartesianAndBack) {
    SimReceiver sim;
    const Geodetic g{45.5, -7.25, 250.0};
    ASSERT_EQ(sim.Run("set,ref/arp//geo," + CoordText::FormatGeo(g)).status, 0);
    const auto e = CoordText::ParseXyz(sim.Print("ref/arp/gps/xyz"));
    ASSERT_TRUE(e);
    const Ecef want = geodesy::ToCartesian(g);
    EXPECT_NEAR(e->x, want.x, 1e-3);
    EXPECT_NEAR(e->z, want.z, 1e-3);
    ASSERT_EQ(sim.Run("set,ref/pos//xyz,{W84,2845455.0000,2160422.0000,5265220.0000}").status, 0);
    const auto back = CoordText::ParseGeo(sim.Print("ref/pos/gps/geo"));
    ASSERT_TRUE(back);
    const Ecef again = geodesy::ToCartesian(*back);
    EXPECT_NEAR(again.x, 2845455.0, 1e-3);
    EXPECT_NEAR(again.y, 2160422.0, 1e-3);
}

TEST(Restart, ResetsParametersButKeepsLineSettingsAndRaisesEvent7) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("set,dev/ser/a/rate,38400;set,pos/elm,20;em,/dev/ser/a,/msg/nmea/GGA").status, 0);
    sim.rx.Poll();
    const Reply r = sim.Run("set,reset,yes");
    EXPECT_EQ(r.effect, ReplyEffect::NoAnswer) << "a restarting receiver does not answer";
    EXPECT_EQ(sim.Print("dev/ser/a/rate"), "38400");
    EXPECT_EQ(sim.Print("pos/elm"), "5");
    EXPECT_EQ(sim.Print("out/dev/ser/a:on"), "{}");
    const auto out = sim.rx.Poll();
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].port, "") << "events go to every connection";
    EXPECT_EQ(out[0].bytes, "@E7,0,0:*0000\r\n");
}

TEST(Init, SetupIsUnknownToOldFirmwareAndParWorksEverywhere) {
    SimOptions old;
    old.oldFirmware = true;
    SimReceiver oldSim(old), newSim;
    EXPECT_EQ(oldSim.Run("init,/setup/").text, "{2,,wrong command}");
    EXPECT_EQ(oldSim.Run("init,/par/").status, 0);
    ASSERT_EQ(newSim.Run("set,pos/elm,30").status, 0);
    EXPECT_EQ(newSim.Run("init,/setup/").status, 0);
    EXPECT_EQ(newSim.Print("pos/elm"), "5");
}

TEST(ScriptPort, ClearingRemovesTheDriverAndItsVariables) {
    SimReceiver sim;
    ASSERT_TRUE(Matches(sim.Print("\"/com/a/script/version&size\""), "[1-9][0-9]*"));
    ASSERT_EQ(sim.Run("set,/par/com/a/clr,y").status, 0);
    EXPECT_EQ(sim.Run("print,com/a/var/1/name").text, "{2,,wrong 1st parameter}");
    EXPECT_EQ(sim.Print("com/a/scripts"), "{}");
    EXPECT_EQ(sim.Run("print,/com/a/script/version&size").status, -2);
}

// Files written in blocks appear only whole, after the size check; bad blocks are refused.
TEST(Upload, BlocksAppearOnlyAfterAMatchingSize) {
    const std::string up = "set,\"/log/t.txt\"&upload:", commit = "set,\"/log/t.txt\"&commit,";
    struct Row {
        const char* legend;
        std::vector<std::string> commands;
        const char* lastReply;
        const char* content;   // nullptr: no such file afterwards
    };
    const Row rows[] = {
        {"two blocks and their size make the file", {up + "{0},6869", up + "{2},21", commit + "3"}, "", "hi!"},
        {"an offset past the staged bytes", {up + "{0},6869", up + "{5},21"}, "{2,,wrong 1st parameter}", nullptr},
        {"a later block without a start", {up + "{2},21"}, "{2,,wrong 1st parameter}", nullptr},
        {"an odd number of digits", {up + "{0},686"}, "{2,,wrong 2nd parameter}", nullptr},
        {"a size that does not match", {up + "{0},6869", commit + "5"}, "{2,,wrong 2nd parameter}", nullptr},
        {"discarded blocks cannot be committed", {up + "{0},6869", "set,\"/log/t.txt\"&discard,y", commit + "2"},
         "{2,,wrong 1st parameter}", nullptr},
        {"a path outside the writable folders", {"set,\"/rcv/t\"&upload:{0},00"}, "{2,,wrong 1st parameter}", nullptr},
    };
    for (const Row& row : rows) {
        SimReceiver sim;
        Reply last;
        for (const std::string& c : row.commands) last = sim.Run(c);
        EXPECT_EQ(last.text, row.lastReply) << row.legend;
        const Reply file = sim.Run("print,\"/log/t.txt\"&content");
        if (row.content) {
            EXPECT_EQ(file.text, row.content) << row.legend;
        }
        else EXPECT_LT(file.status, 0) << row.legend << ": a half file is visible";
    }
}

TEST(LogFiles, CreateListReadAndRemove) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("create,\"/log/extra.fnk\"").status, 0);
    EXPECT_EQ(sim.Run("create,\"/log/extra.fnk\"").status, -2) << "exists already";
    const std::string listing = sim.Print("/log/&[name,size,time]");
    EXPECT_NE(listing.find("{extra.fnk,0,"), std::string::npos) << listing;
    EXPECT_EQ(sim.Print("\"/log/extra.fnk\"&size"), "0");
    ASSERT_EQ(sim.Run("remove,\"/log/extra.fnk\"").status, 0);
    EXPECT_EQ(sim.Print("/log/&[name,size,time]").find("extra.fnk"), std::string::npos);
}

TEST(LogFiles, EventsAreRecordedInTheCurrentFileAndTakeDiskSpace) {
    SimReceiver sim;
    const std::string freeBefore = sim.Print("dev/blk/a/free");
    for (const char* e : {"_SIT=Hill \"top\"", "_ANH=1.500000s", "_DYM=STATIC"})
        ASSERT_EQ(sim.Run(std::string("event,\"") + e + "\"").status, 0);
    const std::string current = sim.Print("/cur/file/a");
    const std::string content = sim.Print("\"" + current + "\"&content");
    EXPECT_NE(content.find("_SIT=Hill \"top\""), std::string::npos);
    EXPECT_LT(content.find("_SIT="), content.find("_DYM=STATIC")) << "in the order sent";
    EXPECT_LT(std::stoll(sim.Print("dev/blk/a/free")), std::stoll(freeBefore));
    const std::string piece = sim.Print("\"" + current + "\"&content:{0,10}");
    EXPECT_EQ(piece, content.substr(0, 10));
}

TEST(LogFiles, ForcedAndScheduledRotationCountAndKeepOnlyTheConfiguredFiles) {
    SimReceiver sim;
    const std::string before = sim.Print("/cur/file/a");
    ASSERT_EQ(sim.Run("set,log/rot/force,on").status, 0);
    EXPECT_NE(sim.Print("/cur/file/a"), before) << "forced rotation starts a new file";
    EXPECT_EQ(sim.Print("log/rot/count"), "1");
    ASSERT_EQ(sim.Run("set,log/rot/sc/period,60;set,log/rot/sc/count,2;set,log/rot/rmold,on;"
                      "set,log/rot/mode,on").status, 0);
    for (int step = 0; step < 10 * 60; ++step) {
        sim.clock->Advance(1.0);
        sim.rx.Poll();
    }
    EXPECT_EQ(sim.Print("log/rot/count"), "11") << "one a minute on top of the forced one";
    const std::string listing = sim.Print("/log/&name");
    EXPECT_EQ(std::count(listing.begin(), listing.end(), ','), 1) << listing;
}

// The clock starts at 10:00:00 UTC; rotations fall on the multiples of the period after the
// phase, however the clock steps.
TEST(LogFiles, RotationFollowsPeriodAndPhase) {
    struct Row { const char* legend; int period, phase, seconds, step; const char* count; };
    const Row rows[] = {
        {"a second before the phase", 600, 120, 119, 1, "0"},
        {"at the phase", 600, 120, 120, 1, "1"},
        {"10:02, 10:12 and 10:22", 600, 120, 1320, 1, "3"},
        {"a clock that jumps gets a file per boundary", 600, 120, 1320, 1320, "3"},
        {"a jump of a day catches up at most 64", 60, 0, 86400, 86400, "64"},
    };
    for (const Row& row : rows) {
        SimReceiver sim;
        ASSERT_EQ(sim.Run("set,log/rot/sc/period," + std::to_string(row.period) + ";set,log/rot/sc/phase," +
                          std::to_string(row.phase) + ";set,log/rot/mode,on").status, 0);
        sim.rx.Poll();
        for (int t = 0; t < row.seconds; t += row.step) {
            sim.clock->Advance(row.step);
            sim.rx.Poll();
        }
        EXPECT_EQ(sim.Print("log/rot/count"), row.count) << row.legend;
    }
}

// A season's folder: dozens of files, some hundreds of megabytes, whose bytes are made when
// read: the same piece twice, pieces that join, and the medium's free space counts them.
TEST(LogFiles, FullFolderServesLargeFilesByPiece) {
    SimOptions options;
    options.fullLogFolder = true;
    SimReceiver sim(options);
    const std::string sizes = sim.Print("/log/&size");
    std::vector<long long> each;
    for (const auto& v : CommandLine::SplitTopLevel(CommandLine::StripBraces(sizes), ',')) each.push_back(std::stoll(v));
    EXPECT_GE(each.size(), 24u);
    const long long largest = *std::max_element(each.begin(), each.end());
    EXPECT_GE(largest, 300ll << 20);
    const std::string names = sim.Print("/log/&name");
    const auto all = CommandLine::SplitTopLevel(CommandLine::StripBraces(names), ',');
    const std::string big = "\"/log/" + all[std::max_element(each.begin(), each.end()) - each.begin()] + "\"&content:";
    const std::string at = std::to_string(largest - 100000);
    const std::string piece = sim.Print(big + "{" + at + ",65536}");
    EXPECT_EQ(piece.size(), 65536u);
    EXPECT_EQ(sim.Print(big + "{" + at + ",65536}"), piece);
    EXPECT_EQ(sim.Print(big + "{" + at + ",13}") + sim.Print(big + "{" + std::to_string(largest - 100000 + 13) + ",65523}"), piece);
    EXPECT_EQ(sim.Print(big + "{" + std::to_string(largest - 10) + ",65536}").size(), 10u) << "the end of the file";
    const long long total = std::accumulate(each.begin(), each.end(), 0ll);
    EXPECT_LE(std::stoll(sim.Print("dev/blk/a/free")), std::stoll(sim.Print("dev/blk/a/size")) - total);
}

TEST(StoredPoints, AddCopiesTheCurrentPointAndProtectedOnesStay) {
    SimReceiver sim;
    ASSERT_EQ(sim.Run("set,ref/avg/list/curpnt/name,NEWPT;set,ref/avg/list/pnts/add,5").status, 0);
    EXPECT_EQ(sim.Print("ref/avg/list/pnts/05/name"), "NEWPT");
    EXPECT_EQ(sim.Print("ref/avg/list/pnts/05/auto"), "on");
    ASSERT_EQ(sim.Run("set,ref/avg/list/pnts/05/option/protect,on").status, 0);
    EXPECT_EQ(sim.Run("set,ref/avg/list/pnts/del,5").status, -2);
    ASSERT_EQ(sim.Run("set,ref/avg/list/pnts/del,0").status, 0);
    EXPECT_EQ(sim.Run("print,ref/avg/list/pnts/00/name").status, -2);
}

}  // namespace
}  // namespace rcvsim::test
