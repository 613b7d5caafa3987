#pragma once
#include <cstdint>
#include <functional>

#include "fenklib/frame/CJobContext.h"

// One progress run: what the window shows and the work it runs on its worker. The work
// reports through the job (job.Progress(done, total, step)); a step text replaces text.
struct PROGRESS_INFO {
    basekit::ustring caption;
    basekit::ustring text;
    std::uint64_t rangeLow = 0;
    std::uint64_t rangeHigh = 100;
    bool canCancel = true;
    std::function<void(CJobContext&)> work;
};
