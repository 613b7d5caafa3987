#pragma once
#include "platform/devio/PositionRecord.h"

// The status pages show and plot both halves of a fix; a receiver that outputs only one of them
// gets the other derived on the WGS-84 ellipsoid.
namespace wgs84 {

// Fills the missing half of a record that carries exactly one; others are left as they came.
void CompletePosition(devio::POSITION_RECORD& record);

}  // namespace wgs84
