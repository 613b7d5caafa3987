#pragma once
#include <string>

namespace hwctl {

// The compass correction kept as a file, the same way whichever backend reads the compass:
// <folder>/compass/correction holds the degrees added to every raw heading (C locale, "-3.000"),
// and each store is appended to <folder>/actions.log ("compass correction -3.000").
class CCompassCorrectionFile {
public:
    explicit CCompassCorrectionFile(std::string folder) : m_folder(std::move(folder)) {}
    // No correction stored yet (or an unreadable one) is no correction.
    double Load() const;
    // Creates the folder when needed; a failure is a basekit::CStdException.
    void Store(double degrees) const;
    // The raw heading corrected, in [0, 360).
    double Apply(double rawDegrees) const;

private:
    std::string m_folder;
};

}  // namespace hwctl
