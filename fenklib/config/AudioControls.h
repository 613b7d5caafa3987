#pragma once
#include <initializer_list>

#include "fenklib/config/CExtBoardDlg.h"

// What the two volume dialogs share: the volume range of their sliders and the test sound.
namespace audio {

inline constexpr int kMaxVolume = 100;
inline constexpr int kTestSound = 1;

// Gives the sliders the receiver's range and the test button its order.
void Prepare(CExtBoardDlg& dlg, const CDialogControls& controls, std::initializer_list<unsigned> sliders, unsigned testButton,
             const std::function<void()>& playTest);

}  // namespace audio
