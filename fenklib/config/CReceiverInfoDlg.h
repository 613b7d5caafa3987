#pragma once
#include <QString>
#include <deque>
#include <map>
#include <memory>

#include "fenklib/frame/CFenkDialog.h"
#include "platform/uikit/CTipWindow.h"

class QProgressBar;
class QPushButton;
class QTreeWidget;

// Identity, versions, memory and power of the receiver, read row by row on the worker thread;
// Save to File writes the receiver's complete parameter listing as UTF-8 text.
class CReceiverInfoDlg : public CFenkDialog {
public:
    CReceiverInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CReceiverInfoDlg() override;

    bool OnInitDialog() override;
    unsigned WorkerProc() override;
    void OnReceiverNotice(std::uintptr_t wParam, std::intptr_t lParam) override;
    void OnReceiverError(std::uintptr_t wParam, std::intptr_t lParam) override;

    void OnRefresh();
    void OnSaveToFile();
    void OnCancelWork();

    // For tests and the host's tour: what the list shows and what the dialog would save as.
    int RowCount() const;
    basekit::ustring RowLabel(int row) const;
    basekit::ustring RowValue(int row) const;
    bool RowHasIcon(int row) const;
    basekit::ustring DefaultFileName() const;
    bool IsRefreshEnabled() const;
    bool IsSaveEnabled() const;

    // Message 1026 parameters.
    enum Notify : std::uintptr_t { RowsWaiting = 1, Finished = 2, SaveProgress = 3 };

protected:
    std::intptr_t OnWindowMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;

private:
    struct Row {
        unsigned labelId;
        unsigned iconId;
        basekit::ustring value;
    };
    enum class Job { Read, Save };

    void BuildControls();
    void MoveQueuedRows();
    void OnFinished();
    void SetBusy(bool busy);
    unsigned ReadRows();
    unsigned SaveListing();
    void Post(Notify what);

    QTreeWidget* m_list = nullptr;
    QPushButton* m_refresh = nullptr;
    QPushButton* m_save = nullptr;
    QPushButton* m_cancel = nullptr;
    QProgressBar* m_progress = nullptr;
    std::map<unsigned, QIcon> m_icons;
    std::unique_ptr<uikit::CTipWindow> m_tip;

    // Shared with the worker, under m_lock.
    std::deque<Row> m_queue;
    basekit::ustring m_defaultFileName;
    Job m_job = Job::Read;
    QString m_savePath;
    basekit::ustring m_saveStep;
    basekit::CStdException::CExInfo m_saveError;

    int m_shownRows = 0;
    basekit::ustring m_registryKey;
};
