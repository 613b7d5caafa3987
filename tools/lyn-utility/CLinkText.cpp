#include "tools/lyn-utility/CLinkText.h"

#include "tools/lyn-utility/HostStrings.h"

using basekit::ustring;

ustring CLinkText::Describe(const devio::IPortAddr& address) {
    switch (address.GetType()) {
        case devio::PortSerial: {
            const QVariant rate = address.GetProperties()->GetProperty(L"BaudRate");
            return ustring::Format(HostText(HS_LINK_SERIAL).c_str(), address.GetName(), rate.toUInt());
        }
        case devio::PortNetwork: return ustring::Format(HostText(HS_LINK_TCP).c_str(), address.GetName());
        case devio::PortInProcess: return HostText(HS_LINK_SIM);
        default: return address.ToUrl();
    }
}

ustring CLinkText::Health(const devio::LINK_HEALTH& h) {
    const ustring last = h.msSinceLastByte < 0
                             ? HostText(HS_NEVER)
                             : ustring::Format(HostText(HS_SECONDS_AGO).c_str(), static_cast<double>(h.msSinceLastByte) / 1000.0);
    const auto count = [](std::uint64_t n) { return static_cast<unsigned long long>(n); };
    return ustring::Format(HostText(HS_HEALTH).c_str(), h.bytesInPerSecond, h.bytesOutPerSecond, last, h.sentencesPerSecond,
                           count(h.decodedSentences), count(h.ignoredSentences), count(h.badSentences), count(h.droppedFrames));
}
