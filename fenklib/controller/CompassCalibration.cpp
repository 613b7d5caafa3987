#include "fenklib/controller/CompassCalibration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {
constexpr std::array<double, 4> kTargets{0, 90, 180, 270};
constexpr double kRadian = std::numbers::pi / 180.0;
}  // namespace

double AngleDifference(double a, double b) {
    double d = std::fmod(a - b, 360.0);
    if (d <= -180.0) d += 360.0;
    if (d > 180.0) d -= 360.0;
    return d;
}

std::span<const double> CompassCalibration::Targets() { return kTargets; }

double CompassCalibration::Correction() const {
    double sumSin = 0, sumCos = 0;
    for (std::size_t i = 0; i < m_readings.size() && i < kTargets.size(); ++i) {
        const double d = AngleDifference(kTargets[i], m_readings[i]) * kRadian;
        sumSin += std::sin(d);
        sumCos += std::cos(d);
    }
    return AngleDifference(std::atan2(sumSin, sumCos) / kRadian, 0);
}

double CompassCalibration::Spread() const {
    const double mean = Correction();
    double spread = 0;
    for (std::size_t i = 0; i < m_readings.size() && i < kTargets.size(); ++i)
        spread = std::max(spread, std::abs(AngleDifference(AngleDifference(kTargets[i], m_readings[i]), mean)));
    return spread;
}
