#pragma once
#include "fenklib/frame/CFenkGlobalSettings.h"
#include "fenklib/receiver/VokTypes.h"

// The receiver's position records on the WGS-84 ellipsoid, and the angle forms a surveyor types.
namespace wgs84 {

devio::vok::POS_XYZ ToXyz(const devio::vok::POS_GEO& geo);
devio::vok::POS_GEO ToGeo(const devio::vok::POS_XYZ& xyz);

// An angle as degrees, minutes and seconds with its hemisphere; seconds rounded to `decimals`
// with the carry taken into minutes and degrees (never 60 seconds).
struct DMS {
    bool negative = false;   // south or west
    int degrees = 0;
    int minutes = 0;
    double seconds = 0;
};
DMS ToDms(double degrees, int decimals);
double FromDms(const DMS& dms);

}  // namespace wgs84

// Which editor a window opens for a position. The two tests differ on purpose: windows that
// prefer the geodetic editor open the Cartesian one only for a setting of 1; windows that prefer
// the Cartesian editor open it for every setting but 0.
enum class CoordEditor { Xyz, Geo };
inline CoordEditor EditorUnlessGeodetic(ECoordSystem setting) { return setting != COORD_GEODETIC ? CoordEditor::Xyz : CoordEditor::Geo; }
inline CoordEditor EditorUnlessCartesian(ECoordSystem setting) { return setting != COORD_CARTESIAN ? CoordEditor::Geo : CoordEditor::Xyz; }
