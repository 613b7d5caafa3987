#pragma once
#include <vector>

#include "tools/rcvsim/Geodesy.h"

namespace rcvsim {

// The numbers are the satellite-list system codes the host decodes into.
enum class GnssSystem { Gps = 1, Glonass = 2, Sbas = 3, Qzss = 4, Galileo = 6, BeiDou = 7 };

// One satellite on a circular orbit (or fixed over a longitude, for SBAS).
struct Satellite {
    GnssSystem system = GnssSystem::Gps;
    int prn = 0;             // GPS PRN, GLONASS slot, SBAS PRN (120..158), QZSS PRN (193..),
                             // Galileo and BeiDou numbers (1..)
    double radius = 0;       // metres from the Earth's centre
    double inclination = 0;  // radians
    double raan = 0;         // right ascension of the ascending node, radians (inertial)
    double argLat0 = 0;      // argument of latitude at t = 0, radians
    double motion = 0;       // mean motion, rad/s
    bool geostationary = false;
    double lonDeg = 0;       // geostationary longitude

    int NmeaId() const;      // GPS 1-32, SBAS 33-64, GLONASS 65-96, QZSS 193-; Galileo and BeiDou
                             // their own numbers (under their GA and GB talkers)
};

struct SatView {
    const Satellite* sat = nullptr;
    double elevation = 0;
    double azimuth = 0;
    int snr = 0;       // dB-Hz
    bool used = false; // in the position: above the position mask and not an SBAS satellite
    Look look;
};

struct Dop {
    double pdop = 99.9, hdop = 99.9, vdop = 99.9;
    bool valid = false;
};

// A synthetic sky of 120 satellites: GPS (6 x 4), GLONASS (3 x 8), SBAS (9 geostationary),
// QZSS (4 inclined geosynchronous), Galileo (3 x 9) and BeiDou (3 x 8 medium orbits, 3 inclined
// geosynchronous, 5 geostationary). Time is UTC seconds since 1970.
class Constellation {
public:
    Constellation();
    const std::vector<Satellite>& Satellites() const { return sats_; }
    static Ecef Position(const Satellite& sat, double t);
    // Satellites above the horizon, in catalogue order.
    std::vector<SatView> Visible(const Geodetic& site, double t, double maskDeg) const;
    static Dop ComputeDop(const std::vector<SatView>& views);

private:
    std::vector<Satellite> sats_;
};

}  // namespace rcvsim
