#pragma once
#include <optional>

#include "fenklib/ports/SerialValues.h"

// The last change the serial page made to the port the controller itself talks through, kept
// for the host: the ports dialog ends with 4, the host reopens its link at `after`, and when
// the receiver does not answer there and the host goes back, it asks the library to put
// `before` back on the port. A ports dialog forgets the previous change when it opens.
struct OWN_PORT_CHANGE {
    devio::vok::EDev port;
    SERIAL_VALUES before, after;
};

void RecordOwnPortChange(const OWN_PORT_CHANGE& change);
void ForgetOwnPortChange();
std::optional<OWN_PORT_CHANGE> LastOwnPortChange();
