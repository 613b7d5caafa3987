#include "tools/rcvsim/Nmea.h"

#include <cmath>
#include <cstdio>
#include <ctime>

namespace rcvsim {
namespace {

struct Utc {
    std::tm tm{};
    double seconds = 0;  // seconds within the minute, with fraction
};

Utc ToUtc(double time) {
    const double t = std::round(time * 100) / 100;  // sentences carry centiseconds
    Utc u;
    const std::time_t whole = static_cast<std::time_t>(std::floor(t));
    gmtime_r(&whole, &u.tm);
    u.seconds = u.tm.tm_sec + (t - std::floor(t));
    return u;
}

std::string Clock(const Utc& u) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d%02d%05.2f", u.tm.tm_hour, u.tm.tm_min, u.seconds);
    return buf;
}

std::string LatLon(const Geodetic& g) {
    const double lat = std::abs(g.latDeg), lon = std::abs(g.lonDeg);
    const int latD = static_cast<int>(lat), lonD = static_cast<int>(lon);
    char buf[64];
    std::snprintf(buf, sizeof buf, "%02d%08.5f,%c,%03d%08.5f,%c", latD, (lat - latD) * 60,
                  g.latDeg < 0 ? 'S' : 'N', lonD, (lon - lonD) * 60, g.lonDeg < 0 ? 'W' : 'E');
    return buf;
}

struct Talker {
    const char* id;
    bool (*member)(GnssSystem);
};
constexpr Talker kGsvTalkers[] = {
    {"GP", [](GnssSystem s) { return s == GnssSystem::Gps || s == GnssSystem::Sbas; }},
    {"GL", [](GnssSystem s) { return s == GnssSystem::Glonass; }},
    {"QZ", [](GnssSystem s) { return s == GnssSystem::Qzss; }},
    {"GA", [](GnssSystem s) { return s == GnssSystem::Galileo; }},
    {"GB", [](GnssSystem s) { return s == GnssSystem::BeiDou; }},
};

struct GsaSystem {
    GnssSystem system;
    int nmeaSystemId;  // the system id field of NMEA 4.10 GSA
};
constexpr double kKnot = 1852.0 / 3600.0;  // m/s

constexpr GsaSystem kGsaSystems[] = {
    {GnssSystem::Gps, 1}, {GnssSystem::Glonass, 2}, {GnssSystem::Galileo, 3}, {GnssSystem::BeiDou, 4},
    {GnssSystem::Qzss, 5}};

// RMC, GLL and VTG mode indicator of a fix quality; 'N' when there is no fix.
char ModeIndicator(const Fix& fix, bool valid) {
    static constexpr char kMode[] = {'N', 'A', 'D', 'A', 'R', 'F'};
    return valid ? kMode[fix.quality < 0 || fix.quality > 5 ? 0 : fix.quality] : 'N';
}

bool Valid(const Fix& fix) { return fix.UsedCount() >= 4 && fix.dop.valid; }

}  // namespace

int Fix::UsedCount() const {
    int n = 0;
    for (const auto& s : sats) n += s.used ? 1 : 0;
    return n;
}

unsigned Nmea::Checksum(std::string_view body) {
    unsigned sum = 0;
    for (const unsigned char c : body) sum ^= c;
    return sum;
}

std::string Nmea::Sentence(std::string_view body) {
    char tail[8];
    std::snprintf(tail, sizeof tail, "*%02X\r\n", Checksum(body));
    return "$" + std::string(body) + tail;
}

std::string Nmea::Gga(const Fix& fix) {
    const Utc u = ToUtc(fix.time);
    const int used = fix.UsedCount();
    const bool valid = used >= 4 && fix.dop.valid;
    char buf[160];
    std::snprintf(buf, sizeof buf, "GNGGA,%s,%s,%d,%02d,%.1f,%.3f,M,0.000,M,%s", Clock(u).c_str(),
                  LatLon(fix.position).c_str(), valid ? fix.quality : 0, used, fix.dop.hdop,
                  fix.position.height, valid && fix.quality != 1 ? "1.0,0401" : ",");
    return Sentence(buf);
}

std::string Nmea::Rmc(const Fix& fix) {
    const Utc u = ToUtc(fix.time);
    const bool valid = Valid(fix);
    char buf[160];
    std::snprintf(buf, sizeof buf, "GNRMC,%s,%c,%s,%.2f,%.2f,%02d%02d%02d,,,%c", Clock(u).c_str(),
                  valid ? 'A' : 'V', LatLon(fix.position).c_str(), fix.speed / kKnot, fix.course,
                  u.tm.tm_mday, u.tm.tm_mon + 1, u.tm.tm_year % 100, ModeIndicator(fix, valid));
    return Sentence(buf);
}

std::string Nmea::Gsa(const Fix& fix) {
    std::string out;
    for (const auto& sys : kGsaSystems) {
        std::vector<int> ids;
        for (const auto& s : fix.sats)
            if (s.used && s.sat->system == sys.system) ids.push_back(s.sat->NmeaId());
        // A system with more than twelve used satellites takes a sentence per twelve.
        for (std::size_t first = 0; first < ids.size(); first += 12) {
            std::string fields;
            for (std::size_t i = first; i < first + 12; ++i)
                fields += (i < ids.size() ? std::to_string(ids[i]) : std::string()) + ",";
            char buf[160];
            std::snprintf(buf, sizeof buf, "GNGSA,A,%d,%s%.1f,%.1f,%.1f,%d", fix.dop.valid ? 3 : 1,
                          fields.c_str(), fix.dop.pdop, fix.dop.hdop, fix.dop.vdop, sys.nmeaSystemId);
            out += Sentence(buf);
        }
    }
    return out;
}

std::string Nmea::Gsv(const Fix& fix) {
    std::string out;
    for (const auto& talker : kGsvTalkers) {
        std::vector<const SatView*> group;
        for (const auto& s : fix.sats)
            if (talker.member(s.sat->system)) group.push_back(&s);
        if (group.empty()) continue;
        const int total = static_cast<int>((group.size() + 3) / 4);
        for (int i = 0; i < total; ++i) {
            std::string body = std::string(talker.id) + "GSV," + std::to_string(total) + "," +
                               std::to_string(i + 1) + "," + std::to_string(group.size());
            for (std::size_t k = i * 4; k < group.size() && k < static_cast<std::size_t>(i * 4 + 4); ++k) {
                char sat[32];
                std::snprintf(sat, sizeof sat, ",%02d,%02d,%03d,%02d", group[k]->sat->NmeaId(),
                              static_cast<int>(std::lround(group[k]->elevation)),
                              static_cast<int>(std::lround(group[k]->azimuth)) % 360,
                              group[k]->snr);
                body += sat;
            }
            out += Sentence(body);
        }
    }
    return out;
}

std::string Nmea::Zda(const Fix& fix) {
    const Utc u = ToUtc(fix.time);
    char buf[96];
    std::snprintf(buf, sizeof buf, "GNZDA,%s,%02d,%02d,%04d,00,00", Clock(u).c_str(), u.tm.tm_mday,
                  u.tm.tm_mon + 1, u.tm.tm_year + 1900);
    return Sentence(buf);
}

// Pseudo-range error statistics: the ellipse is the solution's sigma stretched by the DOPs.
std::string Nmea::Gst(const Fix& fix) {
    const Utc u = ToUtc(fix.time);
    const double major = fix.sigma * fix.dop.hdop, minor = 0.7 * major;
    char buf[160];
    std::snprintf(buf, sizeof buf, "GNGST,%s,%.3f,%.3f,%.3f,%.1f,%.3f,%.3f,%.3f", Clock(u).c_str(),
                  fix.sigma * fix.dop.pdop, major, minor, std::fmod(fix.time / 60.0, 180.0), 0.9 * major,
                  0.8 * major, fix.sigma * fix.dop.vdop);
    return Sentence(buf);
}

std::string Nmea::Vtg(const Fix& fix) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "GNVTG,%.2f,T,,M,%.3f,N,%.3f,K,%c", fix.course, fix.speed / kKnot,
                  fix.speed * 3.6, ModeIndicator(fix, Valid(fix)));
    return Sentence(buf);
}

std::string Nmea::Gll(const Fix& fix) {
    const bool valid = Valid(fix);
    char buf[96];
    std::snprintf(buf, sizeof buf, "GNGLL,%s,%s,%c,%c", LatLon(fix.position).c_str(),
                  Clock(ToUtc(fix.time)).c_str(), valid ? 'A' : 'V', ModeIndicator(fix, valid));
    return Sentence(buf);
}

}  // namespace rcvsim
