#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokTypes.h"

// Edits a geodetic position: latitude and longitude as hemisphere, degrees, minutes and seconds
// or as decimal degrees (either form follows the other as it is typed), and the height in
// metres; the Cartesian form on WGS-84 is shown beside it. OK writes the position back.
class CGeoCoordEditDlg : public CFenkDialog {
public:
    static constexpr int kSecondDecimals = 5;
    static constexpr int kDegreeDecimals = 9;

    CGeoCoordEditDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, devio::vok::POS_GEO& pos);
    ~CGeoCoordEditDlg() override;

    bool OnInitDialog() override;
    void accept() override;
    const CDialogControls& Controls() const { return m_controls; }

    struct ANGLE_ROW;   // one angle's controls and limit

private:
    void PutAngle(const ANGLE_ROW& row, double degrees);
    void DmsEdited(const ANGLE_ROW& row);
    void DecimalEdited(const ANGLE_ROW& row);
    std::optional<double> TakeAngle(const ANGLE_ROW& row);
    void ShowOtherForm();

    devio::vok::POS_GEO& m_pos;
    CDialogControls m_controls;
};
