#pragma once
#include <QTreeWidget>
#include <functional>

// The tree of the ports dialog: group nodes with their ports below. Activating an item (double
// click, Enter) hands it to the dialog, which decides what a port opens and a group ignores.
class CPortList : public QTreeWidget {
public:
    using OnActivate = std::function<void(QTreeWidgetItem*)>;
    explicit CPortList(QWidget* parent);
    void SetOnActivate(OnActivate onActivate) { m_onActivate = std::move(onActivate); }
    // The images of the groups in table order, 16x16 with magenta transparent; built once.
    void AttachImages();
    const QIcon& GroupImage(unsigned imageId) const;

private:
    OnActivate m_onActivate;
    std::vector<std::pair<unsigned, QIcon>> m_images;
};
