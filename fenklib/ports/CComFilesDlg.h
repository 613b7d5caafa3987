#pragma once
#include <QTreeWidget>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokEnums.h"

// The files of a port's script driver: its scripts and profiles with their sizes.
class CComFilesDlg : public CFenkDialog {
public:
    struct DRIVER_FILE {
        basekit::ustring name;
        bool profile = false;
        std::uint64_t size = 0;
    };
    CComFilesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent);
    ~CComFilesDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void Refresh();
    QTreeWidget* List() const { return m_list; }

private:
    void Show(const std::vector<DRIVER_FILE>& files);

    CDialogControls m_controls;
    QTreeWidget* m_list;
    devio::vok::ECom m_port;
};
