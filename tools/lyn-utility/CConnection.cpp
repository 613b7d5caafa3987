#include "tools/lyn-utility/CConnection.h"

#include <QUrlQuery>

#include "platform/basekit/CWinException.h"
#include "platform/devio/CLinkFactory.h"
#include "tools/lyn-utility/CHostError.h"
#include "tools/lyn-utility/CLinkText.h"
#include "tools/lyn-utility/HostStrings.h"
#include "tools/rcvsim/RcvSim.h"

using basekit::ustring;

namespace {

// The plain sentence for a link that could not be opened: a link text's own reason, or what
// the error code says to check.
ustring PlainFailure(const ustring& url, const basekit::CStdException& e) {
    ustring reason = e.GetPlainMessage();
    if (const auto* w = dynamic_cast<const basekit::CWinException*>(&e); w && w->Code() == basekit::kErrorInvalidParameter)
        reason = w->Text();
    return ustring::Format(HostText(HS_CANNOT_CONNECT).c_str(), url, reason.empty() ? e.GetMessage() : reason);
}

}  // namespace

CConnection::CConnection(const CFenkBinding& library) : m_library(library) {
    devio::CLinkFactory::RegisterInProcess([this](const basekit::CSmartPtr<devio::IPortAddr>&) {
        if (!m_simulator) m_simulator = std::make_unique<rcvsim::RcvSim>();
        return m_simulator->OpenInProcess();
    });
    if (const auto probe = library.Probe()) {
        m_probe = [probe](const basekit::CSmartPtr<devio::IReceiver>& receiver, unsigned timeoutMs, CFenkBinding::Identity& id) {
            return static_cast<unsigned>(probe(receiver, timeoutMs, id.model, id.serial, id.firmware));
        };
    }
}

CConnection::~CConnection() {
    Close();
    devio::CLinkFactory::RegisterInProcess(nullptr);
}

void CConnection::Open(const ustring& url) {
    basekit::CSmartPtr<devio::IPortAddr> address;
    basekit::CSmartPtr<devio::CReceiver> receiver;
    try {
        address = devio::IPortAddr::Parse(url);
        if (!m_library.PreOpenPort(address))
            throw basekit::CStdException(ustring::Format(HostText(HS_REFUSED_BY_HOOK).c_str(), url));
        receiver = devio::CReceiver::Open(address);
    } catch (const basekit::CStdException& e) {
        throw CHostError(PlainFailure(url, e), e.GetMessage());
    }
    if (!m_wireLog.empty()) receiver->WireLog().WriteTo(m_wireLog);
    std::optional<CFenkBinding::Identity> identity;
    if (m_probe) {
        CFenkBinding::Identity id;
        if (const unsigned code = m_probe(basekit::CSmartPtr<devio::IReceiver>(receiver.Get()), kProbeTimeoutMs, id)) {
            receiver.Reset();
            m_library.PostClosePort(address);
            const basekit::CWinException cause("Connection", __LINE__, url, code);
            throw CHostError(ustring::Format(HostText(HS_NOTHING_ANSWERS).c_str(), CLinkText::Describe(*address)), cause.GetMessage());
        }
        identity = std::move(id);
    }
    // Only now does the link that was working give way.
    Close();
    m_receiver = std::move(receiver);
    m_address = std::move(address);
    m_identity = std::move(identity);
    m_url = url;
}

void CConnection::Close() {
    if (!m_receiver) return;
    m_receiver.Reset();
    m_library.PostClosePort(m_address);
    m_address.Reset();
    m_identity.reset();
}

void CConnection::Reopen() {
    const ustring url = m_url;
    Open(url);
}

CConnection::FOLLOW_RESULT CConnection::Follow(const std::optional<devio::SerialLineSettings>& line) {
    FOLLOW_RESULT result;
    result.kept = m_url;
    result.tried = line ? WithLine(m_url, *line) : m_url;
    // The old link no longer reaches the receiver, and its device must be free to open anew.
    Close();
    try {
        Open(result.tried);
        return result;
    } catch (const basekit::CStdException& e) {
        result.details = e.GetMessage();
    }
    result.outcome = EFollow::Closed;
    if (result.tried == result.kept) return result;
    try {
        Open(result.kept);
    } catch (const basekit::CStdException& e) {
        result.details += L"\n" + e.GetMessage();
        return result;
    }
    result.outcome = EFollow::WentBack;
    const auto restore = m_library.RestoreOwnPort();
    result.restored = !restore || restore(Receiver()) == 0;
    return result;
}

ustring CConnection::WithLine(const ustring& url, const devio::SerialLineSettings& line) {
    const QString text = url.ToQString();
    if (!text.startsWith(QLatin1String("serial:"))) return url;
    const qsizetype q = text.indexOf(QLatin1Char('?'));
    QUrlQuery query(q < 0 ? QString() : text.mid(q + 1));
    // QString::number writes the C locale's digits, whatever the user's.
    const std::pair<QString, QString> options[] = {
        {QStringLiteral("baud"), QString::number(line.baudRate)},
        {QStringLiteral("bits"), QString::number(line.byteSize)},
        {QStringLiteral("parity"), QString(QLatin1Char(line.parity))},
        {QStringLiteral("stops"), QString::number(line.stopBits)},
        {QStringLiteral("rtscts"), line.rtsCts ? QStringLiteral("on") : QStringLiteral("off")},
    };
    for (const auto& [key, value] : options) {
        query.removeAllQueryItems(key);
        query.addQueryItem(key, value);
    }
    return ustring::FromQString((q < 0 ? text : text.left(q)) + QLatin1Char('?') + query.toString());
}

ustring CConnection::Description() const { return m_address ? CLinkText::Describe(*m_address) : ustring(); }

bool CConnection::SetWireLog(const std::string& path) {
    if (m_receiver && !m_receiver->WireLog().WriteTo(path)) return false;
    m_wireLog = path;
    return true;
}
