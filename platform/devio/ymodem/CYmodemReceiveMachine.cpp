#include "platform/devio/ymodem/CYmodemReceiveMachine.h"

namespace devio::ymodem {
namespace {
const std::string kCancel(2, kCan);
}

CYmodemReceiveMachine::CYmodemReceiveMachine(LIMITS limits, FileCheck check)
    : m_limits(limits), m_check(std::move(check)) {}

std::string CYmodemReceiveMachine::Start() {
    Reset();
    return std::string(1, kCrcRequest);
}

void CYmodemReceiveMachine::Reset() {
    m_state = EState::WaitHeader;
    m_failure = EFailure::None;
    m_pending.clear();
    m_header = {};
    m_data.clear();
    m_expected = 1;
    m_errors = 0;
    m_eotSeen = false;
    m_lastWasCan = false;
}

void CYmodemReceiveMachine::Feed(std::string_view bytes, std::string& reply) {
    while (!bytes.empty() && !Done()) {
        if (m_pending.empty()) {
            const char c = bytes.front();
            if (c == kSoh || c == kStx) {
                m_lastWasCan = false;
                m_pending.push_back(c);
                bytes.remove_prefix(1);
                continue;
            }
            bytes.remove_prefix(1);
            if (c == kCan) {
                if (m_lastWasCan) m_state = EState::Cancelled;
                m_lastWasCan = true;
                continue;
            }
            m_lastWasCan = false;
            if (c == kEot) OnEot(reply);
            // Anything else between blocks is line noise.
            continue;
        }
        BLOCK block;
        std::size_t need = 0;
        ParseBlock(m_pending, block, need);
        const std::size_t take = std::min(bytes.size(), need - m_pending.size());
        m_pending.append(bytes.substr(0, take));
        bytes.remove_prefix(take);
        const EBlockCheck check = ParseBlock(m_pending, block, need);
        if (check == EBlockCheck::Incomplete) continue;
        if (check == EBlockCheck::Ok) OnBlock(block, reply);
        else Error(reply);
        m_pending.clear();
    }
}

void CYmodemReceiveMachine::OnSilence(std::string& reply) {
    if (Done()) return;
    m_pending.clear();
    if (m_state == EState::WaitHeader) {
        // Waiting for a sender to begin is no error: ask for as long as the owner lets us.
        reply.push_back(kCrcRequest);
        return;
    }
    Error(reply);
}

void CYmodemReceiveMachine::OnBlock(const BLOCK& block, std::string& reply) {
    if (m_state == EState::WaitHeader) {
        // A data block before any header: its sender missed our answer to block 0 or is not
        // in YMODEM at all; ask again.
        if (block.number == 0) OnHeader(block, reply);
        else Error(reply);
        return;
    }
    // A short block 0 holding a header while a file is in progress: the sender has started
    // over. (Data numbered 0 after 255 blocks comes in long blocks, or when expected.)
    if (block.number == 0 && m_expected != 0 && block.data.size() == kShortBlock && ParseHeader(block.data)) {
        OnHeader(block, reply);
        return;
    }
    if (block.number == static_cast<std::uint8_t>(m_expected - 1)) {
        // A repeat of the block we accepted: our ACK was lost.
        reply.push_back(kAck);
        return;
    }
    if (block.number != m_expected) {
        Fail(EFailure::OutOfSequence, reply);
        return;
    }
    if (m_data.size() + block.data.size() > m_limits.maxFileSize + kLongBlock) {
        Fail(EFailure::TooLarge, reply);
        return;
    }
    m_data.append(block.data);
    ++m_expected;
    ++m_blocks;
    m_errors = 0;
    m_eotSeen = false;
    reply.push_back(kAck);
}

void CYmodemReceiveMachine::OnHeader(const BLOCK& block, std::string& reply) {
    const auto header = ParseHeader(block.data);
    if (!header) {
        Error(reply);
        return;
    }
    m_errors = 0;
    if (header->name.empty()) {
        reply.push_back(kAck);
        m_state = EState::Finished;
        return;
    }
    if (header->size && *header->size > m_limits.maxFileSize) {
        Fail(EFailure::TooLarge, reply);
        return;
    }
    m_header = *header;
    m_data.clear();
    m_expected = 1;
    m_eotSeen = false;
    m_state = EState::WaitData;
    reply.push_back(kAck);
    reply.push_back(kCrcRequest);
}

void CYmodemReceiveMachine::OnEot(std::string& reply) {
    if (m_state == EState::WaitHeader) {
        // The sender repeats an EOT whose ACK it missed.
        reply.push_back(kAck);
        return;
    }
    if (!m_eotSeen) {
        // The first EOT is answered with NAK: a noise byte that looks like EOT must not end
        // the file; the sender repeats a real one.
        m_eotSeen = true;
        reply.push_back(kNak);
        return;
    }
    if (m_header.size && *m_header.size < m_data.size()) m_data.resize(*m_header.size);
    if (m_header.size && *m_header.size > m_data.size()) {
        Fail(EFailure::Refused, reply);
        return;
    }
    if (m_check && !m_check(m_header, m_data)) {
        Fail(EFailure::Refused, reply);
        return;
    }
    ++m_files;
    m_state = EState::WaitHeader;
    m_eotSeen = false;
    reply.push_back(kAck);
    reply.push_back(kCrcRequest);
}

void CYmodemReceiveMachine::Error(std::string& reply) {
    ++m_badBlocks;
    if (++m_errors > m_limits.maxErrors) {
        Fail(EFailure::TooManyErrors, reply);
        return;
    }
    reply.push_back(m_state == EState::WaitHeader ? kCrcRequest : kNak);
}

void CYmodemReceiveMachine::Fail(EFailure failure, std::string& reply) {
    m_failure = failure;
    m_state = EState::Failed;
    m_pending.clear();
    reply += kCancel;
}

}  // namespace devio::ymodem
