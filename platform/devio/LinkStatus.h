#pragma once

namespace devio {

// Outcome of one link operation.
enum class LinkStatus { Success, Timeout, Closed, IoError, Cancelled };

}  // namespace devio
