#pragma once
#include <QDateTime>
#include <QIcon>
#include <map>
#include <memory>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "platform/uikit/CTipWindow.h"

class QTreeWidget;

// Identity, versions, memory and power of the receiver, read row by row on the worker thread;
// Save to File writes the receiver's complete settings listing as UTF-8 text.
class CReceiverInfoDlg : public CFenkDialog {
public:
    CReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CReceiverInfoDlg() override;

    bool OnInitDialog() override;
    void OnReceiverNotice(std::uintptr_t wParam, std::intptr_t lParam) override;
    void OnReceiverError(std::uintptr_t wParam, std::intptr_t lParam) override;
    void UpdateControls() override;

    void OnRefresh();
    void OnSaveToFile();
    void OnCancelWork() { CancelJob(); }
    void OnCopyValue();

    // For tests and the host's tour: what the list shows and what the dialog would save as.
    int RowCount() const;
    basekit::ustring RowLabel(int row) const;
    basekit::ustring RowValue(int row) const;
    bool RowHasIcon(int row) const;
    basekit::ustring DefaultFileName() const { return m_defaultFileName; }
    basekit::ustring StatusText() const;
    bool IsRefreshEnabled() const;
    bool IsSaveEnabled() const;

private:
    struct ROW_VALUE {
        unsigned labelId;
        unsigned iconId;
        basekit::ustring value;
        bool read;   // false when the reading failed and value says why
    };

    void AddRow(const ROW_VALUE& row);
    void MarkStale();
    void SaveListing(const basekit::ustring& path);

    CDialogControls m_controls;
    QTreeWidget* m_list;
    std::map<unsigned, QIcon> m_icons;
    std::unique_ptr<uikit::CTipWindow> m_tip;
    basekit::ustring m_defaultFileName;
    basekit::ustring m_registryKey;
    QDateTime m_readAt;
    bool m_stateChanged = false;   // receiver event 7 came: Refresh stays off
};
