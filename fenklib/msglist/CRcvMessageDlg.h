#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokTypes.h"

// Edits one scheduled message: its name (chosen from the catalogue when it has none), period,
// phase, count and the eight flag boxes; the record changes only on OK.
class CRcvMessageDlg : public CFenkDialog {
public:
    CRcvMessageDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::MSG& message);
    ~CRcvMessageDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void accept() override;
    void OnBrowse();

    // For tests and the tour.
    QWidget* Control(unsigned id) const { return m_controls.Item(id); }
    enum : unsigned { IDC_NAME = 100, IDC_BROWSE, IDC_PERIOD, IDC_PHASE, IDC_COUNT, IDC_FLAG0 };

private:
    void ShowName();

    CDialogControls m_controls;
    devio::vok::MSG& m_message;
    basekit::ustring m_name;
    bool m_nameGiven;
};
