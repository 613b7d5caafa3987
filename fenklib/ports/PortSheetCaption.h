#pragma once
#include "platform/basekit/ustring.h"

// "dev/ser/a Properties": the port's keyword first.
basekit::ustring PortSheetCaption(const basekit::ustring& keyword);
