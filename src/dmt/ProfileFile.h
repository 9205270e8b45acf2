#pragma once
// What the unit-weight and pore-pressure profile files share: line 1 holds the mode as one digit
// (and for unit weights in mode 1 ":" and a constant), then one point a line, "Z:value", both in
// "0.0#". The list ends at a line without ":".

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"

namespace koru {

struct ProfileFileContent {
  int16_t mode = 0;
  std::string_view firstLine;  // line 1 as it stands (the constant of a unit-weight profile)
  std::vector<float> z, value;
};

// Reads line 1 and, if `readPoints`, the points. A point that is no "Z:value" ends the list and
// is told in `why` with its line, as is a list longer than a 16-bit count.
ProfileFileContent parseProfileText(std::string_view text, bool (*readPoints)(int16_t mode),
                                    const std::filesystem::path& path, Diagnostic* why);

// "Z:value" lines, CR LF ended.
std::string profilePointsText(const std::vector<float>& z, const std::vector<float>& value);

// Two depths are the same point when they agree to the millimetre.
bool sameProfileDepth(float a, float b);

// A finite float or 0, for interpolated values.
float profileValueOrZero(double x);

}  // namespace koru
