#pragma once
#include <optional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokTypes.h"
#include "fenklib/site/Wgs84.h"

// The automatic base set-up: whether the base averages its own position (over how long, to
// what limit, checked against the stored points), the point it is set up on and the reference
// antenna point and position it broadcasts. Read from the receiver when the window opens,
// written back on OK.
class CAutoSeedDlg : public CFenkDialog {
public:
    struct VALUES {
        bool averaging = false;
        bool check = false;
        int span = 0;
        double limit = 0;
        int pointId = 0;
        basekit::ustring pointName;
        devio::vok::POS_GEO pointArp, pointPos, referenceArp, referencePos;
    };
    static constexpr int kMaxSpan = 86400;
    static constexpr double kMaxLimit = 10000;
    static constexpr int kMaxPointId = 99;

    CAutoSeedDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CAutoSeedDlg() override;

    bool OnInitDialog() override;
    void accept() override;
    void UpdateControls() override;

    // For tests and the host's tour.
    const CDialogControls& Controls() const { return m_controls; }
    const std::optional<VALUES>& Values() const { return m_values; }
    CoordEditor Editor() const { return m_editor; }

    struct COORD_ROW;   // one position's label, text and edit button

private:
    void PutValues();
    void EditPosition(const COORD_ROW& row);
    std::optional<VALUES> TakeValues();
    static VALUES Read(devio::CVokReceiverMate& mate, CoordEditor editor);
    static void Write(devio::CVokReceiverMate& mate, CoordEditor editor, const VALUES& values);

    CDialogControls m_controls;
    const CoordEditor m_editor;
    std::optional<VALUES> m_values;   // empty until the receiver has been read
};
