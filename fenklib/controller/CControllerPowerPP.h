#pragma once
#include <array>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CResizablePropertyPage.h"

// What tells the controller's internal receiver page from its modem page.
struct POWER_DEVICE {
    unsigned title;                          // page title
    unsigned absentText;                     // "%s: ... no internal ..." (%s: the tool sheet's name)
    bool receiver;                           // the receiver's switch, else the modem's
    std::array<Zed_Settings::Bit, 3> rules;  // on connect, off on disconnect, off on exit
    std::array<unsigned, 3> ruleTexts;
};

inline constexpr POWER_DEVICE kInternalReceiver{
    IDS_PAGE_RECEIVER, IDS_NO_INTERNAL_RECEIVER, true,
    {Zed_Settings::ReceiverOnConnect, Zed_Settings::ReceiverOffDisconnect, Zed_Settings::ReceiverOffExit},
    {IDS_POWER_ON_CONNECT_RECEIVER, IDS_POWER_OFF_DISCONNECT_RECEIVER, IDS_POWER_OFF_ON_EXIT}};
inline constexpr POWER_DEVICE kInternalModem{
    IDS_PAGE_MODEM, IDS_NO_INTERNAL_MODEM, false,
    {Zed_Settings::ModemOnConnect, Zed_Settings::ModemOffDisconnect, Zed_Settings::ModemOffExit},
    {IDS_POWER_ON_CONNECT_MODEM, IDS_POWER_OFF_DISCONNECT_MODEM, IDS_POWER_OFF_ON_EXIT}};

// A page for the controller's internal receiver or modem: its power switch, acting at once
// through the controller's hardware, and its three power rules, kept in the library settings
// on OK or Apply for the port hooks to follow.
class CControllerPowerPP : public uikit::CResizablePropertyPage {
public:
    enum : unsigned {
        IDC_POWER_GROUP = 100, IDC_STATE, IDC_POWER_ON, IDC_POWER_OFF, IDC_RULES_GROUP,
        IDC_RULE_CONNECT, IDC_RULE_DISCONNECT, IDC_RULE_EXIT,
    };
    // toolName: the sheet's name for the messages; backpack: the device is there only on a
    // backpack controller.
    CControllerPowerPP(const POWER_DEVICE& device, unsigned toolName, bool backpack);

    const CDialogControls& Controls() const { return m_controls; }

    bool OnInitDialog() override;
    bool OnSetActive() override;
    bool OnApply() override;

private:
    void Switch(bool on);
    void ShowState();
    void UpdateControls();

    const POWER_DEVICE& m_device;
    unsigned m_toolName;
    bool m_backpack;
    CDialogControls m_controls;
    bool m_present = false;
    bool m_powered = false;
};
