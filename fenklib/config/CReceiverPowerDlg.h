#pragma once
#include <QTimer>
#include <optional>

#include "fenklib/config/CParamFields.h"
#include "fenklib/frame/CFenkDialog.h"

// Batteries, external supply, charger and board (refreshed while the dialog is open), the power
// switches and, on models of the extension family, the power-up mode; OK writes what changed.
class CReceiverPowerDlg : public CFenkDialog {
public:
    static constexpr int kSwitches = 4;

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

private:
    struct READING {
        bool ext = false;
        CParamFields::Values states, settings;
    };
    void Refresh();

    CDialogControls m_controls;
    CParamFields m_states;
    CParamFields m_settings;       // the switches, then the power-up mode on the extension family
    std::optional<CParamFields::Values> m_shown;
    bool m_ext = false;
    int m_refreshes = 0;
    QTimer m_refresh;
};
