// Firmware loading end to end: the command layer's loader against the simulator's boot loader
// over a paced pseudo-terminal at 115200 bit/s and over TCP, and the failures a field loader
// meets, each ending with the receiver still loadable and a second attempt that succeeds.
#include <gtest/gtest.h>

#include <random>

#include "fenklib/receiver/CFirmwareLoader.h"
#include "integration/SimLink.h"

namespace {

using namespace devio;
using fenktest::SimLink;
using Loader = CFirmwareLoader;

constexpr const char* kModel = "FNK-600";   // the simulator's model

FIRMWARE_IMAGE Image(const std::string& version, std::size_t size = 40 * 1024, const char* model = kModel) {
    std::mt19937 rng(static_cast<std::uint32_t>(size));
    std::string payload(size, '\0');
    for (auto& c : payload) c = static_cast<char>(rng() & 0xff);
    return CheckFirmwareImage(firmware::BuildImage(model, version, payload), L"test.img");
}

// A loader whose waits suit a test: a line that stops answering is given up within seconds.
struct Upload {
    SimLink& link;
    basekit::CEvent abort{basekit::CEvent::Mode::Manual};
    Loader loader;
    explicit Upload(SimLink& l)
        : link(l), loader(l.Receiver(), &abort, [&l]() -> CSmartPtr<IReceiver> {
              return CSmartPtr<IReceiver>(CReceiver::Open(l.receiver->GetAddress()).Get());
          }) {
        Loader::TIMING t;
        t.ymodem.answerTimeoutMs = 1500;
        t.ymodem.maxTries = 4;
        t.restartMs = 15000;
        loader.SetTiming(t);
    }
    ustring Version() {
        CVokReceiverMateCore mate(loader.Receiver());
        return mate.Get(par::RcvVerMain);
    }
};

SimLink Paced(SimLink::Over over) {
    rcvsim::SimOptions options;
    options.throttle = true;
    return SimLink(over, options, 115200);
}

class FirmwareUpload : public ::testing::TestWithParam<SimLink::Over> {};

TEST_P(FirmwareUpload, LoadsTheImageAndRestartsIntoIt) {
    SimLink link = Paced(GetParam());
    Upload upload(link);
    const Loader::RECEIVER_STATE before = upload.loader.Probe();
    EXPECT_FALSE(before.inLoader);
    EXPECT_EQ(before.model, L"FNK-600");
    EXPECT_NE(before.version, L"4.3.0");
    std::vector<Loader::EStage> stages;
    std::uint64_t sent = 0;
    upload.loader.SetProgress([&](Loader::EStage stage, std::uint64_t done, std::uint64_t) {
        if (stages.empty() || stages.back() != stage) stages.push_back(stage);
        if (stage == Loader::EStage::Sending) sent = done;
    });
    const FIRMWARE_IMAGE image = Image("4.3.0");
    EXPECT_EQ(upload.loader.Upload(image), L"4.3.0");
    EXPECT_EQ(sent, image.bytes.size());
    const std::vector<Loader::EStage> expected = {Loader::EStage::Probing, Loader::EStage::EnteringLoader, Loader::EStage::Sending,
                                                  Loader::EStage::Restarting, Loader::EStage::Done};
    EXPECT_EQ(stages, expected);
    EXPECT_EQ(upload.Version(), L"4.3.0");
    EXPECT_EQ(link.sim->Core().FirmwareVersion(), "4.3.0");
    // The restart is a restart: other settings are back at their defaults, the version stays.
    EXPECT_GE(upload.loader.WireBytes(), image.bytes.size());
}

// Each failure leaves the receiver in its loader with its old firmware; the next attempt finds
// it there and loads the image.
TEST_P(FirmwareUpload, EveryFailureLeavesTheReceiverLoadable) {
    struct Row {
        const char* legend;
        std::function<void(Upload&)> fault;      // before the first attempt
        std::function<void(Upload&)> attempt;    // the first attempt, which must fail
        EYmodemFailure failure;
        std::function<void(Upload&)> repair;     // before the second attempt
    };
    const auto faults = [](Upload& u, auto change) {
        rcvsim::FaultPlan plan = u.link.sim->Faults();
        change(plan);
        u.link.sim->SetFaults(plan);
    };
    const Row rows[] = {
        {"the cable is pulled in the middle of the image",
         [&](Upload& u) { faults(u, [](rcvsim::FaultPlan& p) { p.loaderCutAfterBlocks = 10; p.loaderCutMs = 8000; }); },
         [](Upload& u) { u.loader.Upload(Image("4.3.0")); },
         // A network port closes; on a serial line the answers just stop.
         GetParam() == SimLink::Over::Tcp ? EYmodemFailure::LinkLost : EYmodemFailure::NoAnswer,
         {}},
        {"an image whose check sum is wrong is refused after the transfer",
         {},
         [](Upload& u) {
             std::string bytes = Image("4.3.0").bytes;
             bytes[bytes.size() / 2] ^= 0x20;
             u.loader.EnterLoader();
             u.loader.SendImage("bad.fnkfw", bytes);
         },
         EYmodemFailure::FileRefused, {}},
        {"an image for another model is refused by the loader",
         {},
         [](Upload& u) {
             u.loader.EnterLoader();
             u.loader.SendImage("other.fnkfw", Image("4.3.0", 5000, "FNK-900").bytes);
         },
         EYmodemFailure::FileRefused, {}},
        {"a line too noisy for any block to get through",
         [&](Upload& u) { faults(u, [](rcvsim::FaultPlan& p) { p.loaderNoiseEvery = 300; }); },
         [](Upload& u) { u.loader.Upload(Image("4.3.0")); },
         EYmodemFailure::Rejected,
         [&](Upload& u) { faults(u, [](rcvsim::FaultPlan& p) { p.loaderNoiseEvery = 0; }); }},
        {"the user cancels between blocks",
         [](Upload& u) {
             u.loader.SetProgress([&u](Loader::EStage stage, std::uint64_t done, std::uint64_t) {
                 if (stage == Loader::EStage::Sending && done >= 8 * 1024) u.abort.Set();
             });
         },
         [](Upload& u) { u.loader.Upload(Image("4.3.0")); },
         EYmodemFailure::Cancelled,
         [](Upload& u) {
             u.abort.Reset();
             u.loader.SetProgress({});
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.legend);
        SimLink link = Paced(GetParam());
        auto upload = std::make_unique<Upload>(link);
        const std::string factory = link.sim->Core().FirmwareVersion();
        if (row.fault) row.fault(*upload);
        try {
            row.attempt(*upload);
            ADD_FAILURE() << "the first attempt went through";
        } catch (const CYmodemException& e) {
            EXPECT_EQ(e.Failure(), row.failure) << e.what();
            EXPECT_NE(e.GetMessage().find(L"waits in its boot loader"), std::wstring::npos) << e.what();
        }
        EXPECT_TRUE(link.sim->Core().InLoader());
        EXPECT_EQ(link.sim->Core().FirmwareVersion(), factory);
        if (row.repair) row.repair(*upload);
        // Who is there now: a loader asking for an image.
        EXPECT_TRUE(upload->loader.Probe().inLoader);
        EXPECT_EQ(upload->loader.Upload(Image("4.3.1")), L"4.3.1");
        EXPECT_FALSE(link.sim->Core().InLoader());
        EXPECT_EQ(link.sim->Core().FirmwareVersion(), "4.3.1");
    }
}

TEST_P(FirmwareUpload, AnImageForAnotherModelIsRefusedBeforeAnythingIsSent) {
    SimLink link = Paced(GetParam());
    Upload upload(link);
    try {
        upload.loader.Upload(Image("9.0.0", 4096, "FNK-900"));
        FAIL() << "sent an image for another model";
    } catch (const CFirmwareImageException& e) {
        EXPECT_NE(e.GetMessage().find(L"FNK-900"), std::wstring::npos) << e.what();
    }
    EXPECT_FALSE(link.sim->Core().InLoader());
    EXPECT_EQ(upload.Version(), ustring::FromUtf8(link.sim->Core().FirmwareVersion()));
}

INSTANTIATE_TEST_SUITE_P(Links, FirmwareUpload, ::testing::Values(SimLink::Over::Pty, SimLink::Over::Tcp),
                         [](const auto& info) { return info.param == SimLink::Over::Pty ? "Pty115200" : "Tcp"; });

}  // namespace
