#pragma once
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/ports/DriverBundle.h"
#include "fenklib/receiver/VokEnums.h"

// Installs a script driver from a folder on the controller: the user picks the folder (by its
// version file), sees the files and where they go, and Install uploads them one after another
// with progress. Cancel stops the upload; the receiver keeps the files it had for the file in
// flight. Ends with 1 once every file is installed.
class CComUpdateDriverDlg : public CFenkDialog {
public:
    enum : unsigned { IDC_FOLDER = 100, IDC_BROWSE, IDC_LIST, IDC_PROGRESS, IDC_INSTALL };
    CComUpdateDriverDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent);
    ~CComUpdateDriverDlg() override;

    void UpdateControls() override;
    void reject() override;
    void OnBrowse();
    void SetFolder(const QString& folder);
    void Install();
    const std::vector<BUNDLE_FILE>& Files() const { return m_files; }
    const CDialogControls& Controls() const { return m_controls; }

private:
    CDialogControls m_controls;
    devio::vok::ECom m_port;
    std::vector<BUNDLE_FILE> m_files;
};
