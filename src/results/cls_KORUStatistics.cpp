#include "results/cls_KORUStatistics.h"

#include <limits>

#include "results/cls_FileOptions.h"
#include "frame/Log.h"

namespace koru {

namespace {

void countOne(int16_t& counter) {
  if (counter < std::numeric_limits<int16_t>::max()) ++counter;
}

}  // namespace

void cls_KORUStatistics::evaluateStatistics(std::span<const cls_FileOptions* const> views) {
  for (const cls_FileOptions* view : views)
    if (view != nullptr) evaluateVertical(*view);
}

void cls_KORUStatistics::evaluateVertical(const cls_FileOptions& view) {
  cls_statVars vertical;
  vertical.calculate(view);
  verticalStats.push_back(std::move(vertical));
  // The site's vectors append each vertical's values, so every calculation of the site runs
  // over the values of all verticals seen so far.
  siteStat.calculate(view);

  if (view.isDMT()) countOne(countDmt);
  if (view.isDMT() && view.dmt.blnHasC) countOne(countDmtWithC);
  if (view.isVs()) countOne(countVs);
  if (view.isVp()) countOne(countVp);
}

const cls_statVars* cls_KORUStatistics::getVerticalStat(std::string_view name) const {
  for (const cls_statVars& s : verticalStats)
    if (s.verticalName == name) return &s;
  return nullptr;
}

bool cls_KORUStatistics::isPhiTotPercent(float fraction, std::string_view name) const {
  const cls_statVars* stat = name.empty() ? &siteStat : getVerticalStat(name);
  if (stat == nullptr) return false;
  const cls_statVec& phi = stat->sPhi;
  if (phi.N < 1) return false;
  // The share is judged at the precision of the fraction asked for: 3 of 10 meets 0.3, although
  // the 32-bit 0.3 lies a hair above the double 3 / 10.
  const float share = static_cast<float>(static_cast<double>(phi.nNon0) / static_cast<double>(phi.N));
  return share >= fraction;
}

void cls_KORUStatistics::debugPrint() const {
  logLine("Site");
  siteStat.debugPrint();
  for (const cls_statVars& s : verticalStats) {
    logLine(s.verticalName);
    s.debugPrint();
  }
}

}  // namespace koru
