#pragma once
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "platform/uikit/CResizableDialog.h"

class QListWidget;

// Picks one radio channel frequency from the caller's list. The list sorts its lines by text,
// so each line carries the index of its frequency and OK goes back through it.
class CChannelsListDlg : public uikit::CResizableDialog {
public:
    CChannelsListDlg(QWidget* parent, const std::vector<double>& channels, double& result);

    bool OnInitDialog() override;
    void accept() override;
    void UpdateControls();

    // For tests and the host's tour.
    QListWidget* List() const { return m_list; }
    bool IsOkEnabled() const;

private:
    const std::vector<double>& m_channels;
    double& m_result;
    CDialogControls m_controls;
    QListWidget* m_list;
};
