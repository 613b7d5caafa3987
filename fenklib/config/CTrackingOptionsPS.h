#pragma once
#include "fenklib/config/CParamPage.h"
#include "fenklib/frame/CFenkPropertySheet.h"

// What the receiver tracks: the lock elevation mask, the SBAS and QZSS satellite locks (a check
// per satellite), the GPS L5 lock, anti-jamming and the multipath corrections (first page), and
// the SBAS slots with their ionosphere use (second page).
class CTrackingOptionsPS : public CFenkPropertySheet {
public:
    CTrackingOptionsPS(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent);
    ~CTrackingOptionsPS() override;

    CParamPage& LocksPage() { return m_locks; }
    CParamPage& SbasPage() { return m_sbas; }

private:
    CParamPage m_locks;
    CParamPage m_sbas;
};
