// Editing a DMT sounding row by row, as the acquisition and the data editor do it, and choosing
// the membrane calibration that the stored calibrations recommend.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "dmt/cls_DmtTEST.h"
#include "frame/Numbers.h"

namespace koru {

namespace {

constexpr size_t kMaxRows = 32767;

// Two depths closer than a centimetre are the same depth. The gap is judged to a tenth of a
// millimetre: float depths a typed centimetre apart (1.20 and 1.21) differ by 0.0099999905, and
// must not collide, while 1.20 and 1.209 must.
double depthGap(float from, float to) { return roundTo(static_cast<double>(to) - static_cast<double>(from), 4); }

int16_t toDelta(double value, int16_t fallback) {
  auto delta = toInt16(value);
  return delta ? *delta : fallback;
}

int16_t clampToInt16(int value) {
  return static_cast<int16_t>(std::clamp(value, static_cast<int>(std::numeric_limits<int16_t>::min()),
                                         static_cast<int>(std::numeric_limits<int16_t>::max())));
}

// Po and P1 of a fully read row, as the evaluation forms them, and whether P1 - Po, rounded to a
// whole kPa, is not positive. A row whose numbers leave the float range is not judged.
bool isBadRow(const cls_DmtTEST& t, size_t row, int deltaA, int deltaB) {
  const double a = static_cast<double>(t.vA[row]) - t.sngZMAB + deltaA + t.sngZMCal;
  const double b = static_cast<double>(t.vB[row]) - t.sngZMAB - deltaB + t.sngZMCal;
  const double limit = std::numeric_limits<float>::max();
  if (!(std::fabs(a) <= limit) || !(std::fabs(b) <= limit)) return false;
  const float aCorr = static_cast<float>(a);
  const float bCorr = static_cast<float>(b);
  const double po = Max(static_cast<double>(t.sngCoefA) * aCorr - static_cast<double>(t.sngCoefB) * bCorr,
                        0.6 * aCorr);
  if (!(std::fabs(po) <= limit)) return false;
  const float p1 = bCorr;
  return roundHalfEven(static_cast<double>(p1) - static_cast<float>(po)) <= 0;
}

bool hasAB(const cls_DmtTEST& t, size_t row) { return t.vA[row] != 0 && t.vB[row] != 0; }

// Bad rows for one pair of deltas; counting stops once `enough` is reached, as nothing beyond it
// can win the search any more.
int countBadRows(const cls_DmtTEST& t, int deltaA, int deltaB, int enough = std::numeric_limits<int>::max()) {
  int bad = 0;
  for (size_t i = 0; i < t.vZ.size() && bad < enough; ++i)
    if (hasAB(t, i) && isBadRow(t, i, deltaA, deltaB)) ++bad;
  return bad;
}

int recordBadRows(cls_DmtTEST& t) {
  t.vBadRows.clear();
  for (size_t i = 0; i < t.vZ.size(); ++i)
    if (hasAB(t, i) && isBadRow(t, i, t.intDeltaA, t.intDeltaB)) t.vBadRows.push_back(static_cast<float>(i));
  return static_cast<int>(t.vBadRows.size());
}

// The search looks at every pair between the minima and the maxima. Real calibrations span a
// few tens of kPa; a grid so wide that the search would stall the program is not searched, and
// the minima stay in force.
constexpr double kSearchBudget = 2e8;  // row evaluations

void appendRow(cls_DmtTEST& t, float z, int16_t a, int16_t b, int16_t c) {
  t.vZ.push_back(z);
  t.vTH.push_back(0.0f);
  t.vA.push_back(a);
  t.vB.push_back(b);
  t.vC.push_back(c);
}

// A new depth must lie below the last row; a test holds at most 32767 rows.
bool acceptsNewRow(const cls_DmtTEST& t, float z) {
  if (!std::isfinite(z) || t.vZ.size() >= kMaxRows) return false;
  return t.vZ.empty() || z > t.Zf();
}

}  // namespace

float cls_DmtTEST::suggestNextZ() const {
  const size_t n = vZ.size();
  if (n == 0) return 0.2f;
  if (n == 1) return vZ[0] + 0.2f;
  return vZ[n - 1] + (vZ[n - 1] - vZ[n - 2]);
}

int16_t cls_DmtTEST::isZCollision(float z) const {
  const size_t n = std::min(vZ.size(), kMaxRows);
  for (size_t i = 0; i < n; ++i) {
    if (std::fabs(depthGap(z, vZ[i])) < 0.01) return static_cast<int16_t>(i);
    // Rows are in ascending depth: past Z by more than the tolerance, no later row can match.
    if (depthGap(z, vZ[i]) > 0.01) return -1;
  }
  return -1;
}

int16_t cls_DmtTEST::getZnewCorrectIndex(float z) const {
  if (vZ.empty() || z < vZ[0]) return 0;
  const size_t n = std::min(vZ.size(), kMaxRows);
  for (size_t i = 0; i < n; ++i)
    if (vZ[i] > z) return static_cast<int16_t>(i + 1);
  return 0;
}

void cls_DmtTEST::addZABCtoData(float z, int16_t a, int16_t b, int16_t c, bool overwrite) {
  const int16_t row = isZCollision(z);
  if (row >= 0) {
    if (!overwrite) return;
    const auto r = static_cast<size_t>(row);
    vA[r] = a;
    vB[r] = b;
    vC[r] = c;
    return;
  }
  if (!acceptsNewRow(*this, z)) return;
  appendRow(*this, z, a, b, c);
}

void cls_DmtTEST::addCReading(float z, float c, bool overwrite) {
  const auto reading = toInt16(c);
  if (!reading) return;
  const int16_t row = isZCollision(z);
  if (row >= 0) {
    if (overwrite) vC[static_cast<size_t>(row)] = *reading;
    return;
  }
  if (!acceptsNewRow(*this, z)) return;
  appendRow(*this, z, 0, 0, *reading);
}

float cls_DmtTEST::lastAValue() const { return vA.empty() ? 0.0f : static_cast<float>(vA.back() / 100.0); }

float cls_DmtTEST::averageAValue() const {
  // Stays in kPa, unlike lastAValue: the acquisition compares it with its own threshold.
  if (vA.empty()) return 0.0f;
  int64_t sum = 0;
  for (int16_t a : vA) sum += a;
  return static_cast<float>(static_cast<double>(sum) / static_cast<double>(vA.size()));
}

float cls_DmtTEST::CReadingPercentAge() const {
  if (strFormat.find('C') == std::string::npos || vC.empty()) return 0.0f;
  const auto withC = std::count_if(vC.begin(), vC.end(), [](int16_t c) { return c != 0; });
  return static_cast<float>(static_cast<double>(withC) / static_cast<double>(vC.size()));
}

void cls_DmtTEST::setRecommendedCalibrationValues(const CalibrationFigures& calibration) {
  intDeltaA = toDelta(calibration.averageDeltaA, intDeltaA);
  intDeltaB = toDelta(calibration.averageDeltaB, intDeltaB);
  if (vZ.empty()) {
    vBadRows.clear();
    return;
  }

  const int atAverages = countBadRows(*this, intDeltaA, intDeltaB);
  if (atAverages > 0) {
    intDeltaA = clampToInt16(calibration.minDeltaA);
    intDeltaB = clampToInt16(calibration.minDeltaB);
    const int atMinima = countBadRows(*this, intDeltaA, intDeltaB);
    if (atMinima < atAverages) {
      const int fromA = intDeltaA, toA = clampToInt16(calibration.maxDeltaA);
      const int fromB = intDeltaB, toB = clampToInt16(calibration.maxDeltaB);
      const double pairs = static_cast<double>(std::max(toA - fromA + 1, 0)) * std::max(toB - fromB + 1, 0);
      const auto rowsJudged = std::count_if(vA.begin(), vA.end(), [](int16_t a) { return a != 0; });
      if (pairs > 0 && pairs * static_cast<double>(std::max<std::ptrdiff_t>(rowsJudged, 1)) <= kSearchBudget) {
        // The first pair met with the fewest bad rows wins: deltaA outer, deltaB inner, rising.
        int best = std::numeric_limits<int>::max();
        int bestA = fromA, bestB = fromB;
        for (int da = fromA; da <= toA && best > 0; ++da) {
          for (int db = fromB; db <= toB && best > 0; ++db) {
            const int bad = countBadRows(*this, da, db, best);
            if (bad < best) {
              best = bad;
              bestA = da;
              bestB = db;
            }
          }
        }
        intDeltaA = static_cast<int16_t>(bestA);
        intDeltaB = static_cast<int16_t>(bestB);
      }
    }
  }
  recordBadRows(*this);
}

}  // namespace koru
