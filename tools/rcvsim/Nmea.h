#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "tools/rcvsim/Constellation.h"
#include "tools/rcvsim/Geodesy.h"

namespace rcvsim {

struct Fix {
    double time = 0;    // UTC seconds since 1970
    Geodetic position;
    int quality = 1;    // GGA fix quality: 1 single, 2 differential, 4 RTK fixed, 5 RTK float
    Dop dop;
    std::vector<SatView> sats;  // above the horizon

    int UsedCount() const;
};

// NMEA 0183 sentences with their checksums. Position sentences use talker GN (the receiver
// combines systems); GSV groups use GP (GPS and SBAS), GL (GLONASS) and QZ (QZSS).
class Nmea {
public:
    static unsigned Checksum(std::string_view body);        // XOR of the bytes between $ and *
    static std::string Sentence(std::string_view body);     // "$<body>*hh\r\n"
    static std::string Gga(const Fix& fix);
    static std::string Rmc(const Fix& fix);
    static std::string Gsa(const Fix& fix);   // one sentence per system with used satellites
    static std::string Gsv(const Fix& fix);   // one group per talker
    static std::string Zda(const Fix& fix);
};

}  // namespace rcvsim
