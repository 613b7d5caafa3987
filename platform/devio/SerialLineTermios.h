#pragma once
// Only for units that use the kernel's own terminal structure (it cannot share a unit with
// <termios.h>).
#include <asm/termbits.h>

#include "platform/devio/SerialLine.h"

namespace devio {

// The terminal settings for a serial line: raw, at any rate, with the framing given.
void ComposeSerialLine(struct termios2& t, const SerialLineSettings& settings);

}  // namespace devio
