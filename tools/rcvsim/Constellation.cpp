#include "tools/rcvsim/Constellation.h"

#include <array>
#include <cmath>
#include <span>

namespace rcvsim {
namespace {

constexpr double kMu = 3.986004418e14;
constexpr double kGeoRadius = 42164.17e3;
constexpr double kJ2000 = 946728000.0;   // 2000-01-01 12:00 UTC
constexpr double kGmstJ2000 = 4.894961212823756;

double Motion(double radius) { return std::sqrt(kMu / (radius * radius * radius)); }

double EarthAngle(double t) { return kGmstJ2000 + Geodesy::kEarthRate * (t - kJ2000); }

// Walker delta pattern: `planes` planes, `perPlane` satellites each, phasing f.
void AddWalker(std::vector<Satellite>& out, GnssSystem sys, int planes, int perPlane, int f,
               double radius, double incDeg, int firstPrn) {
    const int total = planes * perPlane;
    for (int p = 0; p < planes; ++p)
        for (int s = 0; s < perPlane; ++s) {
            Satellite sat;
            sat.system = sys;
            sat.prn = firstPrn + p * perPlane + s;
            sat.radius = radius;
            sat.inclination = geodesy::Radians(incDeg);
            sat.raan = geodesy::Radians(360.0 * p / planes);
            sat.argLat0 = geodesy::Radians(360.0 * s / perPlane + 360.0 * f * p / total);
            sat.motion = Motion(radius);
            out.push_back(sat);
        }
}

struct GeoSlot {
    int prn;
    double lonDeg;
};
// Invented slots, spread the way the augmentation systems spread theirs.
constexpr std::array kSbas{GeoSlot{120, -15.5}, GeoSlot{124, 5.0}, GeoSlot{126, 25.0},
                           GeoSlot{129, 140.0}, GeoSlot{131, -117.0}, GeoSlot{133, -129.0},
                           GeoSlot{135, -133.0}, GeoSlot{137, 145.0}, GeoSlot{138, -107.3}};
constexpr std::array kBeiDouGeo{GeoSlot{1, 140.0}, GeoSlot{2, 80.0}, GeoSlot{3, 110.5}, GeoSlot{4, 160.0},
                                GeoSlot{5, 58.75}};

// Satellites on figure-eight tracks centred on one longitude (QZSS, BeiDou's inclined
// geosynchronous ones): the node must sit on that longitude when the satellite crosses it,
// which fixes the right ascension for each starting phase.
void AddFigureEights(std::vector<Satellite>& out, GnssSystem sys, int firstPrn, int count, double centreLon,
                     double incDeg) {
    for (int i = 0; i < count; ++i) {
        Satellite sat;
        sat.system = sys;
        sat.prn = firstPrn + i;
        sat.radius = kGeoRadius;
        sat.inclination = geodesy::Radians(incDeg);
        sat.argLat0 = geodesy::Radians(360.0 * i / count);
        sat.motion = Geodesy::kEarthRate;
        sat.raan = geodesy::Radians(centreLon) + EarthAngle(0) - sat.argLat0;
        out.push_back(sat);
    }
}

void AddGeostationary(std::vector<Satellite>& out, GnssSystem sys, std::span<const GeoSlot> slots) {
    for (const auto& slot : slots) {
        Satellite sat;
        sat.system = sys;
        sat.prn = slot.prn;
        sat.radius = kGeoRadius;
        sat.geostationary = true;
        sat.lonDeg = slot.lonDeg;
        out.push_back(sat);
    }
}

// 4x4 symmetric inverse by Gauss-Jordan; false when singular.
bool Invert4(std::array<std::array<double, 8>, 4>& m) {
    for (int c = 0; c < 4; ++c) {
        int pivot = c;
        for (int r = c + 1; r < 4; ++r)
            if (std::abs(m[r][c]) > std::abs(m[pivot][c])) pivot = r;
        if (std::abs(m[pivot][c]) < 1e-12) return false;
        std::swap(m[c], m[pivot]);
        const double d = m[c][c];
        for (auto& v : m[c]) v /= d;
        for (int r = 0; r < 4; ++r) {
            if (r == c) continue;
            const double k = m[r][c];
            for (int j = 0; j < 8; ++j) m[r][j] -= k * m[c][j];
        }
    }
    return true;
}

}  // namespace

int Satellite::NmeaId() const {
    switch (system) {
    case GnssSystem::Gps: return prn;
    case GnssSystem::Glonass: return 64 + prn;
    case GnssSystem::Sbas: return prn - 87;
    case GnssSystem::Qzss: return prn;
    case GnssSystem::Galileo: return prn;
    case GnssSystem::BeiDou: return prn;
    }
    return prn;
}

Constellation::Constellation() {
    AddWalker(sats_, GnssSystem::Gps, 6, 4, 1, 26559.7e3, 55.0, 1);
    AddWalker(sats_, GnssSystem::Glonass, 3, 8, 1, 25508.0e3, 64.8, 1);
    AddGeostationary(sats_, GnssSystem::Sbas, kSbas);
    AddFigureEights(sats_, GnssSystem::Qzss, 193, 4, 135.0, 41.0);
    AddWalker(sats_, GnssSystem::Galileo, 3, 9, 1, 29600.0e3, 56.0, 1);
    AddGeostationary(sats_, GnssSystem::BeiDou, kBeiDouGeo);
    AddFigureEights(sats_, GnssSystem::BeiDou, 6, 3, 118.0, 55.0);
    AddWalker(sats_, GnssSystem::BeiDou, 3, 8, 1, 27906.0e3, 55.0, 19);
}

Ecef Constellation::Position(const Satellite& sat, double t) {
    if (sat.geostationary) {
        const double lon = geodesy::Radians(sat.lonDeg);
        return {sat.radius * std::cos(lon), sat.radius * std::sin(lon), 0};
    }
    const double u = sat.argLat0 + sat.motion * t;
    // Orbital plane to inertial, then inertial to Earth-fixed by the Earth's rotation angle.
    const double xp = sat.radius * std::cos(u), yp = sat.radius * std::sin(u);
    const double ci = std::cos(sat.inclination), si = std::sin(sat.inclination);
    const double node = sat.raan - EarthAngle(t);
    const double cn = std::cos(node), sn = std::sin(node);
    return {xp * cn - yp * ci * sn, xp * sn + yp * ci * cn, yp * si};
}

std::vector<SatView> Constellation::Visible(const Geodetic& site, double t, double maskDeg) const {
    std::vector<SatView> views;
    for (const auto& sat : sats_) {
        const Look look = Geodesy::LookAt(site, Position(sat, t));
        if (look.elevationDeg <= 0) continue;
        SatView v;
        v.sat = &sat;
        v.look = look;
        v.elevation = look.elevationDeg;
        v.azimuth = look.azimuthDeg;
        // Signal strength grows with elevation; a small per-satellite offset tells them apart.
        v.snr = static_cast<int>(std::lround(31 + 17 * std::sin(geodesy::Radians(look.elevationDeg)) +
                                             (sat.prn % 5) - 2));
        v.used = sat.system != GnssSystem::Sbas && look.elevationDeg >= maskDeg;
        views.push_back(v);
    }
    return views;
}

Dop Constellation::ComputeDop(const std::vector<SatView>& views) {
    std::array<std::array<double, 8>, 4> m{};
    int used = 0;
    for (const auto& v : views) {
        if (!v.used) continue;
        const std::array<double, 4> g{-v.look.east, -v.look.north, -v.look.up, 1.0};
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c) m[r][c] += g[r] * g[c];
        ++used;
    }
    Dop dop;
    if (used < 4) return dop;
    for (int r = 0; r < 4; ++r) m[r][4 + r] = 1;
    if (!Invert4(m)) return dop;
    dop.hdop = std::sqrt(m[0][4] + m[1][5]);
    dop.vdop = std::sqrt(m[2][6]);
    dop.pdop = std::sqrt(m[0][4] + m[1][5] + m[2][6]);
    dop.valid = true;
    return dop;
}

}  // namespace rcvsim
