#pragma once
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/receiver/CVokReceiverMateCore.h"

// Writes the site description into the receiver's log as five events, "_SIT", "_DSC", "_ANH",
// "_DYM", "_ANT" in this order, so that a recorded file carries it. The first failing command
// ends the sequence with its exception; the events sent before it stay in the log. The logging
// pages call this too when they start a recording.
void WriteSiteEvents(devio::CVokReceiverMateCore& mate, const SiteParameters& site);

// The "_ANH" value: the height with six decimals, "s" after it for a slant measurement.
basekit::ustring FormatSiteHeight(const SiteParameters& site);
