#pragma once
// The thrust extension of a DMT sounding: the data of the rods and the blade, the file
// Thrust.dat that keeps them beside the .dat file with the thrust measured at each depth, and
// the formulas that turn a row's thrust into the friction angle, Ko and OCR of a sand.
//
// Thrust.dat, Windows-1252 text, CR LF (LF is read as well):
//   DRILLED ROD TYPE = OTHER                  one "KEY = value" line per field of RodData
//   ...
//   THRUST UNITS = kg
//                                             a line without "=" ends the head
//   Z = 1.20, TH = 850                        one line per row with a thrust above 0
//
// Where the rod data live: each cls_DmtTEST carries its own RodData (member `rodData`), read
// and written with its Thrust.dat. Keeping it with the test rather than program-wide means that
// loading a second sounding never changes the rods under the first one's results.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "dmt/DMTOptions.h"
#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"

namespace koru {

// The rods and the blade that pushed the dilatometer, as the thrust was measured with them.
struct RodData {
  std::string strRodType = "OTHER";
  float sngRodDiameter = 3.7f;      // cm
  float sngRodWeight = 6.5f;        // kgf per metre of rods
  float sngReducerDiameter = 4.8f;  // cm, the friction reducer above the blade
  float sngRatioDelPhi = 0.5f;      // soil-blade friction angle over the soil's friction angle
  float sngBladeThickness = 13.7f;  // mm
  float sngBladeWidth = 94.0f;      // mm
  std::string strThrustUnits = "kg";

  // What adding thrust data to a test puts in (the member defaults above).
  static RodData addThrustDefaults() { return RodData{}; }
  // What the default button of the blade-and-rods dialog puts in. It differs from the values of
  // addThrustDefaults in the blade width, 96 mm against 94 mm; both have been in use for years
  // and files were written with either, so neither is changed to match the other.
  static RodData dialogDefaults() {
    RodData rod;
    rod.sngBladeWidth = 96.0f;
    return rod;
  }
};

// The five thrust fields of the interpretation options: what a test with thrust data sets
// (Phi from thrust, Phi from Id 1.2, Ko from thrust from Id 1.2, OCR from Ko and Phi) and what
// removing the data puts back.
void setThrustOptions(DMTOptions& options);
void resetThrustOptions(DMTOptions& options);

// --- Thrust.dat ----------------------------------------------------------------------------

// The bytes of Thrust.dat for the rod data and the rows (depths and thrusts, same length);
// rows whose thrust is not above 0 are left out.
std::string thrustFileText(const RodData& rod, const std::vector<float>& depths, const std::vector<float>& thrusts);

// Reads the bytes of a Thrust.dat against the depths of a test's rows. The head's keys fill
// `rod` (unknown keys are passed over); `thrusts` becomes one value per depth, 0 where the file
// has none. Each row line is matched to a row by a pointer walking up or down from where the
// last match left it; depths match within 0.005 m.
//
// The reading ends quietly at a thrust not above 0: Complete. It ends as Partial, with the line
// and reason in `why` (`file` naming the file), at a row line that can't be read, or at a depth
// that no row matches (then `leftRows`, if given, is set). Whatever was read before the end is
// kept either way.
LoadResult parseThrustText(std::string_view bytes, const std::filesystem::path& file, const std::vector<float>& depths,
                           RodData& rod, std::vector<float>& thrusts, bool* leftRows = nullptr);

// --- From thrust to soil parameters --------------------------------------------------------

// The axisymmetric friction angle (degrees) that the thrust of one row needs, or 0 if no angle
// between 25 and 42 degrees balances it. z in metres, thrust in the rods' units (kgf),
// sigmaBar, uoBar and poBar the row's effective vertical stress, pore pressure and Po in bar.
// Kd gives the sand's Ko, which sets the shear above the blade's failure zone; Id travels with
// the row unused. See Thrust.cpp for the force balance and the publications it follows.
double solveThrustPhi(double z, double thrust, double sigmaBar, double kd, double id, double uoBar, double poBar,
                      const RodData& rod);

// Plane-strain friction angle (degrees) from the axisymmetric angle `phi` (degrees) at the
// vertical effective stress `sigmaBar` (bar); 0 when phi is not positive.
double thrustPhiPlane(double sigmaBar, double phi);

// Ko of a sand from the thrust angle `phi` (degrees); 0 unless Id >= 1.2 and phi > 0.
double thrustK0(float id, double kd, double phi);

}  // namespace koru
