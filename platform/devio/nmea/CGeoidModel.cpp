#include "platform/devio/nmea/CGeoidModel.h"

#include <cmath>

#if FENK_HAVE_PROJ
#include <proj.h>
#endif

namespace devio {

#if FENK_HAVE_PROJ

namespace {

constexpr double kDegree = 0.017453292519943295;
// The Debian package installs the grid under its historic name; the tif is PROJ's newer one.
constexpr const char* kGrids[] = {"+proj=vgridshift +grids=egm96_15.gtx +multiplier=1",
                                  "+proj=vgridshift +grids=us_nga_egm96_15.tif +multiplier=1"};

}  // namespace

struct CGeoidModel::IMPL {
    PJ_CONTEXT* context = nullptr;
    PJ* shift = nullptr;
    bool tried = false;
    // A receiver standing still asks for the same place every second.
    double lastLat = NAN, lastLon = NAN, lastSeparation = NAN;

    ~IMPL()
    {
        if (shift != nullptr)
            proj_destroy(shift);
        if (context != nullptr)
            proj_context_destroy(context);
    }

    bool Open()
    {
        if (tried)
            return shift != nullptr;
        tried = true;
        context = proj_context_create();
        if (context == nullptr)
            return false;
        proj_context_set_enable_network(context, 0);
        proj_log_level(context, PJ_LOG_NONE);
        for (const char* definition : kGrids) {
            shift = proj_create(context, definition);
            if (shift != nullptr)
                return true;
        }
        return false;
    }

    bool Separation(double lat, double lon, double& separation)
    {
        if (!Open())
            return false;
        if (lat == lastLat && lon == lastLon) {
            separation = lastSeparation;
            return true;
        }
        // vgridshift forward adds the grid value to the height, so a zero height comes out as
        // the geoid height itself (checked against published EGM96 values in the tests).
        const PJ_COORD out = proj_trans(shift, PJ_FWD, proj_coord(lon * kDegree, lat * kDegree, 0, 0));
        if (!std::isfinite(out.xyz.z) || std::fabs(out.xyz.z) > 200)
            return false;
        lastLat = lat;
        lastLon = lon;
        lastSeparation = out.xyz.z;
        separation = lastSeparation;
        return true;
    }
};

#else

struct CGeoidModel::IMPL {
    bool Open() { return false; }
    bool Separation(double, double, double&) { return false; }
};

#endif

CGeoidModel::CGeoidModel() : m_impl(std::make_unique<IMPL>()) {}
CGeoidModel::~CGeoidModel() = default;

bool CGeoidModel::Separation(double latDegrees, double lonDegrees, double& separation)
{
    return m_impl->Separation(latDegrees, lonDegrees, separation);
}

bool CGeoidModel::Available() { return m_impl->Open(); }

}  // namespace devio
