#pragma once
#include <QDateTime>
#include <map>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "platform/devio/IListener.h"

class QTreeWidget;

// The current fix: geodetic and Cartesian coordinates, fix quality, satellites used and
// tracked per system, HDOP and the receiver's UTC time; the position can be copied as text.
class CStatusPositionPP : public CFenkPropertyPage {
public:
    explicit CStatusPositionPP(basekit::CSmartPtr<devio::IReceiver> receiver);

    bool OnInitDialog() override;
    void OnPosition(const devio::POSITION_RECORD& record);
    void OnSatList(const devio::SATLIST_RECORD& list);
    void OnDateTime(const QDateTime& utc);
    void OnCopyPosition();

    unsigned PositionsReceived() const { return m_positions; }
    const devio::POSITION_RECORD& LastPosition() const { return m_last; }
    // The position as the copy puts it on the clipboard.
    basekit::ustring PositionText() const;

private:
    void Show();

    CDialogControls m_controls;
    QTreeWidget* m_list = nullptr;
    devio::POSITION_RECORD m_last;
    unsigned m_positions = 0;
    std::map<std::int32_t, std::pair<int, int>> m_perSystem;   // system -> used, tracked
    QDateTime m_utc;
};
