#pragma once
// The chart of soil codes of the DMT evaluation: a row from the modulus against four lines in the
// (Id, Ed) plane, a column from the material index, and for each code a unit weight and the
// string that names its soil class. Also the two closed-form thrust formulas that turn the
// axisymmetric friction angle into a plane-strain angle and into Ko.

#include <cstdint>

namespace koru {

// Soil code 1..37 for material index `id` and modulus `ed` (MPa). Codes 1..35 are
// 5 x (column - 1) + row; 36 and 37 are the very soft soils (10 x Ed < 12), below and from
// Id 0.1. The column boundaries are compared in single precision so that a stored Id of 1.8
// lies in the column "from 1.8".
int16_t soilChartCode(float id, float ed);

// Unit weight of a code in t/m3; 0 for any code outside 1..37.
float soilChartUnitWeight(int code);

// Number of the language string naming the code's soil class (3800..3808); 0 for other codes.
int soilChartStringId(int code);

// Plane-strain friction angle (degrees) from the axisymmetric angle `phi` (degrees) at the
// vertical effective stress `sigmaBar` (bar); 0 when phi is not positive.
double thrustPhiPlane(double sigmaBar, double phi);

// Ko of a sand from the thrust angle `phi` (degrees); 0 unless Id >= 1.2 and phi > 0.
double thrustK0(float id, double kd, double phi);

}  // namespace koru
