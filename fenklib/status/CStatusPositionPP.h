#pragma once
#include <QDateTime>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/status/PositionSummary.h"
#include "platform/devio/IListener.h"

class QTreeWidget;

// The current fix as CPositionSummary lists it, in the library's coordinate system (both forms
// on demand); a held position is greyed. The rows shown can be copied as text.
class CStatusPositionPP : public CFenkPropertyPage {
public:
    explicit CStatusPositionPP(basekit::CSmartPtr<devio::IReceiver> receiver);

    bool OnInitDialog() override;
    void OnPosition(const devio::POSITION_RECORD& record);
    void OnSatList(const devio::SATLIST_RECORD& list);
    void OnDateTime(const QDateTime& utc);
    void OnCopyPosition();
    void ShowBothForms(bool on);

    unsigned PositionsReceived() const { return m_positions; }
    const devio::POSITION_RECORD& LastPosition() const { return m_last; }
    const QDateTime& ReceiverTime() const { return m_summary.Utc(); }
    // What the copy puts on the clipboard: the rows as shown.
    basekit::ustring PositionText() const;

private:
    std::vector<CPositionSummary::ROW> Rows() const;
    void Show();

    CDialogControls m_controls;
    QTreeWidget* m_list = nullptr;
    CPositionSummary m_summary;
    devio::POSITION_RECORD m_last;
    unsigned m_positions = 0;
    bool m_bothForms = false;
};
