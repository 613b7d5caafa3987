#pragma once
#include <string>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/ports/DriverVersion.h"
#include "fenklib/receiver/VokEnums.h"

// The script driver installed on a port: what its version file says, its files, a new driver
// from a local folder, and uninstalling it (confirmed first).
class CReceiverPortComDriverPP : public CFenkPropertyPage {
public:
    enum : unsigned {
        IDC_DRIVER_NAME = 3381, IDC_DRIVER_VERSION, IDC_DRIVER_DESCRIPTION,
        IDC_DRIVER_DETAILS, IDC_UPDATE_DRIVER, IDC_UNINSTALL
    };
    CReceiverPortComDriverPP(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port);
    ~CReceiverPortComDriverPP() override;

    bool OnInitDialog() override;
    void OnDriverDetails();
    void OnUpdateDriver();
    void OnUninstall();
    void UpdateControls() override;

    const CDialogControls& Controls() const { return m_controls; }

private:
    // The version file is downloaded as a job of the page; closing the sheet cancels it.
    void ShowVersion();

    CDialogControls m_controls;
    devio::vok::ECom m_port;
};
