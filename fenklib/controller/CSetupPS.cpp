#include "fenklib/controller/CSetupPS.h"

#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"

CSetupPS::CSetupPS(QWidget* parent) : CResizablePropertySheet(parent, LoadResString(IDS_SETUP_CAPTION), L"CSetupPS") {
    AddPage(&m_general);
    AddPage(&m_modems);
}
