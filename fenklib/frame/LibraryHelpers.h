#pragma once
#include <QFont>

#include "fenklib/frame/FenkExport.h"
#include "fenklib/receiver/VokTypes.h"
#include "platform/basekit/ustring.h"

// Small helpers every dialog uses.
basekit::ustring LoadResString(unsigned id);
const QFont& GetBoldFont();
// The data file beside the host program ("DATA" folder), else in the XDG data folders
// (".../fenklib/DATA"); the path beside the host when neither has it. Exported: a host looks its
// data files up the same way.
FENK_EXPORT basekit::ustring GetDataFilePath(const basekit::ustring& name, const basekit::ustring& extension);
basekit::ustring FormatXyzText(const devio::vok::POS_XYZ& pos);
basekit::ustring FormatGeoText(const devio::vok::POS_GEO& pos);
