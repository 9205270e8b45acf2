#pragma once
// The statistics of a site: one cls_statVars a vertical, one for the site as a whole, and how
// many verticals carry each kind of test. Made afresh whenever the data graph is rebuilt, and
// read by the automatic plot scales (getNameBestMax) and by the choice of the first graph
// (isPhiTotPercent). Nothing is written anywhere, and nothing here throws.

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "results/cls_statVars.h"

namespace koru {

class cls_FileOptions;

class cls_KORUStatistics {
 public:
  cls_statVars siteStat;                   // all verticals together
  std::vector<cls_statVars> verticalStats; // one a vertical, in the order evaluated
  int16_t countDmt = 0;
  int16_t countDmtWithC = 0;
  int16_t countVs = 0;
  int16_t countVp = 0;

  // The vertical step for each view in order (null entries are skipped). It adds to what is
  // already here: a fresh object is meant for each rebuild of the graph.
  void evaluateStatistics(std::span<const cls_FileOptions* const> views);
  // The vertical step: the vertical's own statistics join the collection, the site's vectors
  // gather its values, and the counters follow its tests.
  void evaluateVertical(const cls_FileOptions& view);

  // The first vertical of the collection with that name; nullptr when there is none.
  const cls_statVars* getVerticalStat(std::string_view name) const;

  // True when at least `fraction` (0 to 1) of the Phi values of the vertical (of the site for
  // an empty name) are readings: Phi exists only in granular rows, so this tells how much of
  // it is sand. False for an unknown vertical or one without values.
  bool isPhiTotPercent(float fraction, std::string_view name) const;

  // The site's lines and each vertical's, to logLine.
  void debugPrint() const;
};

}  // namespace koru
