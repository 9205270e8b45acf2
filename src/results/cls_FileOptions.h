#pragma once
// The read-only view of one vertical that plots, listings, reports and the statistics work from
// (a view, not a set of options, whatever the name says). It holds the vertical's DMT test, its
// dissipation tests and its seismic results by seismic depth, and answers for a parameter code
// the vectors to plot and the depths that go with them, so a graph can mix DMT and seismic
// parameters without knowing where they come from. At each Vs depth it joins the two: the DMT
// parameters there and the ratios of G0 to Ed and to M.
//
// Units: depths m, velocities m/s, G0 MPa, density t/m3, Ed and M MPa. A 0 is "no value", as
// everywhere in the program. Every seismic vector is parallel to its depth vector (VZVs or
// VZVp). Nothing here throws; a view that could not be filled in full says so and shows what
// it could.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dissipation/cls_Dissipations.h"
#include "dmt/DMTOptions.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/TestHeader.h"
#include "dmt/cls_U.h"
#include "frame/Diagnostic.h"
#include "seismic/cls_VTEST.h"

namespace koru {

class cls_VERTICAL;

// What a view is made from: the tests of a vertical, given one by one so that a view can be
// built from tests that a cls_VERTICAL does not (yet) hold. Pointers only need to live during
// initializeFromPalmiro: the view copies what it keeps.
struct VerticalSources : TestHeader {
  std::string strVertName;
  std::string strGPS;
  float sngZw = 3.0f;    // m, water table of the vertical
  float sngZabs = 0.0f;  // m, elevation of the top

  const cls_DmtTEST* dmt = nullptr;  // as read from its file; the view evaluates its own copy
  cls_GAMMA gamma;                   // the profiles the DMT test is evaluated with
  cls_U u;
  const cls_VTEST* vsTest = nullptr;  // true-interval tests, their indices read
  const cls_VTEST* vpTest = nullptr;
  const cls_Dissipations* dissipations = nullptr;
  // Unit weight (kN/m3) at a depth for the density and G0. Empty: the gamma profile above,
  // which in its chart modes follows the evaluated DMT test.
  UnitWeightAt unitWeightAt;
};

class cls_FileOptions : public TestHeader {
 public:
  // --- Header of the vertical ------------------------------------------------------------
  std::string strVertName;
  std::string strGPS;
  float Zw = 3.0f;       // m, water table
  float sngZabs = 0.0f;  // m, elevation of the top; elevations are sngZabs - depth

  // --- Report choices (setDefaultReportBooleans) -----------------------------------------
  bool blnTabularDMT = false;
  int16_t intCodTabularDMT = 0;  // 0 field data only, 1 interpretation (with field data)
  bool blnTabVsVert = false;
  int16_t intCodTabularVs = 2;   // listing kind: 1 "Vs & DMT", 2 "Vs"
  bool blnTabVpVert = false;
  bool blnSismVsVert = false;
  bool blnSismVpVert = false;

  // --- Tests -------------------------------------------------------------------------------
  cls_DmtTEST dmt;  // evaluated; no rows when the vertical has no DMT test
  std::optional<cls_Dissipations> dissipations;
  cls_GAMMA gamma;  // the profiles dmt was evaluated with, for refreshDMTElab
  cls_U u;

  // --- Seismic results by depth ------------------------------------------------------------
  std::vector<float> VZVs, VZVp;  // m
  std::vector<float> vVs, Vp;     // mean velocity of each depth, m/s
  // The two readings of each depth: the velocities of its first and second good strike (the
  // two strike directions), 0 where the depth has none.
  std::vector<float> Vs1, Vs2, vP1, vP2;
  // Scatter of the good velocities of a depth: as a percentage of the mean (the test's devStd,
  // what tables and graphs call repeatability), and in m/s. Both -1 where fewer than two
  // velocities count.
  std::vector<float> VsRepeatability, VpRepeatability;
  std::vector<float> vDevStdVs, vDevStdVp;
  std::vector<float> vRho;  // t/m3 at Vs depths
  std::vector<float> vG0;   // MPa at Vs depths
  std::vector<float> vIdVs, vEdVs, vMVs, vKdVs;  // DMT values at Vs depths, 0 beyond the DMT test
  std::vector<float> vG0EdVs, vG0MVs;            // G0 / Ed, G0 / M; 0 where Ed (M) is not above 0

  // --- Plot vectors ------------------------------------------------------------------------
  // The values of a parameter code, taken in any case: one vector for most codes, two for
  // "P0P1" (Po, P1) and "P2U0" (P2, Uo), four for "U0P2P0P1" (Uo, Po, P1, P2). Note that "ID"
  // gives log Id, the form its box is drawn in. An unknown code gives no vector.
  std::vector<std::vector<float>> getPlotVector(std::string_view code) const;
  // The depths that go with a code: VZVs for "VS", "VS1", "VS2" and "G0", VZVp for "VP",
  // "VP1" and "VP2", the DMT test's depths for any other code.
  std::vector<float> ZVector(std::string_view code) const;

  // --- Depth extremes ----------------------------------------------------------------------
  // First and last depth at which each reading has a value; 0 when it has none.
  float minVecZVs1() const;
  float minVecZVs2() const;
  float maxVecZVs1() const;
  float maxVecZVs2() const;
  float minVecZVP1() const;
  float minVecZVP2() const;
  float maxVecZVP1() const;
  float maxVecZVP2() const;
  // The vertical's top and bottom over the DMT test and both seismic tests, as depths and as
  // elevations (sngZabs - depth). 0 depth when the view holds no depth at all.
  float ZTopDepth() const;
  float ZTopAbs() const;
  float ZBottomDepth() const;
  float ZBottomAbs() const;

  // --- What the vertical holds -------------------------------------------------------------
  bool isDMT() const;     // a DMT test with at least one row
  bool isVs() const;      // a Vs depth with a velocity
  bool isVp() const;      // a Vp depth with a velocity
  bool isDissip() const;  // a dissipation test with at least one reading

  // --- Filling -----------------------------------------------------------------------------
  // Fills the view: header, the DMT test evaluated with the profiles and options (the thrust
  // fields following the test's thrust data, DMTOptions::forTest), the seismic
  // vectors from the true-interval tests, density and G0 from the unit weight, and the DMT
  // values and ratios at the Vs depths. The report choices are left as they are. False when
  // something could not be used in full; the reasons go to `problems`, the rest is filled.
  bool initializeFromPalmiro(const VerticalSources& sources, const DMTOptions& options,
                             std::vector<Diagnostic>* problems = nullptr);
  // The same from a vertical, reading what it has not loaded from its files: the DMT test
  // always from its file (as the graph shows what is saved), the seismic tests from their
  // index files, the dissipation tests from the vertical if loaded, else from their folder.
  bool initializeFromPalmiro(const cls_VERTICAL& vertical, const DMTOptions& options,
                             std::vector<Diagnostic>* problems = nullptr);

  // Reads a list of Vs depths from a text file: one depth in metres per line, "." as decimal
  // point, blanks around it ignored; empty lines and lines whose first character that is not a
  // blank is "#" are skipped; CR LF or LF line ends; a UTF-8 mark at the start is ignored. A line that is not a depth (not a number,
  // negative or not finite) ends the reading: false, with the line in `why`, and the depths
  // read before it in `depths`. False too when the file cannot be read.
  static bool parseZVsfromTextfile(const std::filesystem::path& path, std::vector<float>& depths,
                                   Diagnostic* why = nullptr);

  // The default report sections: the interpretation listing when there is a DMT test; the Vs
  // listing ("Vs & DMT" with a DMT test, "Vs" without) and the Vs seismograms with Vs data;
  // the Vp listing with Vp data; every dissipation test with readings. The Vp pages are
  // pseudo-interval pictures, which this view does not carry: they stay off.
  void setDefaultReportBooleans();
  // A results graph of this vertical would show something.
  bool blnGraphHasSense() const;
  // A report of this vertical would show something (dissipation listings too).
  bool blnReportHasSense() const;
  // Evaluates the DMT test again (after the options changed) and with it the DMT values and
  // ratios at the Vs depths. Nothing without a DMT test. False when a row failed.
  bool refreshDMTElab(const DMTOptions& options);

 private:
  void clearData();
  // vIdVs ... vG0MVs from dmt at the Vs depths.
  void fillDmtAtVsDepths();
};

}  // namespace koru
