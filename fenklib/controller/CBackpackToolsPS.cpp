#include "fenklib/controller/CBackpackToolsPS.h"

#include "fenklib/frame/LibraryHelpers.h"

CBackpackToolsPS::CBackpackToolsPS(QWidget* parent)
    : CResizablePropertySheet(parent, LoadResString(IDS_BACKPACK_TOOLS), L"CBackpackToolsPS"),
      m_receiver(kInternalReceiver, IDS_BACKPACK_TOOLS, true) {
    AddPage(&m_receiver);
}
