#include "fenklib/frame/PortHooks.h"

#include <QApplication>

#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/frame/CFenkLibApp.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/resources/StringIds.h"
#include "platform/hwctl/CUniversalZed.h"
#include "platform/uikit/CMessageBoxService.h"

namespace {

// Only local serial ports can lead to the controller's own devices.
bool MayBeInternal(const basekit::CSmartPtr<devio::IPortAddr>& addr) {
    return addr && addr->GetType() == devio::PortSerial;
}

bool Refuse(unsigned textId) {
    uikit::CMessageBoxService::Show(QApplication::activeWindow(), LoadResString(textId),
                                    CFenkLibApp::Instance().ApplicationName(), uikit::MB_OK | uikit::MB_ICONERROR);
    return false;
}

}  // namespace

bool PreOpenPort(basekit::CSmartPtr<devio::IPortAddr> addr) {
    if (!MayBeInternal(addr)) return true;
    const Zed_Settings rules = CFenkGlobalSettings::Ref().GetZedSettings();
    hwctl::CUniversalZed zed;
    const std::string port = addr->GetName().ToUtf8();
    if (zed.IsZed() && zed.IsInternalReceiverPort(port) && !zed.GPS_GetPowerState()) {
        if (!rules.Has(Zed_Settings::ReceiverOnConnect))
            return Refuse(zed.IsPad7() ? IDS_UNPOWERED_RECEIVER_BACKPACK : IDS_UNPOWERED_RECEIVER_ZED);
        zed.GPS_SetPowerState(true, true);
    }
    if (zed.IsZed() && zed.IsInternalModemPort(port) && !zed.Modem_GetPowerState()) {
        if (!rules.Has(Zed_Settings::ModemOnConnect)) return Refuse(IDS_UNPOWERED_MODEM);
        zed.Modem_SetPowerState(true);
    }
    return true;
}

bool PostClosePort(basekit::CSmartPtr<devio::IPortAddr> addr) {
    if (!MayBeInternal(addr)) return true;
    const Zed_Settings rules = CFenkGlobalSettings::Ref().GetZedSettings();
    hwctl::CUniversalZed zed;
    const std::string port = addr->GetName().ToUtf8();
    if (zed.IsZed() && zed.IsInternalReceiverPort(port) && rules.Has(Zed_Settings::ReceiverOffDisconnect) &&
        zed.GPS_GetPowerState())
        zed.GPS_SetPowerState(false, true);
    if (zed.IsZed() && zed.IsInternalModemPort(port) && rules.Has(Zed_Settings::ModemOffDisconnect) &&
        zed.Modem_GetPowerState())
        zed.Modem_SetPowerState(false);
    return true;
}

// The exit hook never fails; a switch that fails does not keep the other one from trying.
void OnExitApp() {
    const Zed_Settings rules = CFenkGlobalSettings::Ref().GetZedSettings();
    const auto attempt = [](auto&& step) {
        try {
            step();
        } catch (...) {
        }
    };
    attempt([&] {
        hwctl::CUniversalZed zed;
        if (zed.IsZed() && rules.Has(Zed_Settings::ReceiverOffExit)) zed.GPS_SetPowerState(false, true);
    });
    attempt([&] {
        hwctl::CUniversalZed zed;
        if (zed.IsZed() && rules.Has(Zed_Settings::ModemOffExit)) zed.Modem_SetPowerState(false);
    });
}
