#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokTypes.h"

// Edits an earth-centred X, Y, Z position in metres; the geodetic form on WGS-84 is shown
// beside it as the numbers are typed. OK writes the position back.
class CXyzCoordEditDlg : public CFenkDialog {
public:
    static constexpr double kMaxMetres = 1.0e7;   // farther than any point on or above the earth

    CXyzCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_XYZ& pos);
    ~CXyzCoordEditDlg() override;

    bool OnInitDialog() override;
    void accept() override;
    const CDialogControls& Controls() const { return m_controls; }

private:
    void ShowOtherForm();

    devio::vok::POS_XYZ& m_pos;
    CDialogControls m_controls;
};
