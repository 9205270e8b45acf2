#pragma once
// The statistics of one vertical (or of a whole site): one cls_statVec for each parameter a
// results graph can show, and the rule that turns them into the top of a plot scale.

#include <string>
#include <string_view>
#include <vector>

#include "results/cls_statVec.h"

namespace koru {

class cls_FileOptions;

class cls_statVars {
 public:
  std::string verticalName;
  cls_statVec Po, P1, P2, sGamma, sSigmaEFF, sSigmaH, sSigmaV, Ed, Uo, Ud, Id, Kd, Ko, sOCR, M, Cu, sPhi;
  cls_statVec Vs, Vp, G0;

  // Takes the vertical's name from the view and feeds every vector: the DMT results in the
  // order above; with Vs data the velocities into Vs and G0 into G0; with Vp data both readings
  // into Vp, one after the other. Because cls_statVec::addVec appends once a vector holds
  // values, calculating one cls_statVars with several views gathers all their values.
  void calculate(const cls_FileOptions& view);
  // cls_statVec::add of every vector with its fellow of `other`.
  void add(const cls_statVars& other);

  // The value up to which a plot box of the named parameter should reach (see the .cpp).
  // The name is taken in any case. An unknown name, or a parameter without any reading,
  // gives 0: the caller then falls back on its own scale.
  float getNameBestMax(std::string_view name) const;

  // The vector a getNameBestMax name reads; nullptr for a name it does not know. The name must
  // already be upper case.
  const cls_statVec* vectorForName(std::string_view upperName) const;

  // For each DMT parameter its label ("Po:  " ... "Phi:  ") and the lines of its vector.
  std::vector<std::string> debugLines() const;
  void debugPrint() const;
};

}  // namespace koru
