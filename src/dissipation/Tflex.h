#pragma once
// The numerical core of the Tflex interpretation: the 4 by 4 least-squares system of a cubic and
// its solution by Gaussian elimination with complete pivoting. The cubic gives log10 of the time
// (minutes) as a function of x = A / 100 (A in kPa): the pressure is the independent variable,
// because that is how the readings have always been fitted, and the flex is the flex of y(x).

#include <array>
#include <cstddef>

namespace koru {

using Matrix4 = std::array<std::array<double, 4>, 4>;
using Vector4 = std::array<double, 4>;

// How a `calculate` run ended. Only `Computed` touches the flex results; every other outcome
// leaves FlexT, FlexA and isGoodFlex as they were, and the caller decides what to show.
enum class TflexStatus {
  Computed,        // coefficients, flex and verdict are fresh
  TooFewReadings,  // fewer than 4 readings: nothing computed, coefficients 0
  SingularSystem,  // the normal equations have no unique solution (e.g. every A the same)
  ZeroCubicTerm,   // a3 came out exactly 0: the cubic has no flex (xf = -a2 / 0)
  NumericFault,    // a coefficient or the flex lies beyond the range of a 32-bit float
};

// Swaps rows r1 and r2 of the matrix and of the right-hand side.
void swapRow(Matrix4& m, Vector4& b, size_t r1, size_t r2);
// Swaps columns c1 and c2 of the matrix and the matching entries of the permutation.
void swapCol(Matrix4& m, std::array<size_t, 4>& p, size_t c1, size_t c2);

// Solves m x = b by elimination with complete pivoting in double precision: at each step the
// element of greatest magnitude in the remaining block becomes the pivot (on a tie the first met
// scanning rows, then columns). False, with x untouched, when a pivot is zero or a value is not
// finite.
bool solveLS(const Matrix4& m, const Vector4& b, Vector4& x);

}  // namespace koru
