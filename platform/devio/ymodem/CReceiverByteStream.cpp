#include "platform/devio/ymodem/CReceiverByteStream.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <mutex>
#include <string>

#include "platform/basekit/CWinException.h"

namespace devio {

namespace {
// A reader that stops reading must not make the tap grow without end.
constexpr std::size_t kMaxBacklog = 1 << 20;
// How often a wait looks whether the link is still there.
constexpr unsigned kLinkCheckMs = 100;
}  // namespace

class CReceiverByteStream::CTap final : public basekit::CRefCounted<IRawTap> {
public:
    void OnRawBytes(std::string_view bytes) override {
        const std::lock_guard lock(m_mutex);
        if (m_bytes.size() + bytes.size() <= kMaxBacklog) m_bytes.append(bytes);
        m_arrived.Set();
    }
    std::size_t Take(char* buffer, std::size_t capacity) {
        const std::lock_guard lock(m_mutex);
        const std::size_t n = std::min(capacity, m_bytes.size());
        std::memcpy(buffer, m_bytes.data(), n);
        m_bytes.erase(0, n);
        if (m_bytes.empty()) m_arrived.Reset();
        return n;
    }
    void Clear() {
        const std::lock_guard lock(m_mutex);
        m_bytes.clear();
        m_arrived.Reset();
    }
    const basekit::CEvent& Arrived() const { return m_arrived; }

private:
    std::mutex m_mutex;
    std::string m_bytes;
    basekit::CEvent m_arrived{basekit::CEvent::Mode::Manual};
};

CReceiverByteStream::CReceiverByteStream(CSmartPtr<IReceiver> receiver)
    : m_receiver(std::move(receiver)), m_tap(basekit::MakeSmart<CTap>()) {
    if (!m_receiver || !m_receiver->GetPort() || !m_receiver->AddRawTap(CSmartPtr<IRawTap>(m_tap.Get())))
        throw basekit::CWinException("ReceiverByteStream", __LINE__, L"devio::CReceiverByteStream", basekit::kErrorInternal);
}

CReceiverByteStream::~CReceiverByteStream() { m_receiver->RemoveRawTap(CSmartPtr<IRawTap>(m_tap.Get())); }

void CReceiverByteStream::Discard() { m_tap->Clear(); }

LinkStatus CReceiverByteStream::Read(char* buffer, std::size_t capacity, std::size_t& got, unsigned timeoutMs,
                                     const basekit::CEvent* abort) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    got = 0;
    for (;;) {
        if (abort && abort->IsSet()) return LinkStatus::Cancelled;
        if ((got = m_tap->Take(buffer, capacity)) > 0) return LinkStatus::Success;
        if (!m_receiver->IsReady()) return LinkStatus::Closed;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return LinkStatus::Timeout;
        const unsigned wait = static_cast<unsigned>(std::min<long long>(left, kLinkCheckMs));
        if (abort) basekit::CEvent::WaitAny({&m_tap->Arrived(), abort}, wait);
        else m_tap->Arrived().Wait(wait);
    }
}

LinkStatus CReceiverByteStream::Write(std::string_view bytes, unsigned /*timeoutMs*/) {
    try {
        m_receiver->GetPort()->WriteRaw(bytes);
        return LinkStatus::Success;
    } catch (const basekit::CWinException&) {
        return LinkStatus::Closed;
    }
}

}  // namespace devio
