#include "fenklib/msglist/CMessageListEditor.h"

#include <QAction>
#include <QLabel>
#include <QTreeWidget>

#include "fenklib/frame/LauncherConvention.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "fenklib/msglist/CRcvMessageDlg.h"
#include "fenklib/msglist/CRcvMessageMulListDlg.h"
#include "fenklib/msglist/MessageViews.h"
#include "fenklib/msglist/PortLoad.h"
#include "fenklib/resources/StringIds.h"
#include "platform/uikit/CMessageBoxService.h"

using basekit::ustring;

CMessageListEditor::CMessageListEditor(QWidget* window, basekit::CSmartPtr<devio::IReceiver> receiver, QTreeWidget* list, QLabel* load)
    : QObject(window), m_window(window), m_receiver(std::move(receiver)), m_list(list), m_load(load) {
    fenkmsg::SetupMessageColumns(m_list);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    const struct { unsigned text; QKeySequence key; void (CMessageListEditor::*run)(); } actions[] = {
        {IDS_MENU_ADD, QKeySequence(Qt::Key_Insert), &CMessageListEditor::OnAdd},
        {IDS_MENU_EDIT, QKeySequence(Qt::Key_F2), &CMessageListEditor::OnEdit},
        {IDS_MENU_DELETE, QKeySequence::Delete, &CMessageListEditor::OnDelete},
    };
    for (const auto& a : actions) {
        auto* action = new QAction(LoadResString(a.text).ToQString(), m_list);
        action->setShortcut(a.key);
        action->setShortcutContext(Qt::WidgetShortcut);
        m_list->addAction(action);
        connect(action, &QAction::triggered, this, [this, run = a.run] { (this->*run)(); });
    }
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { OnEdit(); });
}

void CMessageListEditor::SetMessages(fenkmsg::MessageList messages) {
    m_messages = std::move(messages);
    fenkmsg::ShowMessages(m_list, m_messages, fenkmsg::CMessageRegistry::Instance());
    ShowLoad();
}

void CMessageListEditor::SetLineRate(int bitsPerSecond) {
    m_lineRate = bitsPerSecond;
    ShowLoad();
}

double CMessageListEditor::LoadShare() const {
    return fenkmsg::ComputePortLoad(m_messages, fenkmsg::CMessageRegistry::Instance(), m_lineRate).share;
}

void CMessageListEditor::ShowLoad() {
    if (m_load) fenkmsg::ShowPortLoad(m_load, m_messages, m_lineRate);
}

bool CMessageListEditor::ConfirmLoad() const {
    const double share = LoadShare();
    if (share <= 1.0) return true;
    return uikit::CMessageBoxService::Show(m_window, ustring::Format(LoadResString(IDS_PORT_LOAD_OVER).c_str(), fenkmsg::LoadPercent(share)), {},
                                           uikit::MB_YESNO | uikit::MB_ICONWARNING | uikit::MB_DEFBUTTON2) == uikit::IDYES;
}

void CMessageListEditor::OnAdd() {
    fenkmsg::MessageList picked;
    if (RunLauncher<CRcvMessageMulListDlg>(m_receiver, m_window, picked) != 1) return;
    if (fenkmsg::MergeByName(m_messages, picked) == 0) return;
    SetMessages(m_messages);
}

void CMessageListEditor::OnEdit() {
    const std::vector<int> rows = fenkmsg::SelectedRows(m_list);
    const int row = rows.empty() ? m_list->indexOfTopLevelItem(m_list->currentItem()) : rows.front();
    if (row < 0 || row >= static_cast<int>(m_messages.size())) return;
    devio::vok::MSG edited = m_messages[static_cast<std::size_t>(row)];
    if (RunLauncher<CRcvMessageDlg>(m_receiver, m_window, edited) != 1) return;
    m_messages[static_cast<std::size_t>(row)] = edited;
    fenkmsg::ShowMessageRow(m_list->topLevelItem(row), edited, fenkmsg::CMessageRegistry::Instance());
    ShowLoad();
}

void CMessageListEditor::OnDelete() {
    const std::vector<int> rows = fenkmsg::SelectedRows(m_list);
    if (rows.empty()) return;
    if (uikit::CMessageBoxService::Show(m_window, LoadResString(IDS_CONFIRM_DELETION), {}, uikit::MB_YESNO | uikit::MB_ICONQUESTION) !=
        uikit::IDYES)
        return;
    fenkmsg::RemoveRows(m_messages, rows);
    SetMessages(m_messages);
}
