// YMODEM: the framing, the receiving machine fed by hand, and both blocking ends against each
// other over a socket pair.
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <fcntl.h>

#include <future>
#include <random>
#include <string>

#include "platform/devio/CLink.h"
#include "platform/devio/ymodem/CLinkByteStream.h"
#include "platform/devio/ymodem/CYmodemReceiveMachine.h"
#include "platform/devio/ymodem/YmodemBlock.h"
#include "platform/devio/ymodem/YmodemTransfer.h"

namespace {

using namespace devio;
using namespace devio::ymodem;
using Machine = CYmodemReceiveMachine;

std::string Bytes(std::size_t n, std::uint32_t seed) {
    std::mt19937 rng(seed);
    std::string s(n, '\0');
    for (auto& c : s) c = static_cast<char>(rng() & 0xff);
    return s;
}

TEST(YmodemFraming, CrcOfTheCheckString) {
    // The catalogued check value of CRC-16/XMODEM.
    EXPECT_EQ(Crc16("123456789"), 0x31C3);
    EXPECT_EQ(Crc16(""), 0);
}

TEST(YmodemFraming, BlocksParseBackOrSayWhatIsWrong) {
    struct Row {
        const char* legend;
        std::size_t dataSize;
        std::size_t flipAt;   // byte of the encoded block to change; npos: none
        std::size_t cut;      // bytes kept; npos: all
        EBlockCheck expected;
    };
    constexpr auto kNone = std::string::npos;
    const Row rows[] = {
        {"short data goes in a 128-byte block", 100, kNone, kNone, EBlockCheck::Ok},
        {"129 bytes need a 1024-byte block", 129, kNone, kNone, EBlockCheck::Ok},
        {"a full long block", 1024, kNone, kNone, EBlockCheck::Ok},
        {"a flipped data byte breaks the CRC", 1024, 500, kNone, EBlockCheck::BadCrc},
        {"a flipped CRC byte", 128, 132, kNone, EBlockCheck::BadCrc},
        {"a flipped block number breaks its complement", 1024, 1, kNone, EBlockCheck::BadComplement},
        {"a block cut short waits for more", 1024, kNone, 700, EBlockCheck::Incomplete},
        {"a start byte that is no SOH or STX", 128, 0, kNone, EBlockCheck::NotABlock},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.legend);
        const std::string data = Bytes(row.dataSize, 7);
        std::string wire = EncodeBlock(9, data);
        ASSERT_EQ(wire.size(), (row.dataSize <= 128 ? 128u : 1024u) + kFraming);
        if (row.flipAt != kNone) wire[row.flipAt] = static_cast<char>(wire[row.flipAt] ^ (row.flipAt == 0 ? 0x40 : 0x01));
        if (row.cut != kNone) wire.resize(row.cut);
        BLOCK block;
        std::size_t need = 0;
        EXPECT_EQ(ParseBlock(wire, block, need), row.expected);
        if (row.expected == EBlockCheck::Ok) {
            EXPECT_EQ(block.number, 9);
            EXPECT_EQ(block.data.substr(0, data.size()), data);
            EXPECT_EQ(block.data.find_first_not_of(kPad, data.size()), std::string_view::npos);
        }
    }
}

TEST(YmodemFraming, HeaderBlockCarriesNameAndSize) {
    struct Row {
        const char* legend;
        std::string data;
        bool parses;
        std::string name;
        std::optional<std::uint64_t> size;
    };
    const Row rows[] = {
        {"name and size", std::string("fw.img\0" "12345", 12), true, "fw.img", 12345},
        {"size followed by the date and mode lrzsz sends", std::string("a\0" "77 14567 100644 0", 19), true, "a", 77},
        {"no size", std::string("a\0\0", 3), true, "a", std::nullopt},
        {"empty name ends the batch", std::string(128, '\0'), true, "", std::nullopt},
        {"name without its NUL", "abc", false, "", std::nullopt},
        {"size that is no number", std::string("a\0" "12x", 5), false, "", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.legend);
        const auto header = ParseHeader(row.data);
        ASSERT_EQ(header.has_value(), row.parses);
        if (!header) continue;
        EXPECT_EQ(header->name, row.name);
        EXPECT_EQ(header->size, row.size);
    }
    BLOCK block;
    std::size_t need = 0;
    const std::string wire = EncodeHeaderBlock(FILE_HEADER{"x.fnkfw", 300000});
    ASSERT_EQ(ParseBlock(wire, block, need), EBlockCheck::Ok);
    EXPECT_EQ(block.number, 0);
    EXPECT_EQ(ParseHeader(block.data)->size, 300000u);
}

// The receiving machine fed a scripted sender, one step at a time.
TEST(YmodemReceiveMachine, AnswersEachStepOfABatch) {
    Machine machine;
    EXPECT_EQ(machine.Start(), "C");
    std::string reply;
    const std::string data = Bytes(1500, 3);
    struct Step {
        const char* legend;
        std::string wire;
        std::string answer;
        Machine::EState state;
    };
    std::string corrupt = EncodeBlock(2, std::string_view(data).substr(1024));
    corrupt[40] ^= 0x10;
    const Step steps[] = {
        {"noise before the header is ignored", "xyz", "", Machine::EState::WaitHeader},
        {"block 0 is taken and data asked for", EncodeHeaderBlock({"f", 1500}), "\x06" "C", Machine::EState::WaitData},
        {"block 1", EncodeBlock(1, std::string_view(data).substr(0, 1024)), "\x06", Machine::EState::WaitData},
        {"a repeat of block 1 (our ACK was lost) is acknowledged again", EncodeBlock(1, std::string_view(data).substr(0, 1024)),
         "\x06", Machine::EState::WaitData},
        {"a corrupt block 2 is refused", corrupt, "\x15", Machine::EState::WaitData},
        {"block 2 again", EncodeBlock(2, std::string_view(data).substr(1024)), "\x06", Machine::EState::WaitData},
        {"the first EOT is doubted", "\x04", "\x15", Machine::EState::WaitData},
        {"the second EOT ends the file and asks for the next", "\x04", "\x06" "C", Machine::EState::WaitHeader},
        {"the empty block 0 ends the batch", EncodeHeaderBlock({}), "\x06", Machine::EState::Finished},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.legend);
        reply.clear();
        // Split anywhere: one byte at a time.
        for (const char c : step.wire) machine.Feed(std::string_view(&c, 1), reply);
        EXPECT_EQ(reply, step.answer);
        EXPECT_EQ(machine.State(), step.state);
    }
    EXPECT_EQ(machine.Data(), data);
    EXPECT_EQ(machine.FilesAccepted(), 1u);
}

TEST(YmodemReceiveMachine, EndsTransfersThatCannotGoOn) {
    struct Row {
        const char* legend;
        std::function<void(Machine&, std::string&)> script;
        Machine::EState state;
        Machine::EFailure failure;
    };
    const auto header = [](Machine& m, std::string& r, std::uint64_t size) { m.Feed(EncodeHeaderBlock({"f", size}), r); };
    const Row rows[] = {
        {"the sender's CAN CAN",
         [&](Machine& m, std::string& r) { header(m, r, 10); m.Feed("\x18\x18", r); }, Machine::EState::Cancelled, Machine::EFailure::None},
        {"a lone CAN is noise",
         [&](Machine& m, std::string& r) { header(m, r, 10); m.Feed("\x18" "a", r); }, Machine::EState::WaitData, Machine::EFailure::None},
        {"a block that skips one",
         [&](Machine& m, std::string& r) { header(m, r, 3000); m.Feed(EncodeBlock(2, "x"), r); }, Machine::EState::Failed,
         Machine::EFailure::OutOfSequence},
        {"silence beyond the limit",
         [&](Machine& m, std::string& r) { header(m, r, 10); for (int i = 0; i < 11; ++i) m.OnSilence(r); }, Machine::EState::Failed,
         Machine::EFailure::TooManyErrors},
        {"an announced size over the limit",
         [&](Machine& m, std::string& r) { header(m, r, (64ull << 20) + 1); }, Machine::EState::Failed, Machine::EFailure::TooLarge},
        {"fewer bytes than announced",
         [&](Machine& m, std::string& r) { header(m, r, 2000); m.Feed(EncodeBlock(1, "x"), r); m.Feed("\x04\x04", r); },
         Machine::EState::Failed, Machine::EFailure::Refused},
        {"a silent wait for the sender to begin is no error",
         [&](Machine& m, std::string& r) { for (int i = 0; i < 50; ++i) m.OnSilence(r); }, Machine::EState::WaitHeader,
         Machine::EFailure::None},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.legend);
        Machine machine;
        std::string reply = machine.Start();
        row.script(machine, reply);
        EXPECT_EQ(machine.State(), row.state);
        EXPECT_EQ(machine.Failure(), row.failure);
        if (row.state == Machine::EState::Failed) {
            EXPECT_EQ(reply.substr(reply.size() - 2), "\x18\x18");
        }
    }
}

TEST(YmodemReceiveMachine, FileCheckRefusesAtTheLastEot) {
    Machine machine(Machine::LIMITS{}, [](const FILE_HEADER&, std::string_view data) { return data == "good"; });
    std::string reply = machine.Start();
    machine.Feed(EncodeHeaderBlock({"f", 4}), reply);
    machine.Feed(EncodeBlock(1, "bad!"), reply);
    reply.clear();
    machine.Feed("\x04\x04", reply);
    EXPECT_EQ(reply, std::string("\x15\x18\x18"));
    EXPECT_EQ(machine.Failure(), Machine::EFailure::Refused);
}

TEST(YmodemReceiveMachine, AFreshHeaderStartsOverInTheMiddleOfAFile) {
    Machine machine;
    std::string reply = machine.Start();
    machine.Feed(EncodeHeaderBlock({"old", 5000}), reply);
    machine.Feed(EncodeBlock(1, Bytes(1024, 1)), reply);
    machine.Feed(EncodeBlock(2, Bytes(1024, 2)), reply);
    reply.clear();
    machine.Feed(EncodeHeaderBlock({"new", 3}), reply);
    EXPECT_EQ(reply, "\x06" "C");
    machine.Feed(EncodeBlock(1, "abc"), reply);
    machine.Feed("\x04\x04", reply);
    machine.Feed(EncodeHeaderBlock({}), reply);
    EXPECT_EQ(machine.State(), Machine::EState::Finished);
    EXPECT_EQ(machine.Header().name, "new");
    EXPECT_EQ(machine.Data(), "abc");
}

// Both blocking ends over a socket pair.
struct LinkPair {
    std::unique_ptr<CLink> a, b;
    LinkPair() {
        int fds[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, fds), 0);
        a = std::make_unique<CLink>(nullptr, fds[0]);
        b = std::make_unique<CLink>(nullptr, fds[1]);
    }
};

YMODEM_TIMING Quick() {
    YMODEM_TIMING t;
    t.startTimeoutMs = 10000;
    t.answerTimeoutMs = 2000;
    t.maxTries = 4;
    return t;
}

TEST(YmodemTransfer, SenderAndReceiverAgreeByteForByte) {
    struct Row {
        const char* legend;
        std::size_t size;
    };
    const Row rows[] = {
        {"an empty file", 0},
        {"one byte", 1},
        {"exactly a short block", 128},
        {"one past a short block", 129},
        {"exactly a long block", 1024},
        {"a long block and a short tail", 1024 + 100},
        {"more than 255 blocks: numbers wrap through 0", 300 * 1024 + 17},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.legend);
        LinkPair pair;
        CLinkByteStream senderSide(*pair.a), receiverSide(*pair.b);
        const std::string data = Bytes(row.size, static_cast<std::uint32_t>(row.size));
        CYmodemReceiver receiver(receiverSide, Quick());
        auto received = std::async(std::launch::async, [&] { return receiver.Receive(); });
        CYmodemSender sender(senderSide, Quick());
        std::uint64_t lastDone = 0;
        sender.SetProgress([&](std::uint64_t done, std::uint64_t total) {
            EXPECT_EQ(total, row.size);
            EXPECT_GE(done, lastDone);
            lastDone = done;
        });
        sender.Send("file.bin", data);
        const auto files = received.get();
        ASSERT_EQ(files.size(), 1u);
        EXPECT_EQ(files[0].name, "file.bin");
        EXPECT_TRUE(files[0].data == data);
        EXPECT_EQ(lastDone, row.size);
        EXPECT_EQ(sender.Repeats(), 0u);
    }
}

TEST(YmodemTransfer, AbortBetweenBlocksCancelsBothEnds) {
    LinkPair pair;
    CLinkByteStream senderSide(*pair.a), receiverSide(*pair.b);
    basekit::CEvent abort(basekit::CEvent::Mode::Manual);
    CYmodemReceiver receiver(receiverSide, Quick());
    auto received = std::async(std::launch::async, [&] {
        try {
            receiver.Receive();
        } catch (const CYmodemException& e) {
            return e.Failure();
        }
        return EYmodemFailure::NoStart;
    });
    CYmodemSender sender(senderSide, Quick(), &abort);
    sender.SetProgress([&](std::uint64_t done, std::uint64_t) {
        if (done >= 10 * 1024) abort.Set();
    });
    try {
        sender.Send("f", Bytes(100 * 1024, 1));
        FAIL() << "the transfer went through despite the abort";
    } catch (const CYmodemException& e) {
        EXPECT_EQ(e.Failure(), EYmodemFailure::Cancelled);
        EXPECT_EQ(e.Code(), basekit::kErrorCancelled);
        EXPECT_NE(e.GetMessage().find(L"10240 of 102400"), std::wstring::npos) << e.what();
    }
    EXPECT_EQ(received.get(), EYmodemFailure::PeerCancelled);
}

TEST(YmodemTransfer, ReceiverAbortReachesTheSender) {
    LinkPair pair;
    CLinkByteStream senderSide(*pair.a), receiverSide(*pair.b);
    basekit::CEvent abort(basekit::CEvent::Mode::Manual);
    CYmodemReceiver receiver(receiverSide, Quick(), &abort);
    receiver.SetProgress([&](std::uint64_t done, std::uint64_t) {
        if (done >= 4096) abort.Set();
    });
    auto received = std::async(std::launch::async, [&] {
        try {
            receiver.Receive();
        } catch (const CYmodemException& e) {
            return e.Failure();
        }
        return EYmodemFailure::NoStart;
    });
    CYmodemSender sender(senderSide, Quick());
    try {
        sender.Send("f", Bytes(100 * 1024, 2));
        FAIL() << "the transfer went through despite the receiver's cancel";
    } catch (const CYmodemException& e) {
        EXPECT_EQ(e.Failure(), EYmodemFailure::PeerCancelled) << e.what();
    }
    EXPECT_EQ(received.get(), EYmodemFailure::Cancelled);
}

TEST(YmodemTransfer, SilentReceiverFailsWithTheBlockNamed) {
    LinkPair pair;
    CLinkByteStream senderSide(*pair.a);
    YMODEM_TIMING t = Quick();
    t.answerTimeoutMs = 50;
    t.maxTries = 3;
    // The receiver's side asks once and then says nothing.
    ASSERT_EQ(pair.b->Write("C", 1000), LinkStatus::Success);
    CYmodemSender sender(senderSide, t);
    try {
        sender.Send("f", "abc");
        FAIL();
    } catch (const CYmodemException& e) {
        EXPECT_EQ(e.Failure(), EYmodemFailure::NoAnswer);
        EXPECT_EQ(e.Code(), basekit::kErrorTimeout);
        EXPECT_NE(e.GetMessage().find(L"did not answer block 0 after 3 tries"), std::wstring::npos) << e.what();
    }
}

}  // namespace
