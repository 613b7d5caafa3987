#include "fenklib/ports/CUniversalPortPS.h"

#include "fenklib/ports/PortSheetCaption.h"

CUniversalPortPS::CUniversalPortPS(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::EDev port, QWidget* parent)
    : CFenkPropertySheet(receiver, PortSheetCaption(devio::vok::ToKeyword(port)), parent, L"CUniversalPortPS"),
      m_general(receiver, port) {
    AddPage(&m_general);
}

CUniversalPortPS::~CUniversalPortPS() { DestroyWindow(); }
