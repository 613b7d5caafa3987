#pragma once
#include <QObject>
#include <functional>

#include "fenklib/msglist/MessageList.h"
#include "platform/basekit/CSmartPtr.h"
#include "platform/devio/IReceiver.h"

class QLabel;
class QTreeWidget;

// One editable message list in a list view: Add (the multi-picker, merged by name), Edit (the
// one-message editor, the row refreshed only on 1), Delete (after "Confirm deletion."), and
// the list's load on its port below it. Used by the message list and logging messages dialogs.
class CMessageListEditor : public QObject {
public:
    CMessageListEditor(QWidget* window, basekit::CSmartPtr<devio::IReceiver> receiver, QTreeWidget* list, QLabel* load);

    void SetMessages(fenkmsg::MessageList messages);
    const fenkmsg::MessageList& Messages() const { return m_messages; }
    // The port's line rate in bit/s; 0 shows the bytes per second only.
    void SetLineRate(int bitsPerSecond);
    double LoadShare() const;
    // Asks before keeping a list that overloads its port; true to go on.
    bool ConfirmLoad() const;

    void OnAdd();
    void OnEdit();
    void OnDelete();

private:
    void ShowLoad();

    QWidget* m_window;
    basekit::CSmartPtr<devio::IReceiver> m_receiver;
    QTreeWidget* m_list;
    QLabel* m_load;
    fenkmsg::MessageList m_messages;
    int m_lineRate = 0;
};
