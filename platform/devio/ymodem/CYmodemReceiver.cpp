#include <chrono>

#include "platform/devio/ymodem/TransferStrings.h"
#include "platform/devio/ymodem/YmodemTransfer.h"

namespace devio {

using basekit::ustring;
using Machine = ymodem::CYmodemReceiveMachine;

namespace {
using Clock = std::chrono::steady_clock;
const std::string kCancelRun(5, ymodem::kCan);

unsigned MsLeft(Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left > 0 ? static_cast<unsigned>(left) : 0;
}
}  // namespace

void CYmodemReceiver::Write(std::string_view bytes) {
    if (!bytes.empty() && m_stream.Write(bytes, m_timing.answerTimeoutMs) != LinkStatus::Success)
        throw CYmodemException(__LINE__, EYmodemFailure::LinkLost, ustring::Format(TransferText(kStrYmLinkLost).c_str(), 0ull));
}

std::vector<CYmodemReceiver::RECEIVED_FILE> CYmodemReceiver::Receive() {
    Machine machine(Machine::LIMITS{m_limits.maxFileSize, m_timing.maxTries}, {});
    std::vector<RECEIVED_FILE> files;
    Write(machine.Start());
    const auto start = Clock::now();
    // A block's deadline runs from its first byte and holds across partial reads; between
    // blocks it runs from the last answer.
    auto deadline = start + std::chrono::milliseconds(m_timing.answerTimeoutMs);
    std::uint64_t announced = 0;
    char buffer[4096];
    while (!machine.Done()) {
        if (!machine.MidBlock() && m_abort && m_abort->IsSet()) {
            m_stream.Write(kCancelRun, m_timing.answerTimeoutMs);
            throw CYmodemException(__LINE__, EYmodemFailure::Cancelled,
                                   ustring::Format(TransferText(kStrYmCancelled).c_str(),
                                                   static_cast<unsigned long long>(machine.Data().size()),
                                                   static_cast<unsigned long long>(announced)));
        }
        std::size_t got = 0;
        const LinkStatus status = m_stream.Read(buffer, sizeof buffer, got, MsLeft(deadline), m_abort);
        if (status == LinkStatus::Cancelled) continue;   // acted on at the top, between blocks
        if (status == LinkStatus::Closed || status == LinkStatus::IoError)
            throw CYmodemException(__LINE__, EYmodemFailure::LinkLost,
                                   ustring::Format(TransferText(kStrYmLinkLost).c_str(), static_cast<unsigned long long>(machine.BlocksAccepted())));
        std::string reply;
        if (status == LinkStatus::Timeout) {
            if (files.empty() && machine.State() == Machine::EState::WaitHeader &&
                Clock::now() - start >= std::chrono::milliseconds(m_timing.startTimeoutMs))
                throw CYmodemException(__LINE__, EYmodemFailure::NoStart,
                                       ustring::Format(TransferText(kStrYmNoSender).c_str(), (m_timing.startTimeoutMs + 999) / 1000));
            machine.OnSilence(reply);
        } else {
            const bool wasMid = machine.MidBlock();
            const std::uint64_t accepted = machine.FilesAccepted();
            machine.Feed(std::string_view(buffer, got), reply);
            if (machine.FilesAccepted() != accepted) files.push_back({machine.Header().name, machine.Data()});
            if (machine.State() == Machine::EState::WaitData && machine.Header().size) announced = *machine.Header().size;
            if (m_progress && machine.State() == Machine::EState::WaitData) m_progress(machine.Data().size(), announced);
            // Bytes that continue a block do not move its deadline.
            if (wasMid && machine.MidBlock() && reply.empty()) {
                Write(reply);
                continue;
            }
        }
        Write(reply);
        deadline = Clock::now() + std::chrono::milliseconds(m_timing.answerTimeoutMs);
    }
    switch (machine.State()) {
        case Machine::EState::Finished: return files;
        case Machine::EState::Cancelled:
            throw CYmodemException(__LINE__, EYmodemFailure::PeerCancelled,
                                   ustring::Format(TransferText(kStrYmSenderCancelled).c_str(), static_cast<unsigned long long>(machine.Data().size())));
        default: break;
    }
    switch (machine.Failure()) {
        case Machine::EFailure::OutOfSequence:
            throw CYmodemException(__LINE__, EYmodemFailure::OutOfSequence,
                                   ustring::Format(TransferText(kStrYmOutOfSequence).c_str(), static_cast<unsigned long long>(machine.Data().size())));
        case Machine::EFailure::TooLarge:
            throw CYmodemException(__LINE__, EYmodemFailure::TooLarge,
                                   ustring::Format(TransferText(kStrYmTooLarge).c_str(), static_cast<unsigned long long>(m_limits.maxFileSize)));
        default:
            throw CYmodemException(__LINE__, EYmodemFailure::TooManyErrors,
                                   ustring::Format(TransferText(kStrYmTooManyErrors).c_str(), m_timing.maxTries));
    }
}

}  // namespace devio
