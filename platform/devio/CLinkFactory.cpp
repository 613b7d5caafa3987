#include "platform/devio/CLinkFactory.h"

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CReplayLink.h"
#include "platform/devio/SerialLine.h"

namespace devio {

namespace {

std::mutex& OpenerMutex() { static std::mutex m; return m; }
CLinkFactory::InProcessOpener& OpenerSlot() { static CLinkFactory::InProcessOpener o; return o; }

[[noreturn]] void Fail(const CSmartPtr<IPortAddr>& address, unsigned code) {
    throw basekit::CWinException("LinkFactory", __LINE__, address->ToUrl(), code);
}

[[noreturn]] void FailErrno(const CSmartPtr<IPortAddr>& address, int error) {
    Fail(address, basekit::SystemErrorFromErrno(error));
}

class CFd {
public:
    explicit CFd(int fd) : m_fd(fd) {}
    ~CFd() { if (m_fd >= 0) ::close(m_fd); }
    CFd(const CFd&) = delete;
    CFd& operator=(const CFd&) = delete;
    int Get() const { return m_fd; }
    int Release() { const int fd = m_fd; m_fd = -1; return fd; }

private:
    int m_fd;
};

int SetNonBlocking(int fd) {
    const int flags = ::fcntl(fd, F_GETFL);
    return flags < 0 || ::fcntl(fd, F_SETFL, flags | O_NONBLOCK) < 0 ? errno : 0;
}

SerialLineSettings SettingsOf(const CSmartPtr<IPortAddr>& address) {
    SerialLineSettings s;
    const auto props = address->GetProperties();
    const auto text = [&](const wchar_t* name) { return props->GetProperty(name).toString(); };
    if (const QVariant v = props->GetProperty(L"BaudRate"); v.isValid()) s.baudRate = v.toUInt();
    if (const QVariant v = props->GetProperty(L"ByteSize"); v.isValid()) s.byteSize = v.toUInt();
    if (const QVariant v = props->GetProperty(L"StopBits"); v.isValid()) s.stopBits = v.toUInt();
    const QString parity = text(L"Parity").toUpper();
    if (!parity.isEmpty()) s.parity = parity.at(0).toLatin1();
    const QString rts = text(L"RtsCts");
    s.rtsCts = rts == QLatin1String("on") || rts == QLatin1String("1");
    return s;
}

bool ValidSettings(const SerialLineSettings& s) {
    return s.baudRate >= 50 && s.baudRate <= 4000000 && s.byteSize >= 5 && s.byteSize <= 8 &&
           (s.stopBits == 1 || s.stopBits == 2) && QByteArray("NOEMS").contains(s.parity);
}

}  // namespace

void CLinkFactory::RegisterInProcess(InProcessOpener opener) {
    const std::lock_guard lock(OpenerMutex());
    OpenerSlot() = std::move(opener);
}

std::unique_ptr<CLink> CLinkFactory::Open(const CSmartPtr<IPortAddr>& address) {
    if (!address) throw basekit::CWinException("LinkFactory", __LINE__, L"devio::CLinkFactory::Open", basekit::kErrorInternal);
    switch (address->GetType()) {
        case PortSerial: return OpenSerial(address);
        case PortNetwork: return OpenTcp(address);
        case PortInProcess: return OpenInProcess(address);
        case PortReplay: return CReplayLink::Open(address);
        case PortGpsd: return OpenGpsd(address);
        default: Fail(address, basekit::kErrorInternal);
    }
}

std::unique_ptr<CLink> CLinkFactory::OpenSerial(const CSmartPtr<IPortAddr>& address) {
    const SerialLineSettings settings = SettingsOf(address);
    if (!ValidSettings(settings)) Fail(address, basekit::kErrorInvalidParameter);
    CFd fd(::open(address->GetName().ToUtf8().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (fd.Get() < 0) FailErrno(address, errno);
    if (const int err = ApplySerialLineSettings(fd.Get(), settings)) FailErrno(address, err);
    return std::make_unique<CLink>(address, fd.Release());
}

std::unique_ptr<CLink> CLinkFactory::OpenTcp(const CSmartPtr<IPortAddr>& address) {
    return std::make_unique<CLink>(address, ConnectTcp(address));
}

// gpsd sends nothing until a client asks; this asks for the receivers' sentences as they came.
// Its JSON answers ("VERSION", "DEVICES", "WATCH") are no sentences and the lexer passes them by.
std::unique_ptr<CLink> CLinkFactory::OpenGpsd(const CSmartPtr<IPortAddr>& address) {
    constexpr unsigned kWatchTimeoutMs = 5000;
    auto link = std::make_unique<CLink>(address, ConnectTcp(address), CLink::Traffic::NmeaOnly);
    const LinkStatus status = link->Write("?WATCH={\"enable\":true,\"nmea\":true};\n", kWatchTimeoutMs);
    if (status != LinkStatus::Success)
        Fail(address, status == LinkStatus::Timeout ? basekit::kErrorTimeout : basekit::kErrorLinkLost);
    return link;
}

int CLinkFactory::ConnectTcp(const CSmartPtr<IPortAddr>& address) {
    const auto props = address->GetProperties();
    const QByteArray host = props->GetProperty(L"Host").toString().toUtf8();
    const QByteArray port = props->GetProperty(L"Port").toString().toUtf8();
    const QVariant t = props->GetProperty(L"ConnectTimeout");
    const int timeoutMs = t.isValid() ? t.toInt() : 5000;
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.constData(), port.constData(), &hints, &found) != 0 || !found) Fail(address, basekit::kErrorHostNotFound);
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> list(found, &::freeaddrinfo);
    int lastError = ECONNREFUSED;
    for (const addrinfo* ai = list.get(); ai; ai = ai->ai_next) {
        CFd fd(::socket(ai->ai_family, ai->ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, ai->ai_protocol));
        if (fd.Get() < 0) { lastError = errno; continue; }
        if (::connect(fd.Get(), ai->ai_addr, ai->ai_addrlen) < 0 && errno != EINPROGRESS) { lastError = errno; continue; }
        pollfd p{fd.Get(), POLLOUT, 0};
        if (::poll(&p, 1, timeoutMs) != 1) { lastError = ETIMEDOUT; continue; }
        int soError = 0;
        socklen_t len = sizeof soError;
        ::getsockopt(fd.Get(), SOL_SOCKET, SO_ERROR, &soError, &len);
        if (soError != 0) { lastError = soError; continue; }
        const int one = 1;
        ::setsockopt(fd.Get(), IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        return fd.Release();
    }
    FailErrno(address, lastError);
}

std::unique_ptr<CLink> CLinkFactory::OpenInProcess(const CSmartPtr<IPortAddr>& address) {
    InProcessOpener opener;
    {
        const std::lock_guard lock(OpenerMutex());
        opener = OpenerSlot();
    }
    if (!opener) FailErrno(address, ENODEV);
    CFd fd(opener(address));
    if (fd.Get() < 0) FailErrno(address, ECONNREFUSED);
    if (const int err = SetNonBlocking(fd.Get())) FailErrno(address, err);
    return std::make_unique<CLink>(address, fd.Release());
}

}  // namespace devio
