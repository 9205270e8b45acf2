// Tflex interpretation of a dissipation test: a least-squares cubic of log10(t) against
// x = A / 100, its flex, the checks that say whether the flex can be trusted, and Ch, Kh and
// Po,final from it, with the texts that show them.
//
// Method: the A(log t) curve of a dissipation has one point of contraflexure; its time Tflex
// gives Ch = 7 cm^2 / Tflex. Fitting log t as a cubic of A and taking the cubic's own flex
// (y'' = 0 at x = -a2 / (3 a3)) finds it without choosing a time window.

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <utility>

#include "dissipation/FormatPower.h"
#include "dissipation/cls_DissTEST.h"
#include "frame/Numbers.h"

namespace koru {

namespace {

const std::string kCrLf = "\r\n";

// The consolidation constant of the method, cm^2.
constexpr double kTflexConstant = 7.0;

std::string padLeft(std::string text, size_t width) {
  if (text.size() < width) text.insert(0, width - text.size(), ' ');
  return text;
}

std::string general(float value) { return formatNumber(value, ""); }
std::string general(double value) { return formatNumber(value, ""); }

bool fitsFloat(double value) { return std::isfinite(value) && std::fabs(value) <= FLT_MAX; }

}  // namespace

void swapRow(Matrix4& m, Vector4& b, size_t r1, size_t r2) {
  std::swap(m[r1], m[r2]);
  std::swap(b[r1], b[r2]);
}

void swapCol(Matrix4& m, std::array<size_t, 4>& p, size_t c1, size_t c2) {
  for (auto& row : m) std::swap(row[c1], row[c2]);
  std::swap(p[c1], p[c2]);
}

bool solveLS(const Matrix4& m, const Vector4& b, Vector4& x) {
  Matrix4 a = m;
  Vector4 r = b;
  std::array<size_t, 4> p = {0, 1, 2, 3};
  for (size_t k = 0; k < 4; ++k) {
    size_t pivotRow = k, pivotCol = k;
    double best = -1.0;
    for (size_t i = k; i < 4; ++i)
      for (size_t j = k; j < 4; ++j)
        if (std::fabs(a[i][j]) > best) {
          best = std::fabs(a[i][j]);
          pivotRow = i;
          pivotCol = j;
        }
    // A zero pivot means the remaining block is all zero: no unique solution. A NaN never wins
    // the comparison, so a system of NaNs ends here too.
    if (!(best > 0.0) || !std::isfinite(best)) return false;
    if (pivotRow != k) swapRow(a, r, k, pivotRow);
    if (pivotCol != k) swapCol(a, p, k, pivotCol);
    for (size_t i = k + 1; i < 4; ++i) {
      const double f = a[i][k] / a[k][k];
      for (size_t j = k; j < 4; ++j) a[i][j] -= f * a[k][j];
      r[i] -= f * r[k];
    }
  }
  Vector4 z{};
  for (size_t k = 4; k-- > 0;) {
    double s = r[k];
    for (size_t j = k + 1; j < 4; ++j) s -= a[k][j] * z[j];
    z[k] = s / a[k][k];
  }
  Vector4 solution{};
  for (size_t k = 0; k < 4; ++k) {
    if (!std::isfinite(z[k])) return false;
    solution[p[k]] = z[k];
  }
  x = solution;
  return true;
}

TflexStatus cls_DissTEST::calculate() {
  a0 = a1 = a2 = a3 = 0;
  // The system is cleared as well, so that `test` never shows the matrix of an earlier fit.
  M = Matrix4{};
  b = Vector4{};
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vT_.size(), vA_.size()});
  if (n < 4) return TflexStatus::TooFewReadings;

  // A reading at time 0 stands at log10 t = 0, the same as one minute: the guarded logarithm
  // gives 0 there, and the reading is kept on purpose.
  std::vector<double> x(n), y(n);
  for (size_t i = 0; i < n; ++i) {
    x[i] = vA_[i] / 100.0;
    y[i] = log10Guarded(vT_[i]);
  }
  for (size_t r = 0; r < 4; ++r) {
    for (size_t c = 0; c < 4; ++c) {
      double sum = 0;
      for (size_t i = 0; i < n; ++i) sum += r + c == 0 ? 1.0 : std::pow(x[i], static_cast<double>(r + c));
      M[r][c] = sum;
    }
    double sum = 0;
    for (size_t i = 0; i < n; ++i) sum += y[i] * (r == 0 ? 1.0 : std::pow(x[i], static_cast<double>(r)));
    b[r] = sum;
  }

  Vector4 solution{};
  if (!solveLS(M, b, solution)) return TflexStatus::SingularSystem;
  for (double v : solution)
    if (!fitsFloat(v)) return TflexStatus::NumericFault;
  a0 = static_cast<float>(solution[0]);
  a1 = static_cast<float>(solution[1]);
  a2 = static_cast<float>(solution[2]);
  a3 = static_cast<float>(solution[3]);

  // A cubic without a cubic term has no flex: the caller decides what that means on screen.
  if (a3 == 0) return TflexStatus::ZeroCubicTerm;
  const double xfExact = -static_cast<double>(a2) / (3.0 * static_cast<double>(a3));
  if (!fitsFloat(xfExact)) return TflexStatus::NumericFault;
  const float xf = static_cast<float>(xfExact);
  const float flexA = xf * 100.0f;
  if (!std::isfinite(flexA)) return TflexStatus::NumericFault;
  const double xd = xf;
  const double v = a0 + a1 * xd + a2 * xd * xd + a3 * xd * xd * xd;
  if (!std::isfinite(v)) return TflexStatus::NumericFault;

  // The flex counts only between 0.01 and 1,000,000 minutes.
  if (v >= -2.0 && v <= 6.0) {
    FlexT = static_cast<float>(std::pow(10.0, v));
    FlexA = flexA;
  } else {
    FlexT = -1.0f;
    FlexA = -1.0f;
  }
  setIfGoodFlex();
  return TflexStatus::Computed;
}

float cls_DissTEST::b2minus4ac() const {
  const double twoA2 = 2.0 * a2;
  return static_cast<float>(twoA2 * twoA2 - 4.0 * (3.0 * a3) * a1);
}

float cls_DissTEST::mflex() const {
  if (a3 == 0) return 0.0f;
  const double a2sq = static_cast<double>(a2) * a2;
  const double threeA3 = 3.0 * a3;
  return static_cast<float>(a1 - (2.0 * a2sq) / threeA3 + a2sq / threeA3);
}

// The flex is trusted when it lies inside the readings in time and below the highest A, when
// y'(x) has no two real roots (the cubic is monotonic, so it has this one flex and no bends), and
// when it falls with pressure, that is, A falls with time. A slope of exactly 0 is not enough
// here, although the check text calls it OK: the verdict is the stricter of the two.
void cls_DissTEST::setIfGoodFlex() {
  isGoodFlex = MinT() < FlexT && FlexT < MaxT() && FlexA < MaxA() && b2minus4ac() <= 0 && mflex() < 0;
}

float cls_DissTEST::Po() const {
  if (N_ < 1 || vA_.empty() || !(BFinal > 0)) return 0.0f;
  const double aFinal = vA_[std::min(static_cast<size_t>(N_), vA_.size()) - 1];
  return static_cast<float>(1.05 * (aFinal - Zm + DeltaA) - 0.05 * (static_cast<double>(BFinal) - Zm - DeltaB));
}

std::string cls_DissTEST::strCh() const {
  if (!(FlexT > 0)) return "";
  return formatPower(kTflexConstant / (static_cast<double>(FlexT) * 60.0), 2);
}

std::string cls_DissTEST::ChMinutes() const {
  if (FlexT == 0) return "";
  return formatPower(kTflexConstant / static_cast<double>(FlexT), 3);
}

std::string cls_DissTEST::strKh() const {
  if (FlexT == 0 || Mh == 0) return "";
  return formatPower(kTflexConstant / (static_cast<double>(FlexT) * 60.0 * 10000.0 * static_cast<double>(Mh)), 2);
}

std::string cls_DissTEST::returnCoeff() const {
  constexpr size_t kWidth = 12;
  auto column = [](float v) { return padLeft(formatNumber(v, "0.#####"), kWidth); };
  return filename.string() + "   " + column(a0) + " " + column(a1) + " " + column(a2) + " " + column(a3) + " " +
         column(FlexT) + " (" + column(FlexA) + ")";
}

std::string cls_DissTEST::checkFlexSlope() const {
  if (N_ <= 3) return "No Slope" + kCrLf;
  const float slope = mflex();
  if (slope <= 0) return "OK, Flex has a non-positive slope.    (Slope Flex= " + general(slope) + ")" + kCrLf;
  if (b2minus4ac() <= 0) return "Bad Flex!! Slope is positive.    (Slope Flex= " + general(slope) + ")" + kCrLf;
  return "Bad Flex!! Slope is positive.    (Slope Flex= " + general(slope) + "  for Tflex = " + general(FlexT) + ")" +
         kCrLf;
}

std::string cls_DissTEST::checkOneFlex() const {
  if (N_ <= 3) return "No Solution" + kCrLf;
  const float root = b2minus4ac();
  if (root <= 0)
    return "OK, Cubic interpolation polynome has only one flex.    (root= " + general(root) + ")" + kCrLf;
  return "Bad Interpolation!! cubic interpolation polynome has more than one flex.    (root= " + general(root) + ")" +
         kCrLf;
}

std::string cls_DissTEST::test() const {
  constexpr size_t kMatrixWidth = 16;
  constexpr size_t kVectorWidth = 24;
  const float coeff[4] = {a0, a1, a2, a3};

  std::string out;
  out += TstName + "   " + formatNumber(Zd_, "00.00") + " m" + "      (file: " + filename.string() + ")" + kCrLf;
  out += kCrLf;
  out += "FILE DATA" + kCrLf + "---------" + kCrLf + strDisFile();
  out += kCrLf;
  out += "MATHEMATICHAL DATA" + kCrLf + "------------------" + kCrLf;
  out += kCrLf;
  out += "A" + kCrLf;
  for (size_t r = 0; r < 4; ++r) {
    for (size_t c = 0; c < 4; ++c) out += padLeft(formatNumber(M[r][c], "0.0#"), kMatrixWidth);
    if (r == 0) out += "   (Matrix of Least Square Method)";
    out += kCrLf;
  }
  out += kCrLf;
  out += "Tpol" + kCrLf;
  for (size_t r = 0; r < 4; ++r) {
    out += padLeft(general(b[r]), kVectorWidth);
    if (r == 0) out += "   (Note term of Least Square Method)";
    out += kCrLf;
  }
  out += kCrLf;
  out += "x" + kCrLf;
  for (size_t r = 0; r < 4; ++r) {
    out += padLeft(general(coeff[r]), kVectorWidth);
    if (r == 0) out += "   (Cubic coefficients of Polynomial Interpolation, solution of system A x = Tpol)";
    out += kCrLf;
  }
  out += kCrLf;
  out += "E = Tpol - A x" + kCrLf;
  for (size_t r = 0; r < 4; ++r) {
    double residual = b[r];
    for (size_t c = 0; c < 4; ++c) residual -= M[r][c] * static_cast<double>(coeff[c]);
    out += padLeft(general(residual), kVectorWidth);
    if (r == 0) out += "   (Residual Error)";
    out += kCrLf;
  }
  out += kCrLf;
  out += checkFlexSlope() + checkOneFlex();
  out += kCrLf;
  out += "TEST INTERPRETATION DATA" + kCrLf + "------------------------" + kCrLf;
  out += kCrLf;
  // The unit after TFlex has always read "sec" although the value is in minutes; printouts
  // compared side by side keep it.
  out += "TFlex = " + general(FlexT) + "  sec" + kCrLf;
  out += "Aflex = " + general(FlexA) + "  kPa" + kCrLf;
  out += "Ch = " + strCh() + "  cm2/sec" + "   ( = " + ChMinutes() + "  cm2/min )" + kCrLf;
  out += "Kh = " + strKh() + "  cm/sec" + kCrLf;
  return out;
}

float cls_DissTEST::MinA() const {
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vA_.size()});
  if (n == 0) return 0.0f;
  return *std::min_element(vA_.begin(), vA_.begin() + static_cast<std::ptrdiff_t>(n));
}

float cls_DissTEST::MaxA() const {
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vA_.size()});
  if (n == 0) return 0.0f;
  return *std::max_element(vA_.begin(), vA_.begin() + static_cast<std::ptrdiff_t>(n));
}

float cls_DissTEST::MinT() const {
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vT_.size()});
  if (n == 0) return 0.0f;
  return *std::min_element(vT_.begin(), vT_.begin() + static_cast<std::ptrdiff_t>(n));
}

float cls_DissTEST::MaxT() const {
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vT_.size()});
  if (n == 0) return 0.0f;
  return *std::max_element(vT_.begin(), vT_.begin() + static_cast<std::ptrdiff_t>(n));
}

}  // namespace koru
