#pragma once
#include <functional>
#include <memory>

#include "platform/devio/CLink.h"

namespace devio {

// Opens the link an address names. The in-process simulator is not part of this library: a
// program that embeds one registers an opener that returns a connected descriptor.
class CLinkFactory {
public:
    using InProcessOpener = std::function<int(const CSmartPtr<IPortAddr>& address)>;

    // Throws basekit::CWinException (with errno) when the link cannot be opened.
    static std::unique_ptr<CLink> Open(const CSmartPtr<IPortAddr>& address);
    static void RegisterInProcess(InProcessOpener opener);

private:
    static std::unique_ptr<CLink> OpenSerial(const CSmartPtr<IPortAddr>& address);
    static std::unique_ptr<CLink> OpenTcp(const CSmartPtr<IPortAddr>& address);
    static std::unique_ptr<CLink> OpenInProcess(const CSmartPtr<IPortAddr>& address);
    static std::unique_ptr<CLink> OpenGpsd(const CSmartPtr<IPortAddr>& address);
    static int ConnectTcp(const CSmartPtr<IPortAddr>& address);
};

}  // namespace devio
