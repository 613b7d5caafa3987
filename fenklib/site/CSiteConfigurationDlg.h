#pragma once
#include <optional>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/frame/CFenkGlobalSettings.h"

class QComboBox;
class QLineEdit;

// The description of the site being recorded: name, description, antenna type and height
// (slant or vertical), static or dynamic occupation. Kept in the library's settings and, on
// OK, written into the receiver's log as site events. The receiver's antenna list is read
// before the window shows.
class CSiteConfigurationDlg : public CFenkDialog {
public:
    static constexpr int kMaxNameLength = 20;
    static constexpr int kMaxDescriptionLength = 100;

    CSiteConfigurationDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CSiteConfigurationDlg() override;

    int DoModal() override;
    bool OnInitDialog() override;
    void accept() override;

    // For tests and the host's tour.
    const std::vector<basekit::ustring>& AntennaIds() const { return m_antennaIds; }
    const CDialogControls& Controls() const { return m_controls; }

private:
    // The controls' values, validated; empty (after telling the user why) when one is refused.
    std::optional<SiteParameters> TakeValues();
    void PutValues(const SiteParameters& site);
    void Refuse(QLineEdit* edit, const basekit::ustring& why);

    CDialogControls m_controls;
    std::vector<basekit::ustring> m_antennaIds;
};
