#include "fenklib/receiver/CFirmwareLoader.h"

#include <chrono>
#include <thread>

#include "platform/devio/ymodem/CReceiverByteStream.h"
#include "platform/devio/ymodem/TransferStrings.h"

namespace devio {

namespace {

using Clock = std::chrono::steady_clock;
// The command that stops the firmware and starts the boot loader.
constexpr const wchar_t* kEnterLoader = L"init,/dev/boot";
// How long a reconnect waits between tries while the receiver restarts.
constexpr auto kReopenPause = std::chrono::milliseconds(200);

bool IsLinkLost(const basekit::CWinException& e) {
    return e.Code() == basekit::kErrorLinkLost || e.Code() == basekit::kErrorNotConnected;
}

}  // namespace

CFirmwareLoader::CFirmwareLoader(CSmartPtr<IReceiver> receiver, basekit::CEvent* abort, Reopen reopen)
    : m_receiver(std::move(receiver)), m_abort(abort), m_reopen(std::move(reopen)) {}

void CFirmwareLoader::Report(EStage stage, std::uint64_t done, std::uint64_t total) const {
    if (m_progress) m_progress(stage, done, total);
}

std::string CFirmwareLoader::TransferName(const firmware::FIRMWARE_IMAGE_INFO& info) {
    return info.model + "-" + info.version + ".fnkfw";
}

CFirmwareLoader::RECEIVER_STATE CFirmwareLoader::Probe() {
    Report(EStage::Probing);
    // A link that fell during an attempt (a pulled cable on a network port) is opened again.
    if (!m_receiver->IsReady() && !ReopenLink())
        throw basekit::CWinException("FirmwareLoader", __LINE__, L"print," + ustring(par::RcvModel.path), basekit::kErrorLinkLost);
    // The tap is in place before the command goes out, so a loader's request that arrives
    // while the command waits is not missed.
    CReceiverByteStream stream(m_receiver);
    CVokReceiverMateCore mate(m_receiver, m_abort);
    RECEIVER_STATE state;
    try {
        state.model = mate.ExecuteCommand(L"print," + ustring(par::RcvModel.path), true, m_timing.probeMs);
        state.version = mate.ExecuteCommand(L"print," + ustring(par::RcvVerMain.path), true, m_timing.probeMs);
        return state;
    } catch (const basekit::CWinException& e) {
        if (e.Code() != basekit::kErrorTimeout) throw;
    }
    // No answer: a loader asks for an image with 'C' once a second.
    char buffer[256];
    const auto deadline = Clock::now() + std::chrono::milliseconds(m_timing.probeMs);
    while (Clock::now() < deadline) {
        std::size_t got = 0;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        const LinkStatus status = stream.Read(buffer, sizeof buffer, got, static_cast<unsigned>(std::max<long long>(left, 1)), m_abort);
        if (status == LinkStatus::Cancelled)
            throw basekit::CWinException("FirmwareLoader", __LINE__, ustring(kEnterLoader), basekit::kErrorCancelled);
        if (status != LinkStatus::Success && status != LinkStatus::Timeout)
            throw basekit::CWinException("FirmwareLoader", __LINE__, L"print," + ustring(par::RcvVerMain.path), basekit::kErrorLinkLost);
        if (std::string_view(buffer, got).find(ymodem::kCrcRequest) != std::string_view::npos) {
            state.inLoader = true;
            return state;
        }
    }
    throw basekit::CWinException("FirmwareLoader", __LINE__, L"print," + ustring(par::RcvVerMain.path), basekit::kErrorTimeout);
}

void CFirmwareLoader::EnterLoader() {
    Report(EStage::EnteringLoader);
    CVokReceiverMateCore mate(m_receiver, m_abort);
    mate.ExecuteCommand(kEnterLoader);
}

void CFirmwareLoader::SendImage(const std::string& name, std::string_view bytes) {
    CReceiverByteStream stream(m_receiver);
    Send(stream, name, bytes);
}

void CFirmwareLoader::Send(CReceiverByteStream& stream, const std::string& name, std::string_view bytes) {
    CYmodemSender sender(stream, m_timing.ymodem, m_abort);
    sender.SetProgress([this](std::uint64_t done, std::uint64_t total) { Report(EStage::Sending, done, total); });
    try {
        sender.Send(name, bytes);
    } catch (const CYmodemException& e) {
        m_wireBytes = sender.WireBytes();
        throw CYmodemException(__LINE__, e.Failure(), ustring::Format(TransferText(kStrFwStaysInLoader).c_str(), e.Text()));
    }
    m_wireBytes = sender.WireBytes();
}

bool CFirmwareLoader::ReopenLink() {
    if (!m_reopen) return false;
    try {
        CSmartPtr<IReceiver> fresh = m_reopen();
        if (!fresh) return false;
        m_receiver = std::move(fresh);
        return true;
    } catch (const basekit::CWinException&) {
        return false;
    }
}

ustring CFirmwareLoader::WaitForRestart() {
    Report(EStage::Restarting);
    const auto deadline = Clock::now() + std::chrono::milliseconds(m_timing.restartMs);
    for (;;) {
        if (m_abort && m_abort->IsSet())
            throw basekit::CWinException("FirmwareLoader", __LINE__, L"print," + ustring(par::RcvVerMain.path), basekit::kErrorCancelled);
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) break;
        if (!m_receiver->IsReady()) {
            // The restart closed the link (a network port does): open it again.
            if (!ReopenLink()) std::this_thread::sleep_for(kReopenPause);
            continue;
        }
        try {
            CVokReceiverMateCore mate(m_receiver, m_abort);
            // A starting receiver hears nothing: ask again rather than wait out a long time-out.
            const unsigned wait = static_cast<unsigned>(std::min<long long>(left, m_timing.answerMs));
            const ustring version = mate.ExecuteCommand(L"print," + ustring(par::RcvVerMain.path), true, wait);
            Report(EStage::Done);
            return version;
        } catch (const basekit::CWinException& e) {
            if (e.Code() == basekit::kErrorCancelled) throw;
            if (!IsLinkLost(e) && e.Code() != basekit::kErrorTimeout) throw;
        }
    }
    throw basekit::CWinException("FirmwareLoader", __LINE__,
                                 ustring::Format(TransferText(kStrFwNoRestart).c_str(), m_timing.restartMs / 1000),
                                 basekit::kErrorTimeout);
}

ustring CFirmwareLoader::Upload(const FIRMWARE_IMAGE& image) {
    const RECEIVER_STATE state = Probe();
    const ustring model = ustring::FromUtf8(image.info.model);
    if (!state.inLoader) {
        // The model may carry a suffix after "/" (a variant); the image names the family.
        ustring running = state.model.substr(0, state.model.find(L'/'));
        if (running != model)
            throw CFirmwareImageException(__LINE__, firmware::EImageFault::None,
                                          ustring::Format(TransferText(kStrFwWrongModel).c_str(), model, running),
                                          basekit::kErrorInvalidData);
    }
    // Listening before the loader starts: its first request may follow the answer at once.
    {
        CReceiverByteStream stream(m_receiver);
        if (!state.inLoader) EnterLoader();
        Report(EStage::Sending, 0, image.bytes.size());
        Send(stream, TransferName(image.info), image.bytes);
    }
    const ustring version = WaitForRestart();
    const ustring expected = ustring::FromUtf8(image.info.version);
    if (version.find(expected) != 0)
        throw basekit::CWinException("FirmwareLoader", __LINE__,
                                     ustring::Format(TransferText(kStrFwWrongVersion).c_str(), version, expected),
                                     basekit::kErrorInvalidData);
    return version;
}

}  // namespace devio
