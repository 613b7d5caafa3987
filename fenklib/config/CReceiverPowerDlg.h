#pragma once
#include <QTimer>
#include <optional>

#include "fenklib/frame/CParamFields.h"
#include "fenklib/frame/CFenkDialog.h"

// Batteries, external supply, charger and board (refreshed while the dialog is open), the power
// switches the receiver lists and, on models of the extension family, the power-up mode; OK
// writes what changed.
class CReceiverPowerDlg : public CFenkDialog {
public:
    static constexpr int kMaxSwitches = 8;   // rows of the layout; a receiver's further switches are not shown

    CReceiverPowerDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CReceiverPowerDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void accept() override;

    // For tests and the tour.
    std::optional<CParamFields::Values> Collected() const { return m_settings.Collect(m_controls); }
    void Edit(const CParamFields::Values& v) { m_settings.Show(m_controls, v); }
    basekit::ustring StateText(int row) const;
    bool HasPowerUpMode() const { return m_ext; }
    int Refreshes() const { return m_refreshes; }
    int SwitchCount() const { return static_cast<int>(m_switches.size()); }

private:
    struct READING {
        bool ext = false;
        std::vector<int> switches;   // their numbers
        CParamFields::Values states, settings;
    };
    void Refresh();
    void ShowSwitchRows();

    CDialogControls m_controls;
    CParamFields m_states;
    CParamFields m_settings;       // the switches, then the power-up mode on the extension family
    std::optional<CParamFields::Values> m_shown;
    bool m_ext = false;
    std::vector<int> m_switches;
    int m_refreshes = 0;
    QTimer m_refresh;
};
