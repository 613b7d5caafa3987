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
    double speed = 0;    // over ground, m/s
    double course = 0;   // degrees clockwise from true north
    double sigma = 0;    // one-sigma horizontal error of the solution kind, metres

    int UsedCount() const;
};

// NMEA 0183 sentences with their checksums. Position sentences use talker GN (the receiver
// combines systems); GSV groups use GP (GPS and SBAS), GL (GLONASS), QZ (QZSS), GA (Galileo)
// and GB (BeiDou).
class Nmea {
public:
    static unsigned Checksum(std::string_view body);        // XOR of the bytes between $ and *
    static std::string Sentence(std::string_view body);     // "$<body>*hh\r\n"
    static std::string Gga(const Fix& fix);
    static std::string Rmc(const Fix& fix);
    static std::string Gsa(const Fix& fix);   // per system with used satellites, twelve a sentence
    static std::string Gsv(const Fix& fix);   // one group per talker
    static std::string Zda(const Fix& fix);
    static std::string Gst(const Fix& fix);
    static std::string Vtg(const Fix& fix);
    static std::string Gll(const Fix& fix);
};

}  // namespace rcvsim
