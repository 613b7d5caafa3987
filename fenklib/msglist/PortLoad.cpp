#include "fenklib/msglist/PortLoad.h"

namespace fenkmsg {

PORT_LOAD ComputePortLoad(const MessageList& list, const CMessageRegistry& registry, int lineRate) {
    PORT_LOAD load;
    for (const devio::vok::MSG& m : list) {
        const int bytes = registry.Bytes(m.name);
        if (bytes <= 0 || m.period <= 0) {
            ++load.unknown;
            continue;
        }
        load.bytesPerSecond += bytes / m.period;
    }
    if (lineRate > 0) load.share = load.bytesPerSecond * 10.0 / lineRate;
    return load;
}

}  // namespace fenkmsg
