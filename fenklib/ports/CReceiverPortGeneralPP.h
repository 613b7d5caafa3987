#pragma once
#include <optional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/msglist/MessageList.h"
#include "fenklib/ports/CReceiverPortBasePP.h"

namespace devio {
class CVokReceiverMate;
}

// A port's input mode and output messages, with the load the messages put on the port's own
// line. The controller's own command port keeps its input mode: switching it out of "cmd" from
// here would cut the controller off.
class CReceiverPortGeneralPP : public CReceiverPortBasePP {
public:
    enum : unsigned { IDC_IMODE = 3285, IDC_OUTPUT_MODE = 3286, IDC_PERIOD = 3287, IDC_MESSAGES = 3288, IDC_LOAD = 3289 };

    CReceiverPortGeneralPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::EDev port);
    ~CReceiverPortGeneralPP() override;

    bool OnInitDialog() override;
    bool OnApply() override;
    void UpdateControls() override;
    void OnMessages();

    const CDialogControls& Controls() const { return m_controls; }
    const fenkmsg::MessageList& WorkingList() const { return m_messages; }
    // The port's own line rate in bit/s, 0 when it has none: the load figure's base.
    int LineRate() const { return m_lineRate; }

private:
    void FillOutputMode();
    // The chosen output mode made into the working list; false when the period is refused.
    bool ApplyOutputMode();
    int OutputModeData() const;
    fenkmsg::MessageList ChosenList() const;
    void ShowLoad();
    static int ReadLineRate(devio::CVokReceiverMate& mate, devio::vok::EDev port);

    CDialogControls m_controls;
    fenkmsg::MessageList m_messages;
    double m_period = 1.0;
    bool m_ownPort = false;
    int m_lineRate = 0;
};
