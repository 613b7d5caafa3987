#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "tools/rcvsim/Geodesy.h"

namespace rcvsim {

// The receiver's W84 coordinate texts:
//   geodetic  {W84,N55d45m12.345600s,E037d37m03.210000s,150.123000}
//   Cartesian {W84,2845455.1234,2160422.5678,5265220.9012}
class CoordText {
public:
    static std::string FormatGeo(const Geodetic& g);
    static std::string FormatXyz(const Ecef& e);
    static std::optional<Geodetic> ParseGeo(std::string_view text);
    static std::optional<Ecef> ParseXyz(std::string_view text);
};

}  // namespace rcvsim
