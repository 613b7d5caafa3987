#include "fenklib/config/AudioControls.h"

#include <QPushButton>
#include <QSlider>

namespace audio {

void Prepare(CExtBoardDlg& dlg, const CDialogControls& controls, std::initializer_list<unsigned> sliders, unsigned testButton,
             const std::function<void()>& playTest) {
    for (const unsigned id : sliders) {
        auto* slider = controls.Get<QSlider>(id);
        slider->setRange(0, kMaxVolume);
        slider->setPageStep(kMaxVolume / 10);
    }
    QObject::connect(controls.Get<QPushButton>(testButton), &QPushButton::clicked, &dlg, playTest);
}

}  // namespace audio
