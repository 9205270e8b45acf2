// Evaluation of a DMT sounding: readings to intermediate and interpreted parameters, row by row
// from the top (the vertical stress of a row builds on the rows above it).
//
// Every row value lives in a 32-bit float between steps, as the results have always been
// computed; a single formula runs in double and is stored back to float through `single`, which
// refuses anything that does not fit. A refused value ends the run at that row, like an
// arithmetic overflow would, so that nothing infinite or undefined reaches a result vector.

#include <cmath>
#include <limits>
#include <stdexcept>

#include "dmt/SoilChart.h"
#include "dmt/Thrust.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "frame/Numbers.h"

namespace koru {

namespace {

constexpr double kGravity = 9.81;

struct RowFailure : std::runtime_error {
  RowFailure() : std::runtime_error("value out of range") {}
};

// Stores one formula's result as a float; a value that a float can't hold ends the row.
float single(double value) {
  if (!std::isfinite(value) || std::fabs(value) > std::numeric_limits<float>::max()) throw RowFailure();
  return static_cast<float>(value);
}

// Kd ^ n, where a failing power (0 to a negative power, NaN) ends the row.
double power(double base, double exponent) {
  const double r = std::pow(base, exponent);
  if (!std::isfinite(r)) throw RowFailure();
  return r;
}

double lnChecked(double x) {
  if (!(x > 0)) throw RowFailure();
  return std::log(x);
}

// A record whose columns are shorter than its row count ends the evaluation at that row.
template <typename T>
T rowValue(const std::vector<T>& v, int row) {
  if (row < 0 || static_cast<size_t>(row) >= v.size()) throw RowFailure();
  return v[static_cast<size_t>(row)];
}

template <typename T>
T valueOrZero(const std::vector<T>& v, int row) {
  return row >= 0 && static_cast<size_t>(row) < v.size() ? v[static_cast<size_t>(row)] : T{};
}

}  // namespace

bool cls_DmtTEST::evalDMT(const cls_GAMMA& gammaProfile, const cls_U& uProfile, const DMTOptions& o) {
  const int n = N();
  if (n < 1) return true;

  const bool useGammaProfile = gammaProfile.Method() == 2;
  const bool useUProfile = uProfile.Method() == 1;
  blnHasC = false;

  bool ok = true;
  try {
    const size_t size = static_cast<size_t>(n);
    for (auto* v : {&vecPo, &vecP1, &vecP2, &vecGamma, &vecSigmaEff, &vecSigmaV, &vecSigmah, &vecUo, &vecUd, &vecId,
                    &vecLogId, &vecEd, &vecKd, &vecKo, &vecOCR, &vecM, &vecCu, &vecPhi, &vecDMTVs})
      v->assign(size, 0.0f);
    vecCODREAD.assign(size, 0);
    vecSoilType.assign(size, 0);

    float sigmaV = 0;
    float prevGamma = 0;
    for (int i = 0; i < n; ++i) {
      const float z = rowValue(vZ, i);
      const int16_t a = rowValue(vA, i);
      int16_t b = rowValue(vB, i);
      const int16_t c = rowValue(vC, i);
      float po = 0, p1 = 0, p2 = 0, uo = 0, ud = 0, id = 0, ed = 0, kd = 0, ko = 0, sigmaH = 0, ocr = 0, m = 0,
            cu = 0, phi = 0, gamma = 0;
      int16_t soilCode = 0;

      // 1. Reading code: a B not above A is no B.
      if (b < a) b = 0;
      if (a == 0) b = 0;
      int16_t code = 0;
      if (a != 0 && b != 0) code = 100;
      else if (a != 0) code = 50;

      // 2. Pore pressure.
      if (useUProfile) uo = single(uProfile.getUz(z));
      else uo = single(Max(0.0, (static_cast<double>(z) - sngZw) * o.sngGammaWater * kGravity));

      // 3. Po, corrected by the membrane stiffness unless the feeler correction is off.
      const float aCorr = single(static_cast<double>(a) - sngZMAB + intDeltaA + sngZMCal);
      const float bCorr = single(static_cast<double>(b) - sngZMAB - intDeltaB + sngZMCal);
      if (code == 100) {
        po = single(Max(static_cast<double>(sngCoefA) * aCorr - static_cast<double>(sngCoefB) * bCorr, 0.6 * aCorr));
        if (po < uo) po = single(static_cast<double>(uo) + 0.11);
      }
      if (code != 100 || !o.blnFeeler) po = aCorr;
      if (po < 0) po = 0;
      if (code == 0) po = 0;

      // 4. P1.
      if (code == 100) p1 = bCorr;

      // 5. P2 and the pore pressure index.
      if (c != 0) {
        blnHasC = true;
        p2 = single(static_cast<double>(c) - sngZMC + intDeltaA + sngZMCal);
        if (a != 0 && po != uo) ud = single((static_cast<double>(p2) - uo) / (static_cast<double>(po) - uo));
      }

      // 6. Material index and dilatometer modulus.
      if (po != 0 && code == 100) {
        const double spread = static_cast<double>(po) - uo;
        id = spread > 0.1 ? single((static_cast<double>(p1) - po) / spread) : 0.0f;
        if (id <= 0) id = 0.001f;
        id = Min(99.9f, id);
        ed = single((static_cast<double>(p1) - po) * factorEd() / 1000.0);
        ed = Max(0.0f, ed);
        ed = Min(999.9f, ed);
      }

      // 7 and 8. Soil code, unit weight and the total vertical stress. The first row carries the
      // soil above it at the top unit weight (and any water standing above the ground); the
      // others add the previous row's unit weight over the depth step.
      const auto classify = [&] {
        if (po > 0.1f && code == 100) {
          soilCode = soilChartCode(id, ed);
          gamma = useGammaProfile ? single(gammaProfile.getYz(z))
                                  : single(kGravity * soilChartUnitWeight(soilCode));
        }
      };
      if (i == 0) {
        sigmaV = single(static_cast<double>(Zi()) * sngGammaTop);
        if (sngZw < 0) sigmaV = single(sigmaV - static_cast<double>(sngZw) * o.sngGammaWater * kGravity);
        classify();
      } else {
        classify();
        // The water density multiplies the total unit weight as it stands, scaling the column.
        if (blnZEditable)
          sigmaV = single(sigmaV + (static_cast<double>(z) - rowValue(vZ, i - 1)) * prevGamma * o.sngGammaWater);
        else
          sigmaV = single(sigmaV + static_cast<double>(prevGamma) * o.sngGammaWater * sngDeltaZ);
      }

      // 9. Effective stress.
      const float sigmaEff = single(static_cast<double>(sigmaV) - uo);

      // 10. Horizontal stress index, Ko and the horizontal stress.
      if (code > 0) {
        if (sigmaEff > 0.01f) kd = single((static_cast<double>(po) - uo) / sigmaEff);
        if (kd < 0) kd = 0.01f;
        kd = Min(99.9f, kd);
        ko = 0;
        if (id <= o.sngIdLimit) {
          ko = single(o.sngK0M * power(kd, o.sngK0N) + o.sngK0K);
          ko = Max(0.3f, ko);
          sigmaH = single(static_cast<double>(sigmaEff) * ko);
        }
      }

      // The thrust step: the axisymmetric friction angle that balances the row's thrust (0 where
      // none does, or the row has no thrust). Solving it takes a search, so it runs at most once
      // a row and only where Phi, Ko or OCR ask for it.
      double thrustAngle = 0;
      bool thrustSolved = false;
      const auto thrustPhi = [&]() -> double {
        if (!thrustSolved) {
          thrustAngle = solveThrustPhi(z, valueOrZero(vTH, i), sigmaEff / 100.0, kd, id, uo / 100.0, po / 100.0,
                                       rodData);
          thrustSolved = true;
        }
        return thrustAngle;
      };

      // 11. OCR, constrained modulus, undrained strength or friction angle.
      if (code == 100) {
        if (id <= o.sngIdLimit) {
          ocr = single(o.sngOCRM * power(kd, o.sngOCRN) + o.sngOCRK);
          if (ocr > 0.01f && ocr < 0.8f) ocr = 0.8f;
          ocr = Min(99.9f, ocr);
        }

        if (kd > 0) {
          float rm = 0;
          const double lnKd = lnChecked(kd);
          if (id <= 0.6f) rm = single(0.14 + 1.024948 * lnKd);
          if (id >= 3.0f) rm = single(0.5 + 0.8686 * lnKd);
          if (id > 0.6f && id < 3.0f) {
            const float r = single(0.14 + 0.15 * (static_cast<double>(id) - 0.6));
            rm = single(r + (2.5 - r) * 0.4343 * lnKd);
          }
          if (kd > 10) rm = single(0.32 + 0.946774 * lnKd);
          rm = Max(0.85f, rm);
          if (o.blnRmPersonal) rm = single(o.sngRMM * power(kd, o.sngRMN) + o.sngRMK);
          m = single(static_cast<double>(ed) * rm);
          m = Min(999.9f, m);
          if (m < 0.01f) m = 0;
        }
        if (kd <= 0) m = 0;

        if (id <= o.sngIdLimit) {
          cu = single(o.sngCuM * static_cast<double>(sigmaEff) * power(kd, o.sngCuN) + o.sngCuK);
          if (cu < 0) cu = 0.01f;
          if (id == 0) cu = 0;
          cu = Min(9990.0f, cu);
        } else if (id >= o.sngPhiIdMin) {
          if (o.intPhiMethod == 0) {
            if (kd > 0.5f && kd < 99.0f) {
              const double l = 0.4343 * lnChecked(kd);
              phi = single(28.0 + 14.6 * l - 2.1 * l * l);
            }
          } else if (o.intPhiMethod == 1) {
            phi = single(thrustPhiPlane(sigmaEff / 100.0, thrustPhi()));
          }
        }

        if (o.blnK0Thrust && id >= o.sngK0ThrustIdMin) ko = single(thrustK0(id, kd, thrustPhi()));
      }

      // 12. OCR of sands from Ko and the thrust angle.
      if (o.intOCRThrust == 1 && o.intPhiMethod == 1) {
        if (id >= 1.2f) {
          ocr = 0;
          const double angle = thrustPhi();
          if (angle > 5 && angle <= 65 && ko > 0) {
            const double f = angle <= 32 ? angle : angle - (angle - 32) / 3;
            const double s = std::sin(f * 3.1416 / 180.0);
            ocr = single(power(ko / (1.0 - s), 1.25 / s));
          }
        } else {
          ocr = single(power(0.5 * kd, 1.56));
        }
        ocr = Max(0.0f, ocr);
      }

      // 13. Filters.
      bool filtered = false;
      if (po >= p1) {
        p1 = 0;
        filtered = true;
      }
      if (o.sngFilterId > 0 && id < o.sngFilterId) filtered = true;
      if (o.sngFilterEd > 0 && ed < o.sngFilterEd) filtered = true;
      if (o.sngFilterKd > 0 && kd < o.sngFilterKd) filtered = true;
      if (o.sngFilterOCR > 0 && ocr > 0 && ocr < o.sngFilterOCR) filtered = true;
      if (filtered) id = ed = ocr = kd = ko = sigmaH = m = cu = phi = 0;

      // 14. Store. Everything is computed before the first store, so a failing row leaves none.
      float logId = 0;
      if (id > 0.1f && id < 99.9f) logId = single(2.5 + 1.08575 * std::log(static_cast<double>(id)));
      const float sigmaVStored = single(static_cast<double>(sigmaEff) + uo);
      const float ocrStored = single(static_cast<double>(o.sngFactorOCR) * ocr);
      float idStored = id;
      // Po hardly above Uo: the index would only measure the noise of the two.
      if (uo != 0 && std::fabs(static_cast<double>(po) / uo) < 1.05) idStored = logId = 0;

      const size_t r = static_cast<size_t>(i);
      vecGamma[r] = gamma;
      vecSigmaEff[r] = sigmaEff;
      vecEd[r] = ed;
      vecUo[r] = uo;
      vecId[r] = idStored;
      vecLogId[r] = logId;
      vecUd[r] = ud;
      if (!filtered) vecSoilType[r] = soilCode;
      vecKd[r] = kd >= 99.9f ? 100.0f : kd;
      vecKo[r] = ko;
      vecSigmah[r] = sigmaH;
      vecSigmaV[r] = sigmaVStored;
      vecOCR[r] = ocrStored;
      vecM[r] = m;
      vecCu[r] = cu;
      vecPhi[r] = phi > 0 ? phi : 0.0f;
      vecPo[r] = po;
      vecP1[r] = p1;
      vecP2[r] = p2;
      vecCODREAD[r] = code;
      prevGamma = gamma;
    }
  } catch (const RowFailure&) {
    ok = false;
  }

  calculateRealEdIdUd(o);
  return ok;
}

void cls_DmtTEST::calculateRealEdIdUd(const DMTOptions&) {
  const int n = N();
  if (n < 1) return;
  try {
    const size_t size = static_cast<size_t>(n);
    vecIdReal.assign(size, 0.0f);
    vecEdReal.assign(size, 0.0f);
    vecUdReal.assign(size, 0.0f);

    sngMinEd = 0;
    sngMinEdRow = -1;
    sngMinId = 0;
    sngMinIdRow = -1;
    for (size_t i = 0; i < vecEd.size() && i < size; ++i)
      if (vecEd[i] != 0) {
        sngMinEd = vecEd[i];
        sngMinEdRow = static_cast<float>(i);
        break;
      }
    for (size_t i = 0; i < vecId.size() && i < size; ++i)
      if (vecId[i] != 0) {
        sngMinId = vecId[i];
        sngMinIdRow = static_cast<float>(i);
        break;
      }
    blnUdOutOfRange = false;

    for (int i = 0; i < n; ++i) {
      float ed = 0, id = 0, ud = 0;
      const int16_t a = rowValue(vA, i);
      if (a != 0) {
        const int16_t b = rowValue(vB, i);
        const int16_t c = rowValue(vC, i);
        const float uo = valueOrZero(vecUo, i);
        const float aCorr = single(static_cast<double>(a) - sngZMAB + intDeltaA + sngZMCal);
        float po = aCorr;
        if (b > 0) {
          const float bCorr = single(static_cast<double>(b) - sngZMAB - intDeltaB + sngZMCal);
          po = single(Max(static_cast<double>(sngCoefA) * aCorr - static_cast<double>(sngCoefB) * bCorr, 0.6 * aCorr));
          const float p1 = bCorr;
          ed = single((static_cast<double>(p1) - po) * factorEd() / 1000.0);
          if (po != uo) id = single((static_cast<double>(p1) - po) / (static_cast<double>(po) - uo));
        }
        if (c != 0) {
          const float p2 = single(static_cast<double>(c) - sngZMC + intDeltaA + sngZMCal);
          if (po != uo) {
            ud = single((static_cast<double>(p2) - uo) / (static_cast<double>(po) - uo));
            if (ud > 1.2f || ud < -0.3f) blnUdOutOfRange = true;
          }
        }
        if (b > 0) {
          if (ed < sngMinEd) {
            sngMinEd = ed;
            sngMinEdRow = static_cast<float>(i);
          }
          if (id < sngMinId) {
            sngMinId = id;
            sngMinIdRow = static_cast<float>(i);
          }
        }
      }
      const size_t r = static_cast<size_t>(i);
      vecEdReal[r] = ed;
      vecIdReal[r] = id;
      vecUdReal[r] = ud;
    }
  } catch (const RowFailure&) {
    // A failing row leaves it and the rows below at 0.
  }
}

// --- Row access ----------------------------------------------------------------------------

float cls_DmtTEST::getGammai(int row) const { return valueOrZero(vecGamma, row); }
float cls_DmtTEST::getEdReal(int row) const { return valueOrZero(vecEdReal, row); }
float cls_DmtTEST::getIdReal(int row) const { return valueOrZero(vecIdReal, row); }
float cls_DmtTEST::getUdReal(int row) const { return valueOrZero(vecUdReal, row); }
int16_t cls_DmtTEST::getSoilType(int row) const { return valueOrZero(vecSoilType, row); }

// --- Values by depth -----------------------------------------------------------------------

namespace {

// The value of `values` at depth z: the row's own value on a row, the linear interpolation
// between the two rows around z, and above the first or below the last row that row's value
// only within `tolerance` of it; 0 elsewhere.
float valueAtDepth(const std::vector<float>& depths, const std::vector<float>& values, float z, float tolerance) {
  const size_t n = Min(depths.size(), values.size());
  if (n == 0) return 0;
  const auto near = [&](size_t i) { return std::fabs(z - depths[i]) <= tolerance; };
  if (n == 1) return near(0) ? values[0] : 0.0f;
  for (size_t i = 0; i < n; ++i) {
    if (z > depths[i]) continue;
    if (z == depths[i]) return values[i];
    if (i == 0) return near(0) ? values[0] : 0.0f;
    const double z0 = depths[i - 1], z1 = depths[i], v0 = values[i - 1], v1 = values[i];
    const double r = v0 + (z - z0) / (z1 - z0) * (v1 - v0);
    return std::isfinite(r) && std::fabs(r) <= std::numeric_limits<float>::max() ? static_cast<float>(r) : 0.0f;
  }
  return near(n - 1) ? values[n - 1] : 0.0f;
}

}  // namespace

float cls_DmtTEST::getMFromZ(float z) const { return valueAtDepth(vZ, vecM, z, 0.5f); }
float cls_DmtTEST::getEdFromZ(float z) const { return valueAtDepth(vZ, vecEd, z, 0.5f); }
float cls_DmtTEST::getIdFromZ(float z) const { return valueAtDepth(vZ, vecId, z, 0.5f); }
float cls_DmtTEST::getKdFromZ(float z) const { return valueAtDepth(vZ, vecKd, z, 0.5f); }
float cls_DmtTEST::getOCRFromZ(float z) const { return valueAtDepth(vZ, vecOCR, z, 0.5f); }
float cls_DmtTEST::getSigmaEffVFromZ(float z) const { return valueAtDepth(vZ, vecSigmaEff, z, 0.11f); }
float cls_DmtTEST::getKoFromZ(float z) const { return valueAtDepth(vZ, vecKo, z, 0.5f); }
float cls_DmtTEST::getMhFromZ(float z) const {
  const double mh = static_cast<double>(getKoFromZ(z)) * getMFromZ(z);
  return std::fabs(mh) <= std::numeric_limits<float>::max() ? static_cast<float>(mh) : 0.0f;
}

}  // namespace koru
