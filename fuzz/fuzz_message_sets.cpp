// Fuzz target: the predefined message sets reader and the message registry reader. Whatever
// the file holds, they return (no crash, no hang) and every message they give is usable.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "fenklib/msglist/MessageRegistry.h"
#include "fenklib/msglist/PredefinedMessageSets.h"
#include "fuzz/FuzzChecks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const fenkmsg::MESSAGE_SET& set : fenkmsg::ParsePredefinedMessageSets(bytes)) {
        for (const devio::vok::MSG& m : set.messages) {
            FUZZ_CHECK(!m.name.empty());
            FUZZ_CHECK(std::isfinite(m.period) && m.period >= 0);
            FUZZ_CHECK(m.phase == 0 && m.count == 0 && m.flags == 0);
            FUZZ_CHECK(!fenkmsg::Contains({}, m.name));
        }
    }
    const auto registry = fenkmsg::CMessageRegistry::Parse(bytes);
    FUZZ_CHECK(registry.Bytes(L"") >= 0);
    return 0;
}
