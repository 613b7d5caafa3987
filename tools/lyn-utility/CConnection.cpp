#include "tools/lyn-utility/CConnection.h"

#include "platform/basekit/CWinException.h"
#include "platform/devio/CLinkFactory.h"
#include "tools/lyn-utility/HostStrings.h"
#include "tools/rcvsim/RcvSim.h"

CConnection::CConnection(const CFenkBinding& library) : m_library(library) {
    devio::CLinkFactory::RegisterInProcess([this](const basekit::CSmartPtr<devio::IPortAddr>&) {
        if (!m_simulator) m_simulator = std::make_unique<rcvsim::RcvSim>();
        return m_simulator->OpenInProcess();
    });
}

CConnection::~CConnection() {
    Close();
    devio::CLinkFactory::RegisterInProcess(nullptr);
}

void CConnection::Open(const basekit::ustring& url) {
    Close();
    auto address = devio::IPortAddr::Parse(url);
    if (!m_library.PreOpenPort(address))
        throw basekit::CStdException(basekit::ustring::Format(HostText(HS_REFUSED_BY_HOOK).c_str(), url));
    m_receiver = devio::CReceiver::Open(address);
    m_address = std::move(address);
    m_url = url;
}

void CConnection::Close() {
    if (!m_receiver) return;
    m_receiver.Reset();
    m_library.PostClosePort(m_address);
    m_address.Reset();
}

void CConnection::Reopen() {
    const basekit::ustring url = m_url;
    Open(url);
}
