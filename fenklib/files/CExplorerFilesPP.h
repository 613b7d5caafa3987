#pragma once
#include <functional>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/receiver/VokTypes.h"

class QTreeWidget;

// The file explorer's "Files" page: the receiver's log files with name, size and time (the
// current files of channels A and B marked), sortable by any column; downloads the selected
// ones through the copy dialog, deletes them after a confirmation, starts a new log file with
// a prefix, and opens the file-system information. The list is read again on every activation:
// the receiver's files change while it logs.
class CExplorerFilesPP : public CFenkPropertyPage {
public:
    enum : unsigned { IDC_LIST = 100, IDC_REFRESH, IDC_DOWNLOAD, IDC_DELETE, IDC_PREFIX, IDC_NEW, IDC_FILE_SYSTEM };

    explicit CExplorerFilesPP(basekit::CSmartPtr<devio::IReceiver> receiver);
    ~CExplorerFilesPP() override;

    bool OnSetActive() override;
    void UpdateControls() override;

    void OnRefresh();
    void OnDownload();
    void OnDelete();
    void OnNewLogFile();
    void OnFileSystem();

    const CDialogControls& Controls() const { return m_controls; }
    const std::vector<devio::vok::LOG_FILE>& Files() const { return m_files; }
    // Selects the files of those names (tests and the tour).
    void SelectFiles(const std::vector<basekit::ustring>& names);

private:
    void ChangeThenRefresh(std::function<void(CJobContext&)> change);
    struct LISTING {
        std::vector<devio::vok::LOG_FILE> files;
        basekit::ustring currentA, currentB, prefix;
    };
    void ShowListing(const LISTING& listing);
    std::vector<devio::vok::LOG_FILE> SelectedFiles() const;

    CDialogControls m_controls;
    QTreeWidget* m_list;
    std::vector<devio::vok::LOG_FILE> m_files;
};
