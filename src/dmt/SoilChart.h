#pragma once
// The chart of soil codes of the DMT evaluation: a row from the modulus against four lines in the
// (Id, Ed) plane, a column from the material index, and for each code a unit weight and the
// string that names its soil class.

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

}  // namespace koru
