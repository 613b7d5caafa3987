#pragma once
// The argument lists the launchers come in. Each shape is the launcher's parameter list and, after
// it, the same arguments as its window's constructor takes them; a row of FenkLauncherTable.h
// names its shape, and the exported function, its declaration and the host's call follow.
#include <map>
#include <vector>

#include "fenklib/files/ProgressInfo.h"
#include "fenklib/receiver/VokTypes.h"
#include "platform/basekit/CSmartPtr.h"
#include "platform/basekit/ustring.h"
#include "platform/devio/IModem.h"
#include "platform/devio/IPort.h"
#include "platform/devio/IReceiver.h"

class QWidget;

// A window on the receiver the host has open.
#define FENK_SHAPE_ReceiverParent (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent), (receiver, parent)
// A window that holds no receiver.
#define FENK_SHAPE_Parent (QWidget* parent), (parent)
// The radio channels to pick from, and the chosen one in and out.
#define FENK_SHAPE_ChannelList \
    (QWidget* parent, const std::vector<double>& channels, double& result), (parent, channels, result)
// Editors of a value on the receiver: the value in and out.
#define FENK_SHAPE_XyzPosition \
    (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_XYZ& pos), (receiver, parent, pos)
#define FENK_SHAPE_GeoPosition \
    (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_GEO& pos), (receiver, parent, pos)
#define FENK_SHAPE_MessageList                                                                      \
    (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, std::vector<devio::vok::MSG>& list), \
        (receiver, parent, list)
#define FENK_SHAPE_Message \
    (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::MSG& message), (receiver, parent, message)
#define FENK_SHAPE_MessageName \
    (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, basekit::ustring& name), (receiver, parent, name)
// slot: the place in the receiver's point list the new point is stored in.
#define FENK_SHAPE_PointSlot (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, int slot), (receiver, parent, slot)
// A copy between the receiver and a local file, either way.
#define FENK_SHAPE_CopyFile                                                                                        \
    (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, const wchar_t* source, const wchar_t* target, \
     bool fromReceiver),                                                                                           \
        (receiver, parent, source, target, fromReceiver)
// What a progress window shows and the work it runs.
#define FENK_SHAPE_Progress \
    (basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, PROGRESS_INFO info), (receiver, parent, std::move(info))
// The argument lists of the launchers whose windows are still to come: a modem's sheet, the
// firmware upload over a port, and the command-line tool windows (a code in and out, and the
// drive letters with their folders).
#define FENK_SHAPE_ModemParent (basekit::CSmartPtr<devio::IModem> modem, QWidget* parent), (modem, parent)
#define FENK_SHAPE_PortFirmware                                                                             \
    (QWidget* parent, basekit::CSmartPtr<devio::IPort> port, bool first, bool second, unsigned long value), \
        (parent, port, first, second, value)
#define FENK_SHAPE_ParentCode (QWidget* parent, int& code), (parent, code)
#define FENK_SHAPE_ParentCodeLetters \
    (QWidget* parent, int& code, const std::map<wchar_t, basekit::ustring>& letters), (parent, code, letters)

// The pieces of a shape: its parameter list, and the arguments passed on.
#define FENK_SHAPE_PARAMETERS(...) FENK_SHAPE_FIRST_(__VA_ARGS__)
#define FENK_SHAPE_ARGUMENTS(...) FENK_SHAPE_SECOND_(__VA_ARGS__)
#define FENK_SHAPE_FIRST_(parameters, arguments) parameters
#define FENK_SHAPE_SECOND_(parameters, arguments) arguments
