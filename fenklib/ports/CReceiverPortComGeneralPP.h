#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/receiver/VokEnums.h"

// A script port's identity: its keyword, read-only.
class CReceiverPortComGeneralPP : public CFenkPropertyPage {
public:
    enum : unsigned { IDC_DEVICE_ID = 3379 };
    CReceiverPortComGeneralPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port);
    ~CReceiverPortComGeneralPP() override;
    const CDialogControls& Controls() const { return m_controls; }

private:
    CDialogControls m_controls;
};
