#pragma once
#include <functional>
#include <optional>

#include "fenklib/frame/CParamFields.h"
#include "fenklib/frame/CFenkDialog.h"
#include "fenklib/frame/DialogTemplate.h"

// A dialog of one extension-board group (Bluetooth, audio). The group is read on the worker
// when the dialog opens; a receiver without the board refuses it as an unknown parameter, and
// the dialog then says so (its layout's kAbsentLabel) instead of failing. OK writes on the
// worker what the user changed and ends the dialog when the receiver took it; Cancel writes
// nothing; a failure shows the error box and the dialog stays.
class CExtBoardDlg : public CFenkDialog {
public:
    static constexpr unsigned kAbsentLabel = 90;   // every layout of such a dialog has this static

    struct WINDOW {
        const DLG_TEMPLATE& normal;
        const DLG_TEMPLATE& wide;
        const wchar_t* className;
        unsigned titleId;
        unsigned absentTextId;
    };

    CExtBoardDlg(basekit::CSmartPtr<devio::IReceiver> receiver, QWidget* parent, const WINDOW& window, std::vector<PARAM_FIELD> fields);
    ~CExtBoardDlg() override;

    bool OnInitDialog() override;
    void UpdateControls() override;
    void accept() override;

    // For tests and the tour.
    std::optional<CParamFields::Values> Collected() const { return m_fields.Collect(m_controls); }
    void Edit(const CParamFields::Values& v) { m_fields.Show(m_controls, v); }
    bool IsRead() const { return m_shown.has_value(); }
    bool IsAbsent() const { return m_absent; }
    const CDialogControls& Controls() const { return m_controls; }

protected:
    // The writing of OK on the worker: by default the changed values.
    virtual void Write(devio::CVokReceiverMate& mate, const CParamFields::Values& was, const CParamFields::Values& now) const;
    virtual void UpdateOwnControls(bool usable) { (void)usable; }
    // A receiver order of a button (a test sound, a reset) on the worker; then, when asked,
    // the group is read again.
    void RunOrder(std::function<void(devio::CVokReceiverMate&)> order, bool reread);
    bool IsExtFamily() const { return m_ext; }
    void Reread();

    CDialogControls m_controls;
    const CParamFields m_fields;

private:
    struct READING {
        bool ext = false;
        std::optional<CParamFields::Values> values;   // nothing: the receiver has no such board
    };

    void ShowAbsent();

    std::optional<CParamFields::Values> m_shown;
    bool m_absent = false;
    bool m_ext = false;
};
