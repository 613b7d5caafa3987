// The controller's own port between the ports dialog and the host that must follow it.
#include "fenklib/ports/OwnPortChange.h"

#include <mutex>

#include "fenklib/frame/FenkExport.h"
#include "fenklib/receiver/CVokReceiverMate.h"
#include "platform/basekit/CWinException.h"

namespace {

// Written by the dialog and read by the host, both on the user-interface thread; the lock
// only keeps a stray caller from reading half a record.
std::mutex g_mutex;
std::optional<OWN_PORT_CHANGE> g_change;

}  // namespace

void RecordOwnPortChange(const OWN_PORT_CHANGE& change) {
    const std::lock_guard lock(g_mutex);
    g_change = change;
}

void ForgetOwnPortChange() {
    const std::lock_guard lock(g_mutex);
    g_change.reset();
}

std::optional<OWN_PORT_CHANGE> LastOwnPortChange() {
    const std::lock_guard lock(g_mutex);
    return g_change;
}

// The framing the controller's port had and has now; false when no ports dialog changed it.
extern "C" FENK_EXPORT bool FenkOwnPortChange(devio::SerialLineSettings& before, devio::SerialLineSettings& after) {
    const std::optional<OWN_PORT_CHANGE> change = LastOwnPortChange();
    if (!change) return false;
    before = LineOf(change->before);
    after = LineOf(change->after);
    return true;
}

// Writes the port's settings from before the change back to it, over a link that answers at
// them; 0, or the system error code of the failure. Nothing to restore is success.
extern "C" FENK_EXPORT int FenkRestoreOwnPort(basekit::CSmartPtr<devio::IReceiver> receiver) {
    const std::optional<OWN_PORT_CHANGE> change = LastOwnPortChange();
    if (!change) return 0;
    const SERIAL_VALUES v = WithDefaults(change->before);
    try {
        devio::CVokReceiverMate mate(receiver);
        mate.SetSerialParameters(change->port, *v.rate, *v.rts, *v.stops, *v.parity, *v.bits);
    } catch (const basekit::CWinException& e) {
        return static_cast<int>(e.Code());
    } catch (const basekit::CStdException&) {
        return static_cast<int>(basekit::kErrorInvalidData);
    }
    ForgetOwnPortChange();
    return 0;
}
