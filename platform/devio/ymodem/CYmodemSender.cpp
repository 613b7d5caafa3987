#include <algorithm>
#include <chrono>
#include <cmath>

#include "platform/devio/ymodem/YmodemBlock.h"
#include "platform/devio/ymodem/TransferStrings.h"
#include "platform/devio/ymodem/YmodemTransfer.h"

namespace devio {

using basekit::ustring;
using namespace ymodem;

namespace {

using Clock = std::chrono::steady_clock;
// Several CANs, as a receiver may miss one to noise.
const std::string kCancelRun(5, kCan);

unsigned CodeFor(EYmodemFailure failure) {
    switch (failure) {
        case EYmodemFailure::Cancelled: return basekit::kErrorCancelled;
        case EYmodemFailure::LinkLost: return basekit::kErrorLinkLost;
        case EYmodemFailure::NoStart:
        case EYmodemFailure::NoAnswer: return basekit::kErrorTimeout;
        default: return basekit::kErrorInvalidData;
    }
}

unsigned MsLeft(Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left > 0 ? static_cast<unsigned>(left) : 0;
}

}  // namespace

YMODEM_TIMING YMODEM_TIMING::ForLineRate(unsigned bitsPerSecond) {
    YMODEM_TIMING timing;
    if (bitsPerSecond > 0) {
        const double blockMs = 1000.0 * (kLongBlock + kFraming) * 10 / bitsPerSecond;
        timing.answerTimeoutMs = static_cast<unsigned>(std::ceil(2 * blockMs)) + 2000;
    }
    return timing;
}

CYmodemException::CYmodemException(int line, EYmodemFailure failure, ustring text)
    : CWinException("Ymodem", line, std::move(text), CodeFor(failure)), m_failure(failure) {}

void CYmodemSender::Throw(int line, EYmodemFailure failure, ustring text) {
    throw CYmodemException(line, failure, std::move(text));
}

void CYmodemSender::Write(std::string_view bytes, std::uint64_t block) {
    if (m_stream.Write(bytes, m_timing.answerTimeoutMs) != LinkStatus::Success)
        Throw(__LINE__, EYmodemFailure::LinkLost, ustring::Format(TransferText(kStrYmLinkLost).c_str(), static_cast<unsigned long long>(block)));
    m_wireBytes += bytes.size();
}

void CYmodemSender::CheckAbort(std::uint64_t done, std::uint64_t total) {
    if (!m_abort || !m_abort->IsSet()) return;
    m_stream.Write(kCancelRun, m_timing.answerTimeoutMs);
    Throw(__LINE__, EYmodemFailure::Cancelled,
          ustring::Format(TransferText(kStrYmCancelled).c_str(), static_cast<unsigned long long>(done), static_cast<unsigned long long>(total)));
}

CYmodemSender::EAnswer CYmodemSender::ReadAnswer(unsigned timeoutMs, std::uint64_t block) {
    // One deadline for the answer, however the bytes before it are split.
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        char c = 0;
        std::size_t got = 0;
        const LinkStatus status = m_stream.Read(&c, 1, got, MsLeft(deadline), nullptr);
        if (status == LinkStatus::Timeout) return EAnswer::Timeout;
        if (status != LinkStatus::Success)
            Throw(__LINE__, EYmodemFailure::LinkLost, ustring::Format(TransferText(kStrYmLinkLost).c_str(), static_cast<unsigned long long>(block)));
        if (c == kCan) {
            if (m_lastWasCan)
                Throw(__LINE__, EYmodemFailure::PeerCancelled,
                      ustring::Format(TransferText(kStrYmPeerCancelled).c_str(), static_cast<unsigned long long>(block)));
            m_lastWasCan = true;
            continue;
        }
        m_lastWasCan = false;
        if (c == kAck) return EAnswer::Ack;
        if (c == kNak) return EAnswer::Nak;
        if (c == kCrcRequest) return EAnswer::Request;
        // Anything else is noise, or the end of a reply the receiver sent before its loader ran.
    }
}

void CYmodemSender::WaitForRequest(unsigned timeoutMs, std::uint64_t block) {
    // Only 'C' starts a file: a NAK asks for the checksum variant this sender does not speak,
    // and an ACK before the request is a leftover.
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        const unsigned left = MsLeft(deadline);
        const EAnswer answer = left == 0 ? EAnswer::Timeout : ReadAnswer(left, block);
        if (answer == EAnswer::Request) return;
        if (answer != EAnswer::Timeout) continue;
        if (block == 0)
            Throw(__LINE__, EYmodemFailure::NoStart, ustring::Format(TransferText(kStrYmNoStart).c_str(), (timeoutMs + 999) / 1000));
        Throw(__LINE__, EYmodemFailure::NoAnswer,
              ustring::Format(TransferText(kStrYmNoAnswer).c_str(), static_cast<unsigned long long>(block), m_timing.maxTries));
    }
}

void CYmodemSender::Purge() {
    // Answers still waiting belong to earlier blocks (a request repeated while we were busy, an
    // ACK to a block sent twice); read as the answer to this one they would put both ends out
    // of step.
    // A cancel among them still counts.
    char stale[256];
    std::size_t got = 0;
    while (m_stream.Read(stale, sizeof stale, got, 0, nullptr) == LinkStatus::Success) {
        for (std::size_t i = 0; i < got; ++i) {
            if (stale[i] == kCan && m_lastWasCan)
                Throw(__LINE__, EYmodemFailure::PeerCancelled,
                      ustring::Format(TransferText(kStrYmPeerCancelled).c_str(), 0ull));
            m_lastWasCan = stale[i] == kCan;
        }
    }
    m_lastWasCan = false;
}

CYmodemSender::EAnswer CYmodemSender::AnswerTo(std::uint64_t block) {
    // Within one deadline: a request is the answer only to block 0 (the receiver did not take
    // the header); during the data it is noise.
    const auto deadline = Clock::now() + std::chrono::milliseconds(m_timing.answerTimeoutMs);
    for (;;) {
        const unsigned left = MsLeft(deadline);
        const EAnswer answer = left == 0 ? EAnswer::Timeout : ReadAnswer(left, block);
        if (answer != EAnswer::Request || block == 0) return answer;
    }
}

void CYmodemSender::Deliver(std::uint64_t block, const std::string& frame) {
    unsigned naks = 0;
    for (unsigned attempt = 1; attempt <= m_timing.maxTries; ++attempt) {
        if (attempt > 1) ++m_repeats;
        Purge();
        Write(frame, block);
        const EAnswer answer = AnswerTo(block);
        if (answer == EAnswer::Ack) return;
        if (answer != EAnswer::Timeout) ++naks;
    }
    Write(kCancelRun, block);
    if (naks > 0)
        Throw(__LINE__, EYmodemFailure::Rejected,
              ustring::Format(TransferText(kStrYmRejected).c_str(), static_cast<unsigned long long>(block), naks));
    Throw(__LINE__, EYmodemFailure::NoAnswer,
          ustring::Format(TransferText(kStrYmNoAnswer).c_str(), static_cast<unsigned long long>(block), m_timing.maxTries));
}

void CYmodemSender::FinishFile(std::uint64_t block) {
    const std::string eot(1, kEot);
    for (unsigned attempt = 1; attempt <= m_timing.maxTries; ++attempt) {
        Purge();
        Write(eot, block);
        EAnswer answer = EAnswer::Timeout;
        try {
            answer = AnswerTo(block);
        } catch (const CYmodemException& e) {
            // A loader's CAN CAN after the last EOT is its verdict on the whole file.
            if (e.Failure() == EYmodemFailure::PeerCancelled)
                Throw(__LINE__, EYmodemFailure::FileRefused, TransferText(kStrYmFileRefused));
            throw;
        }
        if (answer == EAnswer::Ack) return;
    }
    Throw(__LINE__, EYmodemFailure::NoAnswer,
          ustring::Format(TransferText(kStrYmNoAnswer).c_str(), static_cast<unsigned long long>(block), m_timing.maxTries));
}

void CYmodemSender::Send(const std::string& name, std::string_view data) {
    m_wireBytes = 0;
    m_repeats = 0;
    m_lastWasCan = false;
    const std::uint64_t total = data.size();
    CheckAbort(0, total);
    WaitForRequest(m_timing.startTimeoutMs, 0);
    Deliver(0, EncodeHeaderBlock(FILE_HEADER{name, total}));
    // The receiver asks again with 'C' for the data.
    WaitForRequest(m_timing.answerTimeoutMs, 1);
    std::uint64_t done = 0;
    std::uint64_t block = 1;
    if (m_progress) m_progress(0, total);
    while (done < total) {
        CheckAbort(done, total);
        const std::size_t left = static_cast<std::size_t>(total - done);
        // A tail that fits 128 bytes goes short: a long block would pad it with up to 1023.
        const std::size_t size = left <= kShortBlock ? left : std::min(left, kLongBlock);
        Deliver(block, EncodeBlock(static_cast<std::uint8_t>(block & 0xff), data.substr(static_cast<std::size_t>(done), size)));
        done += size;
        ++block;
        if (m_progress) m_progress(done, total);
    }
    FinishFile(block);
    WaitForRequest(m_timing.answerTimeoutMs, block);
    Deliver(block, EncodeHeaderBlock(FILE_HEADER{}));
}

}  // namespace devio
