#pragma once
// Summary figures of one parameter over many depths (one vertical, or a whole site), kept only
// to choose good plot scales. A value of exactly 0 means "no reading" throughout the program, so
// zeros count in N but take no part in the mean, the bounds or the excess over the mean.
//
// The counters are 16-bit as every row count of the program is; a count beyond 32767 (a site
// of very many long soundings) stays at 32767 while the mean is still taken over all values.
// Nothing here throws.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace koru {

class cls_statVec {
 public:
  float media = 0;            // mean of the values that are not 0
  float sngMax = 0;           // largest value that is not 0; -1000000 when a calculation found none
  float sngMin = 0;           // smallest value that is not 0; 100000 when a calculation found none
  int16_t N = 0;              // all values, zeros too
  int16_t nNon0 = 0;          // values that are not 0
  int16_t nOltreMedia = 0;    // values above media
  float mediaOltreMedia = 0;  // mean excess over media of those values
  std::vector<float> vettore; // the values

  // The starting bounds of a calculation: any real reading replaces them.
  static constexpr float kStartMax = -1000000.0f;
  static constexpr float kStartMin = 100000.0f;

  // addVec, then statCalculate.
  void setVecAndCalculate(std::span<const float> values, bool logValues = false);
  // Once a calculation has counted values (N above 0) the new ones are appended, so a site's
  // vector gathers the values of all its verticals; before that they replace the vector.
  void addVec(std::span<const float> values);
  // Recomputes every figure from vettore. With logValues each value that is not 0 goes to
  // logLine. A value that is not finite is no reading, as a 0 is.
  void statCalculate(bool logValues = false);
  // Merges the mean, the bounds, N and nNon0 of another vector into this one without touching
  // vettore. nOltreMedia and mediaOltreMedia keep this vector's figures: they cannot be merged
  // from summaries, and the scales read them from calculated vectors only.
  void add(const cls_statVec& other);

  // "Media (...)", "Min (...)", "Max (...)", "nNon0 (...)", "N (...)", "nOltreMedia (...)",
  // "mediaOltreMedia (...)".
  std::vector<std::string> debugLines() const;
  // debugLines to logLine.
  void debugPrint() const;
};

}  // namespace koru
