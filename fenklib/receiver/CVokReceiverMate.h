#pragma once
// The command layer as the dialogs use it.
#include "fenklib/receiver/CSettingsRestorer.h"
#include "fenklib/receiver/CVokReceiverMateCore.h"

namespace devio {

class CVokReceiverMate : public CVokReceiverMateCore {
public:
    using CVokReceiverMateCore::CVokReceiverMateCore;
};

using CReceiverSettingsRestorer = CSettingsRestorer<CVokReceiverMate>;

}  // namespace devio
