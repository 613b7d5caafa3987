#pragma once
#include "fenklib/receiver/VokTypes.h"
#include "fenklib/site/Wgs84.h"
#include "platform/basekit/CSmartPtr.h"
#include "platform/basekit/ustring.h"

class QWidget;
#include "platform/devio/IReceiver.h"

// A position held geodetically by the base set-up windows, edited and shown in the form the
// chosen editor works in (the Cartesian editor sees it on WGS-84).
namespace positionediting {

// Opens the editor; true (and pos changed) when the person confirmed it.
bool Edit(const basekit::CSmartPtr<devio::IReceiver>& receiver, QWidget* parent, CoordEditor editor,
          devio::vok::POS_GEO& pos);
basekit::ustring Show(CoordEditor editor, const devio::vok::POS_GEO& pos);

}  // namespace positionediting
