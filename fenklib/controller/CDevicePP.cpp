#include "fenklib/controller/CDevicePP.h"

#include <QLabel>
#include <QPushButton>

#include "fenklib/frame/CLayoutFactory.h"
#include "fenklib/frame/LibraryHelpers.h"
#include "platform/basekit/CStdException.h"
#include "platform/uikit/CMessageBoxService.h"

CDevicePP::CDevicePP(const DLG_TEMPLATE& layout, const DLG_TEMPLATE& wide, unsigned title, const char* device,
                     unsigned absentText)
    : CResizablePropertyPage(CLayoutFactory::Choose(layout, &wide).number, LoadResString(title)),
      m_controls(CLayoutFactory::Build(this, layout, &wide)),
      m_device(device),
      m_absentText(absentText) {
    connect(m_controls.Get<QPushButton>(IDC_ACTION), &QPushButton::clicked, this, [this] {
        WithDevice([this](hwctl::IControllerBackend& backend) {
            const basekit::ustring state = Act(backend);
            if (!state.empty()) ShowState(state);
        });
    });
}

bool CDevicePP::OnInitDialog() {
    m_present = hwctl::CreateBackend()->HasDevice(m_device);
    if (!m_present) ShowState(LoadResString(m_absentText));
    UpdateControls();
    return CResizablePropertyPage::OnInitDialog();
}

void CDevicePP::WithDevice(const std::function<void(hwctl::IControllerBackend&)>& work) {
    try {
        const auto backend = hwctl::CreateBackend();
        work(*backend);
    } catch (const basekit::CStdException& e) {
        uikit::CMessageBoxService::ReportError(this, e);
    }
}

void CDevicePP::ShowState(const basekit::ustring& text) { m_controls.Get<QLabel>(IDC_STATE)->setText(text.ToQString()); }

void CDevicePP::UpdateControls() {
    m_controls.Item(IDC_ACTION)->setEnabled(m_present);
    if (m_controls.Has(IDC_SECOND_ACTION)) m_controls.Item(IDC_SECOND_ACTION)->setEnabled(m_present);
}
