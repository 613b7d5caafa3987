#pragma once
#include <QDateTime>
#include <functional>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokTypes.h"
#include "fenklib/site/Wgs84.h"

// The points the receiver has stored for automatic base set-up, one row each: id, name, the
// date it was stored, its distance from here, whether it is protected or was stored by the
// receiver itself, and where it is. Points are added through the new-point window, deleted
// (after asking) and protected against deletion.
class CAutoSeed_PointListDlg : public CFenkDialog {
public:
    static constexpr int kSlots = 20;   // the receiver's numbered places for points

    struct POINT {
        int slot = 0;
        int id = 0;
        basekit::ustring name;
        QDateTime date;
        double distance = 0;
        bool isProtected = false;
        bool automatic = false;
        devio::vok::POS_GEO position;
    };

    CAutoSeed_PointListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CAutoSeed_PointListDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;

    // For tests and the host's tour.
    const CDialogControls& Controls() const { return m_controls; }
    const std::vector<POINT>& Points() const { return m_points; }
    void Select(int row);
    void AddPoint();
    void DeletePoint();
    void ToggleProtection();

private:
    void Reload();
    void ChangeThenReload(std::function<void(CJobContext&)> change);
    void ShowPoints();
    const POINT* Selected() const;
    static std::vector<POINT> Read(CJobContext& job, CoordEditor editor);
    static int FirstFreeSlot(const std::vector<POINT>& points);

    CDialogControls m_controls;
    const CoordEditor m_editor;
    std::vector<POINT> m_points;
};
