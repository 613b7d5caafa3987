#pragma once
#include <memory>

namespace devio {

// Geoid height above the WGS-84 ellipsoid from the EGM96 model (the 15' grid egm96_15 that
// PROJ's data package ships), for receivers whose GGA leaves the separation empty. The grid
// is opened on first use; without PROJ or without the grid the model is simply unavailable.
class CGeoidModel {
public:
    CGeoidModel();
    ~CGeoidModel();
    CGeoidModel(const CGeoidModel&) = delete;
    CGeoidModel& operator=(const CGeoidModel&) = delete;

    // Metres, geoid minus ellipsoid; false when the model is not available.
    bool Separation(double latDegrees, double lonDegrees, double& separation);
    bool Available();

private:
    struct IMPL;
    std::unique_ptr<IMPL> m_impl;
};

}  // namespace devio
