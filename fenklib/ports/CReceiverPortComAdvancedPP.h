#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/receiver/VokEnums.h"

// The script engine of a port: its variables and its control (state, profiles).
class CReceiverPortComAdvancedPP : public CFenkPropertyPage {
public:
    enum : unsigned { IDC_VARIABLES = 3391, IDC_CONTROL };
    CReceiverPortComAdvancedPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port);
    ~CReceiverPortComAdvancedPP() override;

    void OnVariables();
    void OnControl();
    const CDialogControls& Controls() const { return m_controls; }

private:
    CDialogControls m_controls;
    devio::vok::ECom m_port;
};
