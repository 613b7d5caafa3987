#pragma once
#include <optional>
#include <span>

#include "fenklib/msglist/PredefinedMessageSets.h"

// The choices of a port's "Output Mode:": nothing, the port's own list, or a named set.
enum class EOutputMode : int { None = 0, UserDefined = 1, NamedSet = 2 };

// Whether a port's enabled messages are a named set: same names in the same order with the
// same schedule, except that a message the set gives period 0 may run at any period, which is
// then the set's period on this port. Nothing when they differ; an empty set never matches.
struct SET_MATCH {
    bool matches = false;
    std::optional<double> period;
};
SET_MATCH MatchMessageSet(const fenkmsg::MessageList& set, const fenkmsg::MessageList& port);

// A named set as a port's list: every message of period 0 runs at period.
fenkmsg::MessageList ExpandMessageSet(const fenkmsg::MessageList& set, double period);
