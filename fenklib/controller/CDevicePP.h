#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/DialogTemplate.h"
#include "platform/basekit/ustring.h"
#include "platform/hwctl/IControllerBackend.h"
#include "platform/uikit/CResizablePropertyPage.h"

// A controller tools page over one device of the controller (laser, camera, compass): a line
// of state and the page's action. A controller without the device gets a page that says so and
// offers nothing; a failing device shows its error and the page stays usable.
class CDevicePP : public uikit::CResizablePropertyPage {
public:
    enum : unsigned { IDC_STATE = 100, IDC_ACTION, IDC_SECOND_ACTION };

    const CDialogControls& Controls() const { return m_controls; }
    bool IsPresent() const { return m_present; }

    bool OnInitDialog() override;

protected:
    // layout and its wide form have IDC_STATE and IDC_ACTION rows; device is the backend's name
    // of the device.
    CDevicePP(const DLG_TEMPLATE& layout, const DLG_TEMPLATE& wide, unsigned title, const char* device, unsigned absentText);
    // The action on the device; returns the new line of state, empty to keep the old one.
    virtual basekit::ustring Act(hwctl::IControllerBackend& backend) = 0;
    // Runs work on a fresh backend, reporting the device's failure in an error box.
    void WithDevice(const std::function<void(hwctl::IControllerBackend&)>& work);
    void ShowState(const basekit::ustring& text);
    virtual void UpdateControls();

private:
    CDialogControls m_controls;
    const char* m_device;
    unsigned m_absentText;
    bool m_present = false;
};
