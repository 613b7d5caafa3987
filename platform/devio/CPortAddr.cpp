#include "platform/devio/CPortAddr.h"

#include <QUrl>
#include <QUrlQuery>
#include <array>

#include "platform/basekit/CWinException.h"
#include "platform/devio/DevioStrings.h"

namespace devio {

namespace {

struct OptionName { const char* option; const wchar_t* property; };
// "rate" is the replay's name for the line rate a capture was taken at.
constexpr std::array<OptionName, 9> kOptions{{
    {"baud", L"BaudRate"}, {"bits", L"ByteSize"}, {"parity", L"Parity"}, {"stops", L"StopBits"},
    {"rtscts", L"RtsCts"}, {"timeout", L"ConnectTimeout"}, {"log", L"WireLog"}, {"rate", L"BaudRate"},
    {"loop", L"Loop"},
}};
constexpr int kGpsdPort = 2947;

const wchar_t* PropertyOf(const QString& option) {
    for (const auto& o : kOptions)
        if (option == QLatin1String(o.option)) return o.property;
    return nullptr;
}

template <typename... Args>
[[noreturn]] void Refuse(unsigned reason, const Args&... args) {
    throw basekit::CWinException("PortAddr", __LINE__, ustring::Format(DevioText(reason).c_str(), args...),
                                 basekit::kErrorInvalidParameter);
}

// Numeric options must be whole numbers; the factory checks their ranges.
void CheckNumbers(const ustring& text, const std::map<ustring, QVariant>& props) {
    for (const wchar_t* name : {L"BaudRate", L"ByteSize", L"StopBits", L"ConnectTimeout", L"Loop"}) {
        const auto it = props.find(name);
        if (it == props.end()) continue;
        bool ok = false;
        it->second.toString().toUInt(&ok);
        if (ok) continue;
        for (const auto& o : kOptions)
            if (ustring(o.property) == ustring(name))
                Refuse(kStrLinkBadNumber, text, ustring::FromUtf8(o.option), ustring::FromQString(it->second.toString()));
    }
}

// "sim:", "serial:/dev/x?...", "tcp://host:port?...", "file:/path?rate=..&loop=1", "gpsd://host[:port]"
CSmartPtr<IPortAddr> Make(const ustring& text) {
    const QString s = text.ToQString().trimmed();
    const QString schemeEnd = s.section(QLatin1Char(':'), 0, 0);
    std::map<ustring, QVariant> props;
    const qsizetype q = s.indexOf(QLatin1Char('?'));
    const QString head = q < 0 ? s : s.left(q);
    const QUrlQuery query(q < 0 ? QString() : s.mid(q + 1));
    for (const auto& [key, value] : query.queryItems(QUrl::FullyDecoded)) {
        const wchar_t* name = PropertyOf(key);
        if (!name) Refuse(kStrLinkUnknownOption, text, ustring::FromQString(key));
        props[name] = value;
    }
    CheckNumbers(text, props);
    if (schemeEnd == QLatin1String("sim")) {
        return CSmartPtr<IPortAddr>(new CPortAddr(PortInProcess, L"sim", std::move(props), text));
    }
    if (schemeEnd == QLatin1String("serial")) {
        const QString path = head.mid(7);
        if (path.isEmpty()) Refuse(kStrLinkNoSerialPath, text);
        if (!props.count(L"BaudRate")) props[L"BaudRate"] = 115200;
        return CSmartPtr<IPortAddr>(new CPortAddr(PortSerial, ustring::FromQString(path), std::move(props), text));
    }
    if (schemeEnd == QLatin1String("tcp")) {
        const QUrl url(head);
        if (!url.isValid() || url.host().isEmpty() || url.port() <= 0) Refuse(kStrLinkNoHostOrPort, text);
        props[L"Host"] = url.host();
        props[L"Port"] = url.port();
        const ustring name = ustring::FromQString(url.host() + QLatin1Char(':') + QString::number(url.port()));
        return CSmartPtr<IPortAddr>(new CPortAddr(PortNetwork, name, std::move(props), text));
    }
    if (schemeEnd == QLatin1String("file")) {
        const QString path = head.mid(5);
        if (path.isEmpty()) Refuse(kStrLinkNoCapturePath, text);
        if (!props.count(L"BaudRate")) props[L"BaudRate"] = 115200;
        return CSmartPtr<IPortAddr>(new CPortAddr(PortReplay, ustring::FromQString(path), std::move(props), text));
    }
    if (schemeEnd == QLatin1String("gpsd")) {
        const QUrl url(head);
        if (!url.isValid() || url.host().isEmpty() || url.port(kGpsdPort) <= 0) Refuse(kStrLinkNoGpsdHost, text);
        props[L"Host"] = url.host();
        props[L"Port"] = url.port(kGpsdPort);
        const ustring name = ustring::FromQString(url.host() + QLatin1Char(':') + QString::number(url.port(kGpsdPort)));
        return CSmartPtr<IPortAddr>(new CPortAddr(PortGpsd, name, std::move(props), text));
    }
    Refuse(kStrLinkUnknownKind, text);
}

}  // namespace

CPortAddr::CPortAddr(EPortType type, ustring name, std::map<ustring, QVariant> properties, ustring url)
    : m_type(type), m_name(std::move(name)), m_properties(std::move(properties)), m_url(std::move(url)) {}

CSmartPtr<IPropertyContainer> CPortAddr::GetProperties() const {
    return CSmartPtr<IPropertyContainer>(const_cast<CPortAddr*>(this));
}

QVariant CPortAddr::GetProperty(const ustring& name) const {
    const auto it = m_properties.find(name);
    return it == m_properties.end() ? QVariant() : it->second;
}

CSmartPtr<IPortAddr> IPortAddr::Parse(const ustring& url) {
    return Make(url.Trimmed().empty() ? ustring(L"sim:") : url);
}

}  // namespace devio
