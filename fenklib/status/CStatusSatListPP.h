#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "platform/devio/IListener.h"

class QTreeWidget;

// One row per satellite and signal: system, number, elevation, azimuth, SNR and the sky plot's
// symbol for used or not; the navigation status text is the row's tooltip. Sortable by column.
class CStatusSatListPP : public CFenkPropertyPage {
public:
    explicit CStatusSatListPP(basekit::CSmartPtr<devio::IReceiver> receiver);

    bool OnInitDialog() override;
    void OnSatList(const devio::SATLIST_RECORD& list);
    const devio::SATLIST_RECORD& Satellites() const { return m_list; }

private:
    void Show();

    CDialogControls m_controls;
    QTreeWidget* m_view = nullptr;
    devio::SATLIST_RECORD m_list;
};
