#pragma once
#include <QLibrary>
#include <functional>

#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IReceiver.h"

class QWidget;

// The argument lists the library's launchers come in. Every launcher is called by the host in
// the same way (receiver, parent); the shape says what else it takes, which the host supplies.
enum class LauncherShape {
    ReceiverParent,   // (receiver, parent)
    Parent,           // (parent): windows that hold no receiver
    ChannelList,      // (parent, channel frequencies, chosen frequency)
    XyzPosition,      // (receiver, parent, earth-centred position)
    GeoPosition,      // (receiver, parent, geodetic position)
    PointSlot,        // (receiver, parent, place in the point list)
    CopyFile,         // (receiver, parent, receiver file, local file, from the receiver)
    Progress,         // (receiver, parent, what to show and the work to run)
    MessageList,      // (receiver, parent, scheduled messages)
    Message,          // (receiver, parent, one scheduled message)
    MessageName,      // (receiver, parent, a message name)
    ParentCode,       // (parent, a code in/out)
    ParentCodeLetters,  // (parent, a code in/out, drive letters and their folders)
};

using LauncherInvoker = std::function<int(basekit::CSmartPtr<devio::IReceiver>, QWidget*)>;

// The entry point wrapped so that it is called with (receiver, parent), the other arguments
// being a realistic sample of what a host would pass (a position near a survey mark, a list of
// radio channels, a receiver file copied into the temporary folder, ...).
LauncherInvoker MakeInvoker(LauncherShape shape, QFunctionPointer entry);

// Whether the launcher's window works on a receiver (it is given one whatever its shape).
bool TakesReceiver(LauncherShape shape);
