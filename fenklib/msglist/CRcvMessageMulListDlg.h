#pragma once
#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/msglist/MessageList.h"

class QTreeWidget;
class QTreeWidgetItem;

// Picks several messages: a double-click or the space key on a catalogue node adds it (once)
// to the chosen list with the receiver's default schedule, read as a job (adds asked for
// meanwhile follow in order; OK waits for them); Delete removes rows after asking.
class CRcvMessageMulListDlg : public CFenkDialog {
public:
    CRcvMessageMulListDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, fenkmsg::MessageList& list);
    ~CRcvMessageMulListDlg() override;

    bool OnInitDialog() override;
    void accept() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void UpdateControls() override;

    void OnAddNode(const QTreeWidgetItem* item);
    void OnDelete();

    QTreeWidget* Tree() const { return m_tree; }
    QTreeWidget* List() const { return m_list; }
    const fenkmsg::MessageList& Chosen() const { return m_chosen; }

private:
    void AddNext();

    CDialogControls m_controls;
    QTreeWidget* m_tree;
    QTreeWidget* m_list;
    fenkmsg::MessageList& m_result;
    fenkmsg::MessageList m_chosen;
    std::vector<basekit::ustring> m_adding;   // asked for, waiting for their default schedules
};
