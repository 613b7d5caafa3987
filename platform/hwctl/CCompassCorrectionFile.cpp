#include "platform/hwctl/CCompassCorrectionFile.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "platform/basekit/CStdException.h"
#include "platform/basekit/ustring.h"

namespace hwctl {

namespace {
// Numbers in the files are C-locale text whatever the user's locale.
std::string FormatNumber(double value) {
    char buffer[32];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 3);
    return ec == std::errc() ? std::string(buffer, end) : std::string("0");
}
}  // namespace

double CCompassCorrectionFile::Load() const {
    std::ifstream in(m_folder + "/compass/correction");
    std::string stored;
    std::getline(in, stored);
    double correction = 0;
    std::from_chars(stored.data(), stored.data() + stored.size(), correction);
    return std::isfinite(correction) ? correction : 0;
}

void CCompassCorrectionFile::Store(double degrees) const {
    std::error_code ec;
    std::filesystem::create_directories(m_folder + "/compass", ec);
    std::ofstream out(m_folder + "/compass/correction", std::ios::trunc);
    out << FormatNumber(degrees) << "\n";
    if (!out) throw basekit::CStdException(basekit::ustring::FromUtf8("cannot store the compass correction under " + m_folder), __FILE__, __LINE__);
    std::ofstream log(m_folder + "/actions.log", std::ios::app);
    log << "compass correction " << FormatNumber(degrees) << "\n";
}

double CCompassCorrectionFile::Apply(double rawDegrees) const {
    const double heading = std::fmod(rawDegrees + Load(), 360.0);
    return heading < 0 ? heading + 360.0 : heading;
}

}  // namespace hwctl
