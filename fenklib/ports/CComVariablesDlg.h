#pragma once
#include <QTreeWidget>
#include <vector>

#include "fenklib/frame/CDialogControls.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/receiver/VokEnums.h"

// A port's script variables, names and values; values are edited in place and OK writes the
// changed ones back.
class CComVariablesDlg : public CFenkDialog {
public:
    struct VARIABLE {
        int index = 0;   // the receiver numbers its variables from 1
        basekit::ustring name;
        basekit::ustring value;
    };
    // More than a driver ever defines; bounds the reading should the receiver never refuse.
    static constexpr int kMaxVariables = 256;

    CComVariablesDlg(basekit::CSmartPtr<devio::IReceiver> receiver, devio::vok::ECom port, QWidget* parent);
    ~CComVariablesDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void accept() override;
    void Refresh();
    QTreeWidget* List() const { return m_list; }

private:
    void Show(std::vector<VARIABLE> variables);

    CDialogControls m_controls;
    QTreeWidget* m_list;
    devio::vok::ECom m_port;
    std::vector<VARIABLE> m_read;
};
