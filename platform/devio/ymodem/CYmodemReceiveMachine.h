#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/devio/ymodem/YmodemBlock.h"

namespace devio::ymodem {

struct RECEIVE_LIMITS {
    std::uint64_t maxFileSize = 64ull << 20;
    unsigned maxErrors = 10;   // in a row, within one block
};

// The receiving end of a YMODEM batch, driven by what arrives: Feed() takes bytes in chunks
// split anywhere and gives the answers to write back; OnSilence() is called when the line has
// been quiet for the receiver's time-out (or a block did not complete in time). No I/O and no
// clock of its own, so a blocking receiver and the simulator's event loop both drive it.
//
// A valid block 0 always starts a file afresh, even in the middle of one: a sender that lost
// the line and tries again is taken as it comes.
class CYmodemReceiveMachine {
public:
    enum class EState {
        WaitHeader,   // sends 'C' and waits for block 0
        WaitData,     // inside a file
        Finished,     // the empty block 0 ended the batch
        Cancelled,    // the sender cancelled
        Failed,       // this end gave up (and said so with CAN CAN)
    };
    enum class EFailure {
        None,
        TooManyErrors,   // bad blocks or silence beyond the limit
        OutOfSequence,   // a block number that is neither the next nor a repeat
        TooLarge,        // the announced size or the data went beyond the limit
        Refused,         // the file check at the end said no
    };
    using LIMITS = RECEIVE_LIMITS;
    // Asked when a file's last EOT arrives: true accepts it; false refuses it with CAN CAN.
    using FileCheck = std::function<bool(const FILE_HEADER& header, std::string_view data)>;

    explicit CYmodemReceiveMachine(LIMITS limits = {}, FileCheck check = {});

    // The first request ('C'); again after Reset().
    std::string Start();
    void Reset();
    void Feed(std::string_view bytes, std::string& reply);
    void OnSilence(std::string& reply);

    EState State() const { return m_state; }
    EFailure Failure() const { return m_failure; }
    bool Done() const { return m_state == EState::Finished || m_state == EState::Cancelled || m_state == EState::Failed; }
    // True while part of a block has arrived: its deadline runs from its first byte.
    bool MidBlock() const { return !m_pending.empty(); }
    // The file in progress or the last one accepted.
    const FILE_HEADER& Header() const { return m_header; }
    const std::string& Data() const { return m_data; }
    std::uint64_t FilesAccepted() const { return m_files; }
    std::uint64_t BlocksAccepted() const { return m_blocks; }
    std::uint64_t BadBlocks() const { return m_badBlocks; }

private:
    void OnBlock(const BLOCK& block, std::string& reply);
    void OnHeader(const BLOCK& block, std::string& reply);
    void OnEot(std::string& reply);
    void Error(std::string& reply);
    void Fail(EFailure failure, std::string& reply);

    const LIMITS m_limits;
    const FileCheck m_check;
    EState m_state = EState::WaitHeader;
    EFailure m_failure = EFailure::None;
    std::string m_pending;     // bytes of a block not yet whole
    FILE_HEADER m_header;
    std::string m_data;
    std::uint8_t m_expected = 1;
    unsigned m_errors = 0;
    bool m_eotSeen = false;
    bool m_lastWasCan = false;
    std::uint64_t m_files = 0;
    std::uint64_t m_blocks = 0;
    std::uint64_t m_badBlocks = 0;
};

}  // namespace devio::ymodem
