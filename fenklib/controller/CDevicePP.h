#pragma once
#include <QVariant>
#include <functional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/frame/DialogTemplate.h"
#include "platform/basekit/ustring.h"
#include "platform/hwctl/IControllerBackend.h"

// A controller tools page over one device of the controller (laser, camera, compass): a line
// of state and the page's action, which runs as a job of the page on a fresh backend. A
// controller without the device gets a page that says so and offers nothing; a failing device
// shows its error and the page stays usable.
class CDevicePP : public CFenkPropertyPage {
public:
    enum : unsigned { IDC_STATE = 100, IDC_ACTION, IDC_SECOND_ACTION };

    const CDialogControls& Controls() const { return m_controls; }
    bool IsPresent() const { return m_present; }

    bool OnInitDialog() override;
    bool NeedsReceiver() const override { return false; }

protected:
    // What the page's button does: work runs on the page's worker with a fresh backend; show
    // turns its result into the new line of state on this thread (empty keeps the old one).
    struct ACTION {
        std::function<QVariant(hwctl::IControllerBackend&)> work;
        std::function<basekit::ustring(const QVariant&)> show;
    };

    // layout and its wide form have IDC_STATE and IDC_ACTION rows; device is the backend's name
    // of the device.
    CDevicePP(const DLG_TEMPLATE& layout, const DLG_TEMPLATE& wide, unsigned title, const char* device, unsigned absentText);
    // Asks what the action needs (a file name) on this thread; without work nothing is done.
    virtual ACTION Prepare() = 0;
    void ShowState(const basekit::ustring& text);
    void UpdateControls() override;

private:
    void OnAction();

    CDialogControls m_controls;
    const char* m_device;
    unsigned m_absentText;
    bool m_present = false;
};
