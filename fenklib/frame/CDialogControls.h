#pragma once
#include <QWidget>
#include <map>

#include "platform/basekit/CWinException.h"

// The controls a layout built, by their ids: the window's GetDlgItem.
class CDialogControls {
public:
    void Add(unsigned id, QWidget* control) { m_controls[id] = control; }
    bool Has(unsigned id) const { return m_controls.count(id) != 0; }
    unsigned TemplateNumber() const { return m_number; }
    void SetTemplateNumber(unsigned number) { m_number = number; }

    // The control of that id as the kind the layout made; a wrong id or kind is a programming
    // error reported as an internal error, never a crash.
    template <typename W>
    W* Get(unsigned id) const {
        const auto found = m_controls.find(id);
        W* control = found == m_controls.end() ? nullptr : qobject_cast<W*>(found->second);
        if (!control) throw basekit::CWinException("DialogControls", __LINE__, L"GetDlgItem", basekit::kErrorInternal);
        return control;
    }
    QWidget* Item(unsigned id) const { return Get<QWidget>(id); }

private:
    std::map<unsigned, QWidget*> m_controls;
    unsigned m_number = 0;
};
