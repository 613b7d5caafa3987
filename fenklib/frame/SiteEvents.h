#pragma once
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/receiver/CVokReceiverMateCore.h"

// Writes the site description into the receiver's log as five events, "_SIT", "_DSC", "_ANH",
// "_DYM", "_ANT" in this order, so that a recorded file carries it. The first failing command
// ends the sequence with its exception; the events sent before it stay in the log. The logging
// pages call this too when they start a recording.
// Every value is checked first: one the receiver cannot take throws before anything is sent.
void WriteSiteEvents(devio::CVokReceiverMateCore& mate, const SiteParameters& site);

// Throws when a value cannot travel in an event's quoted argument (a double quote, a control
// character), naming the text; sends nothing.
void CheckSiteEvents(const SiteParameters& site);

// The "_ANH" value: the height with six decimals, "s" after it for a slant measurement.
basekit::ustring FormatSiteHeight(const SiteParameters& site);
