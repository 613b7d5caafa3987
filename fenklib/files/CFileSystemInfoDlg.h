#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"

class QTreeWidget;

// The receiver's block device: size, free space, block size and count, files and their limit,
// bad blocks, the file system's version and time format and its initialisation state, read on
// the worker when the dialog opens, with a bar of the space used.
class CFileSystemInfoDlg : public CFenkDialog {
public:
    CFileSystemInfoDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CFileSystemInfoDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;

    int RowCount() const;
    basekit::ustring RowValue(int row) const;
    int UsedPerMille() const;

private:
    struct FS_INFO {
        std::uint64_t size = 0, free = 0, blockSize = 0, blocks = 0, maxFiles = 0, files = 0, badBlocks = 0, version = 0;
        basekit::ustring timeFormat, initState;
    };
    void Show(const FS_INFO& info);

    CDialogControls m_controls;
    QTreeWidget* m_list;
};
