#include "tools/nmeadump/CGpsdJsonSink.h"

#include <array>
#include <cmath>

#include "tools/nmeadump/JsonTime.h"

namespace {

using S = devio::SATELLITE_RECORD;

// Our system code to gpsd's gnssid and PRN numbering.
struct GNSS_ROW {
    std::int32_t system;
    int gnssId;
    int prnOffset;                        // PRN = number + offset
    int svidOffset;                       // svid = number + offset
};
constexpr std::array kGnss{
    GNSS_ROW{S::GPS, 0, 0, 0},       GNSS_ROW{S::SBAS, 1, 0, 0},    GNSS_ROW{S::Galileo, 2, 300, 0},
    GNSS_ROW{S::BeiDou, 3, 400, 0},  GNSS_ROW{S::QZSS, 5, 0, -192}, GNSS_ROW{S::GLO, 6, 64, 0},
};

const GNSS_ROW* GnssOf(std::int32_t system)
{
    for (const GNSS_ROW& row : kGnss) {
        if (row.system == system)
            return &row;
    }
    return nullptr;
}

// NMEA 4.11 signal ids (index) to the receiver-protocol signal ids gpsd reports; -1 where the
// signal has none. Rows: GPS, GLONASS, Galileo, BeiDou, QZSS.
struct SIGNAL_ROW {
    std::int32_t system;
    std::array<int, 16> sigid;
};
constexpr std::array kSignals{
    SIGNAL_ROW{S::GPS, {-1, 0, -1, -1, -1, 4, 3, 6, 7, -1, -1, -1, -1, -1, -1, -1}},
    SIGNAL_ROW{S::GLO, {-1, 0, -1, 2, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1}},
    SIGNAL_ROW{S::Galileo, {-1, 3, 5, -1, -1, -1, -1, 0, -1, -1, -1, -1, -1, -1, -1, -1}},
    SIGNAL_ROW{S::BeiDou, {-1, 0, -1, 5, -1, 7, -1, -1, -1, -1, -1, 2, -1, -1, -1, -1}},
    SIGNAL_ROW{S::QZSS, {-1, 0, -1, -1, 1, 4, 5, 8, 9, -1, -1, -1, -1, -1, -1, -1}},
};

int SigidOf(std::int32_t system, std::uint8_t nmeaSignal)
{
    for (const SIGNAL_ROW& row : kSignals) {
        if (row.system == system)
            return nmeaSignal < row.sigid.size() ? row.sigid[nmeaSignal] : -1;
    }
    return -1;
}

}  // namespace

void CGpsdJsonSink::OnDateTime(const devio::DATETIME_RECORD& dateTime) { m_date = dateTime; }

void CGpsdJsonSink::OnPosition(const devio::POSITION_RECORD& p)
{
    const bool threeD = std::isfinite(p.height);
    // A held position is no fix: gpsd reports mode 1 without coordinates.
    m_out.Raw(R"({"class":"TPV","device":"stdin","mode":)");
    m_out.Int(p.IsHeld() ? 1 : (threeD ? 3 : 2));
    if (m_date.year != 0 && p.timeOfDay >= 0) {
        const auto ms = static_cast<unsigned>(p.timeOfDay);
        m_out.Raw(R"(,"time":")");
        WriteDate(m_out, m_date);
        m_out.Char('T');
        WriteClock(m_out, ms / 3600000, ms / 60000 % 60, ms / 1000 % 60, ms % 1000);
        m_out.Raw("Z\"");
    }
    if (p.IsHeld()) {
        m_out.Char('}');
        m_out.EndLine();
        return;
    }
    m_out.Key("lat");
    m_out.Fixed(p.lat, 9);
    m_out.Key("lon");
    m_out.Fixed(p.lon, 9);
    if (threeD) {
        m_out.Key("altHAE");
        m_out.Fixed(p.height, 4);
        m_out.Key("altMSL");
        m_out.Fixed(p.altitudeMsl, 4);
    }
    if (std::isfinite(p.speed)) {
        m_out.Key("speed");
        m_out.Fixed(p.speed, 3);
    }
    if (std::isfinite(p.course)) {
        m_out.Key("track");
        m_out.Fixed(p.course, 4);
    }
    if (std::isfinite(p.geoidSeparation)) {
        m_out.Key("geoidSep");
        m_out.Fixed(p.geoidSeparation, 3);
    }
    m_out.Char('}');
    m_out.EndLine();
}

void CGpsdJsonSink::OnSatList(const devio::SATLIST_RECORD& satellites)
{
    m_out.Raw(R"({"class":"SKY","device":"stdin","nSat":)");
    m_out.Unsigned(satellites.size());
    m_out.Key("uSat");
    m_out.Unsigned(devio::CountUsedSatellites(satellites));
    m_out.Raw(R"(,"satellites":[)");
    bool first = true;
    for (const S& s : satellites) {
        const GNSS_ROW* gnss = GnssOf(s.system);
        if (gnss == nullptr)
            continue;
        if (!first)
            m_out.Char(',');
        first = false;
        m_out.Raw(R"({"PRN":)");
        m_out.Int(s.number + gnss->prnOffset);
        if (s.elevation != S::kUnknownElevation) {
            m_out.Key("el");
            m_out.Fixed(s.elevation, 1);
        }
        if (s.azimuth != S::kUnknownAzimuth) {
            m_out.Key("az");
            m_out.Fixed(s.azimuth, 1);
        }
        m_out.Key("ss");
        m_out.Fixed(s.snr, 1);
        m_out.Key("used");
        m_out.Bool(S::IsUsed(s.navStatus));
        m_out.Key("gnssid");
        m_out.Int(gnss->gnssId);
        m_out.Key("svid");
        m_out.Int(s.number + gnss->svidOffset);
        const int sigid = SigidOf(s.system, s.signalId);
        if (sigid > 0) {
            m_out.Key("sigid");
            m_out.Int(sigid);
        }
        m_out.Char('}');
    }
    m_out.Raw("]}");
    m_out.EndLine();
}
