#pragma once
#include <optional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokTypes.h"
#include "fenklib/site/Wgs84.h"

// A point entered by hand for automatic base set-up: its name and where its antenna stands.
// The receiver's current point is offered to start from; OK makes the entry the current point
// and stores it in the given place of the receiver's list.
class CAutoSeed_NewPointDlg : public CFenkDialog {
public:
    static constexpr int kMaxNameLength = 20;

    CAutoSeed_NewPointDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, int slot);
    ~CAutoSeed_NewPointDlg() override;

    bool OnInitDialog() override;
    void accept() override;
    void UpdateControls() override;

    // For tests and the host's tour.
    const CDialogControls& Controls() const { return m_controls; }
    CoordEditor Editor() const { return m_editor; }
    void EditPosition();
    void SetPosition(const devio::vok::POS_GEO& pos);

private:
    void ShowPosition();
    std::optional<basekit::ustring> TakeName();

    CDialogControls m_controls;
    const int m_slot;
    const CoordEditor m_editor;
    std::optional<devio::vok::POS_GEO> m_position;   // empty until the current point has been read
};
