#pragma once
#include <QElapsedTimer>
#include <map>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "platform/devio/IListener.h"

class QTreeWidget;

// One row per correction link (by its port): format, station, age, received, errors, bytes/s.
// A link whose age keeps growing is stale and shown in red.
class CStatusDataLinkPP : public CFenkPropertyPage {
public:
    explicit CStatusDataLinkPP(basekit::CSmartPtr<devio::IReceiver> receiver);

    bool OnInitDialog() override;
    void OnDataLink(const devio::DATALINK_RECORD& record);

    struct LINK_ROW {
        devio::DATALINK_RECORD record;
        bool stale = false;
    };
    const std::map<char, LINK_ROW>& Links() const { return m_links; }
    // A link is stale once its corrections are this old and still ageing.
    static constexpr float kStaleAgeSeconds = 10.0f;

private:
    void Show();

    CDialogControls m_controls;
    QTreeWidget* m_list = nullptr;
    std::map<char, LINK_ROW> m_links;
};
