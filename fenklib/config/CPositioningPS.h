#pragma once
#include "fenklib/config/CParamPage.h"
#include "fenklib/frame/CFenkPropertySheet.h"

// The "pd" (RTK) solution: output mode, dynamics, extrapolation, period, its version, and a
// reset of the solution asked first.
class CPositioningPdPP : public CParamPage {
public:
    explicit CPositioningPdPP(basekit::CSmartPtr<devio::IReceiver> receiver);
    // Asks, then resets the solution as a job of the page; false when the user said no.
    bool OnResetSolution();

protected:
    void UpdateOwnControls(bool usable) override;
};

// How the receiver computes its position: mode and allowed solutions, differential ionosphere,
// RTK dynamics, ambiguity fixing, masks, intervals and the antenna input (first page), and the
// "pd" solution (second page). Each page reads when first shown and writes its changes on OK
// or Apply.
class CPositioningPS : public CFenkPropertySheet {
public:
    CPositioningPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CPositioningPS() override;

    CParamPage& GeneralPage() { return m_general; }
    CPositioningPdPP& SolutionPage() { return m_solution; }

private:
    CParamPage m_general;
    CPositioningPdPP m_solution;
};
