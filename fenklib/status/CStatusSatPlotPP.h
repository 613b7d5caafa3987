#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "platform/devio/IListener.h"

class CSkyPlot;

// The sky plot page: the chart fills the page; the receiver's elevation mask is read once when
// the page opens.
class CStatusSatPlotPP : public CFenkPropertyPage {
public:
    explicit CStatusSatPlotPP(basekit::CSmartPtr<devio::IReceiver> receiver);

    bool OnInitDialog() override;
    void OnSatList(const devio::SATLIST_RECORD& list);

    double ElevationMask() const { return m_mask; }
    CSkyPlot* Plot() const { return m_plot; }

private:
    void Draw();

    CDialogControls m_controls;
    CSkyPlot* m_plot = nullptr;
    double m_mask = 0;   // a failed reading leaves the mask on the horizon
    devio::SATLIST_RECORD m_latest;
};
