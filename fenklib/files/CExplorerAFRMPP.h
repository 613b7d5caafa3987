#pragma once
#include <QTimer>
#include <optional>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"

// The file explorer's automatic file rotation page ("AFRM"): whether and on which schedule the
// receiver starts a new log file, how many it keeps and whether old ones go; the receiver's
// running rotation counter, live; and a button that rotates at once. The receiver is read on
// the first activation only and written, all five values, on every Apply. Every exchange runs as
// a job of the page: the counter's one-second poll stops after a failure (one box, not one a
// second) and starts again when the page is shown again.
class CExplorerAFRMPP : public CFenkPropertyPage {
public:
    enum : unsigned {
        IDC_ENABLE = 3224,
        IDC_REMOVE_OLD = 3225,
        IDC_PERIOD = 3077,
        IDC_PHASE = 3207,
        IDC_COUNTER = 3079,
        IDC_RUNNING_COUNTER = 3080,
        IDC_FORCE = 3001,
    };
    static constexpr int kTimerId = 100;
    static constexpr int kTimerPeriodMs = 1000;

    explicit CExplorerAFRMPP(basekit::CSmartPtr<devio::IReceiver> receiver);
    ~CExplorerAFRMPP() override;

    bool OnInitDialog() override;
    bool OnSetActive() override;
    bool OnApply() override;
    void UpdateControls() override;

    void OnEnableClicked();
    void OnForceRotation();
    // Timer 100: the running counter, read only while this page is the sheet's active one.
    void OnTimerTick();

    const CDialogControls& Controls() const { return m_controls; }
    bool HasRead() const { return m_read; }
    bool IsTimerRunning() const { return m_timer.isActive(); }

private:
    struct VALUES {
        bool enabled = false;
        bool removeOld = false;
        int period = 0;
        int phase = 0;
        int counter = 0;
    };

    void ReadReceiver();
    void ShowValues();
    // The controls' values; none (and the range message) when a number lies outside its range.
    std::optional<VALUES> TakeValues();

    CDialogControls m_controls;
    QTimer m_timer;
    bool m_enabled = false;
    bool m_removeOld = false;
    int m_period = 60;
    int m_phase = 0;
    int m_counter = 0;
    bool m_read = false;
    bool m_reading = false;
    bool m_polling = false;   // the running job is the counter's poll
};
