#pragma once
#include <span>
#include <vector>

// The compass calibration's arithmetic: the controller is pointed to known headings in turn,
// the compass's reading is taken at each, and the correction is the mean of the differences
// on the circle (so 359° and 1° average to 0°, not 180°).
class CompassCalibration {
public:
    // The headings the person is asked to point the controller to, in order.
    static std::span<const double> Targets();

    void Add(double reading) { m_readings.push_back(reading); }
    std::size_t Taken() const { return m_readings.size(); }
    bool Complete() const { return m_readings.size() >= Targets().size(); }

    // Degrees to add to the readings (-180, 180]; the spread is the largest distance of one
    // difference from that mean, a measure of how well the turn was made.
    double Correction() const;
    double Spread() const;

private:
    std::vector<double> m_readings;
};

// a - b as the shorter way round, in (-180, 180].
double AngleDifference(double a, double b);
