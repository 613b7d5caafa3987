#pragma once
#include <QTreeWidget>
#include <functional>

class QAction;

// The tree of the ports dialog: group nodes with their ports below. Activating an item (double
// click, Enter, "Properties" in its context menu) hands it to the dialog, which decides what a
// port opens and a group ignores; "Refresh" (F5) asks the dialog to list the ports again.
class CPortList : public QTreeWidget {
public:
    using OnActivate = std::function<void(QTreeWidgetItem*)>;
    using OnRefresh = std::function<void()>;
    explicit CPortList(QWidget* parent);
    void SetOnActivate(OnActivate onActivate) { m_onActivate = std::move(onActivate); }
    void SetOnRefresh(OnRefresh onRefresh) { m_onRefresh = std::move(onRefresh); }
    // The images of the groups in table order, 16x16 with magenta transparent; built once.
    void AttachImages();
    const QIcon& GroupImage(unsigned imageId) const;
    // The context menu's entries (menu 3380): Properties, then Refresh.
    QAction* PropertiesAction() const { return m_properties; }
    QAction* RefreshAction() const { return m_refresh; }

protected:
    // The menu's keys when the shortcut machinery did not take them first (events sent
    // straight to the tree).
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Activate(QTreeWidgetItem* item);
    void UpdateActions();

    OnActivate m_onActivate;
    OnRefresh m_onRefresh;
    QAction* m_properties;
    QAction* m_refresh;
    std::vector<std::pair<unsigned, QIcon>> m_images;
};
