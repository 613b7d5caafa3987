#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/ParamTree.h"
#include "tools/rcvsim/SimOptions.h"

namespace rcvsim {

// The factory settings of the simulated receiver, one table row per parameter (rows may name
// several paths with "{a,b}" alternatives).
class ParamDefaults {
public:
    static void Fill(ParamTree& tree, const SimOptions& options);
    // "dev/{ser/a,usb/a}/rate" -> "dev/ser/a/rate", "dev/usb/a/rate".
    static std::vector<std::string> Expand(std::string_view pattern);
    static std::string AntennaList();
    static constexpr std::string_view kBlockSize = "4096";
    static constexpr std::string_view kBlocks = "262144";
    static constexpr long long kDiskBytes = 4096LL * 262144 - 4LL * 1024 * 1024;  // less the FAT
};

}  // namespace rcvsim
