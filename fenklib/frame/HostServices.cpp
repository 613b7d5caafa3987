// What a host asks of the library besides its windows: who answers on a link it just opened.
#include "fenklib/frame/FenkExport.h"
#include "fenklib/receiver/CVokReceiverMate.h"

using basekit::ustring;

// 0 when the receiver answered all three; otherwise the system code of the first failure
// (an error reply counts as invalid data).
extern "C" FENK_EXPORT int FenkProbeReceiver(basekit::CSmartPtr<devio::IReceiver> receiver, unsigned timeoutMs, ustring& model,
                                             ustring& serial, ustring& firmware) {
    try {
        devio::CVokReceiverMate mate(receiver);
        mate.Identify(timeoutMs, model, serial, firmware);
        return 0;
    } catch (const basekit::CWinException& e) {
        return static_cast<int>(e.Code());
    } catch (const basekit::CStdException&) {
        return static_cast<int>(basekit::kErrorInvalidData);
    }
}
