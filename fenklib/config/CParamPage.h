#pragma once
#include <optional>

#include "fenklib/frame/CParamFields.h"
#include "fenklib/frame/CFenkPropertyPage.h"
#include "fenklib/frame/DialogTemplate.h"

// A sheet page whose controls show one group of receiver settings: the group is read on the
// page's worker when the page is first shown, and OK or Apply writes what the user changed.
class CParamPage : public CFenkPropertyPage {
public:
    // wide: the layout of wide-screen controllers, when the page has one.
    CParamPage(basekit::CSmartPtr<devio::IReceiver> receiver, unsigned titleId, const DLG_TEMPLATE& layout,
               std::vector<PARAM_FIELD> fields, const DLG_TEMPLATE* wide = nullptr);
    ~CParamPage() override;

    bool OnInitDialog() override;
    bool OnApply() override;
    void UpdateControls() override;

    // For tests and the tour: what the controls hold, and whether the group has been read.
    std::optional<CParamFields::Values> Collected() const { return m_fields.Collect(m_controls); }
    bool IsRead() const { return m_shown.has_value(); }
    // As if the user had set the controls to these values (in the page's field order).
    void Edit(const CParamFields::Values& values) { m_fields.Show(m_controls, values); }
    const CDialogControls& Controls() const { return m_controls; }

protected:
    // Further controls of a derived page (buttons) follow the page's state here.
    virtual void UpdateOwnControls(bool usable) { (void)usable; }
    void Reread();

    CDialogControls m_controls;
    CParamFields m_fields;
    std::optional<CParamFields::Values> m_shown;   // what the controls held right after the reading
};
