#pragma once
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"

// One receiver file to copy and where it goes; size 0 while unknown.
struct COPY_ITEM {
    basekit::ustring source;   // receiver path, "/log/name" (the local path when copying to the receiver)
    basekit::ustring target;   // local path (the receiver path when copying to the receiver)
    std::uint64_t size = 0;
};

// Copies receiver files into local files through the file copier (or, to the receiver, local
// files through the uploader), showing the progress, the speed and the time left; Cancel stops
// the copy and leaves no file under the target's name (the copier writes "<target>.part" and
// renames it only when the file is whole; the receiver keeps uploaded blocks aside until the
// size check). Ends with 1 when every file was copied, 2 when cancelled or failed (after the
// error box).
class CCopyFileDlg : public CFenkDialog {
public:
    CCopyFileDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, const wchar_t* source, const wchar_t* target,
                 bool fromReceiver);
    CCopyFileDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, std::vector<COPY_ITEM> items);
    ~CCopyFileDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;

    const CDialogControls& Controls() const { return m_controls; }
    // Shown texts, for tests and the tour.
    basekit::ustring SpeedText() const;
    basekit::ustring TimeLeftText() const;

private:
    void StartCopy();
    void ShowItem(int index);
    void ShowProgress(const JOB_PROGRESS& progress);

    CDialogControls m_controls;
    std::vector<COPY_ITEM> m_items;
    bool m_fromReceiver = true;
};
