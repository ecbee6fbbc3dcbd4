#include "editor/patternPlane.h"

namespace vantrelix {

namespace {

constexpr PatternPlane kAzimuth{
    Plane::azimuth,
    "AHD",
    "HOR_AZ",
    "HOR_FIELD",
    "TDBGridAHD",
    "fraAHD",
    "lblAzPat",
    "fraHor",
    "picHor",
    "Azimuth Thumbnail",
    "Azimuth",
    "Az Pat: ",
    "Get Az Pat: ",
    0,
    360,
    false,
    "Invalid Azimuth Value",
    "The azimuth value must be greater than or equal to zero and less than 360.",
    "The azimuth gain values may not be greater than the antenna gain specified above.",
    "You can change the antenna gain above first, then enter the value for the azimuth gain."};

constexpr PatternPlane kElevation{
    Plane::elevation,
    "AVD",
    "VERT_ANGLE",
    "VERT_FIELD",
    "TDBGridAVD",
    "fraAVD",
    "lblElPat",
    "fraVer",
    "picVer",
    "Elevation Thumbnail",
    "Angle",
    "El Pat: ",
    "Get El Pat: ",
    -180,
    180,
    true,
    "Invalid Angle Value",
    "The vertical angle value must be greater than or equal to -180 and less than or equal to +180.",
    "The elevation gain values may not be greater than the antenna gain specified above.",
    "You can change the antenna gain above first, then enter the value for the elevation gain."};

}  // namespace

const PatternPlane& patternPlane(Plane plane) { return plane == Plane::azimuth ? kAzimuth : kElevation; }

}  // namespace vantrelix
