#include "fenklib/ports/OutputMode.h"

SET_MATCH MatchMessageSet(const fenkmsg::MessageList& set, const fenkmsg::MessageList& port) {
    SET_MATCH result;
    if (set.empty() || set.size() != port.size()) return result;
    for (size_t i = 0; i < set.size(); ++i) {
        const devio::vok::MSG& s = set[i];
        const devio::vok::MSG& p = port[i];
        if (fenkmsg::CanonicalName(s.name) != fenkmsg::CanonicalName(p.name)) return {};
        if (s.phase != p.phase || s.count != p.count || s.flags != p.flags) return {};
        if (s.period == 0.0) {
            if (result.period && *result.period != p.period) return {};
            result.period = p.period;
        } else if (s.period != p.period) {
            return {};
        }
    }
    result.matches = true;
    return result;
}

fenkmsg::MessageList ExpandMessageSet(const fenkmsg::MessageList& set, double period) {
    fenkmsg::MessageList list = set;
    for (devio::vok::MSG& msg : list)
        if (msg.period == 0.0) msg.period = period;
    return list;
}
