#pragma once
#include <optional>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokEnums.h"

// A port's script engine: its report, state and current script, and the profile it runs.
// Start runs the chosen profile, Stop clears it; both show the engine's new state.
class CComControlDlg : public CFenkDialog {
public:
    enum : unsigned { IDC_REPORT = 100, IDC_STATE, IDC_SCRIPT, IDC_PROFILE, IDC_START, IDC_STOP, IDC_REFRESH };
    struct ENGINE_STATE {
        basekit::ustring report, state, script, profile;
        std::vector<basekit::ustring> profiles;
    };
    CComControlDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent);
    ~CComControlDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void Refresh();
    // Runs the profile named (empty: stops the engine), then refreshes.
    void RunProfile(const basekit::ustring& profile);
    const CDialogControls& Controls() const { return m_controls; }

private:
    void Run(std::optional<basekit::ustring> profile);
    void Show(const ENGINE_STATE& state);

    CDialogControls m_controls;
    devio::vok::ECom m_port;
};
