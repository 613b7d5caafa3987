#pragma once
#include <optional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/msglist/MessageList.h"
#include "fenklib/ports/CReceiverPortBasePP.h"
#include "platform/basekit/CStdException.h"

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

    // What the page read when it opened; each reading stands alone, so one that failed leaves
    // the others usable and is itself never written back.
    struct READING {
        std::optional<devio::vok::EIMode> imode;
        std::optional<fenkmsg::MessageList> messages;
        bool ownPort = true;   // unknown counts as the controller's own: its mode stays locked
        int lineRate = 0;
        basekit::CStdException::CExInfo firstError;
    };
    static READING Read(devio::CVokReceiverMate& mate, devio::vok::EDev port);

private:
    void Show(const READING& reading);
    void FillOutputMode();
    // The chosen output mode made into the working list; false when the period is refused.
    bool ApplyOutputMode();
    int OutputModeData() const;
    fenkmsg::MessageList ChosenList() const;
    void ShowLoad();
    static int ReadLineRate(devio::CVokReceiverMate& mate, devio::vok::EDev port);

    CDialogControls m_controls;
    fenkmsg::MessageList m_messages;
    // False while the port's output list is unknown (not read yet, or its reading failed): the
    // page then writes no output list unless the user chose one.
    bool m_messagesKnown = false;
    bool m_read = false;
    double m_period = 1.0;
    // The period is taken from its edit only once the user typed in it: the number shown is
    // rounded, the one read is written back exactly.
    bool m_periodEdited = false;
    bool m_ownPort = true;
    int m_lineRate = 0;
};
