#include "fenklib/controller/CZedToolsPS.h"

#include "fenklib/frame/LibraryHelpers.h"

CZedToolsPS::CZedToolsPS(QWidget* parent)
    : CResizablePropertySheet(parent, LoadResString(IDS_ZED_TOOLS), L"CZedToolsPS"),
      m_receiver(kInternalReceiver, IDS_ZED_TOOLS, false),
      m_modem(kInternalModem, IDS_ZED_TOOLS, false) {
    for (uikit::CResizablePropertyPage* page : std::initializer_list<uikit::CResizablePropertyPage*>{
             &m_receiver, &m_modem, &m_laser, &m_camera, &m_compass})
        AddPage(page);
}
