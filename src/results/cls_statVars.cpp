#include "results/cls_statVars.h"

#include <cmath>
#include <utility>

#include "results/cls_FileOptions.h"
#include "frame/Log.h"
#include "frame/Numbers.h"
#include "frame/Text.h"

namespace koru {

void cls_statVars::calculate(const cls_FileOptions& view) {
  verticalName = view.strVertName;
  const cls_DmtTEST& d = view.dmt;
  Po.setVecAndCalculate(d.vecPo);
  P1.setVecAndCalculate(d.vecP1);
  P2.setVecAndCalculate(d.vecP2);
  sGamma.setVecAndCalculate(d.vecGamma);
  sSigmaEFF.setVecAndCalculate(d.vecSigmaEff);
  sSigmaH.setVecAndCalculate(d.vecSigmah);
  sSigmaV.setVecAndCalculate(d.vecSigmaV);
  Ed.setVecAndCalculate(d.vecEd);
  Uo.setVecAndCalculate(d.vecUo);
  Ud.setVecAndCalculate(d.vecUd);
  Id.setVecAndCalculate(d.vecId);
  Kd.setVecAndCalculate(d.vecKd);
  Ko.setVecAndCalculate(d.vecKo);
  sOCR.setVecAndCalculate(d.vecOCR);
  M.setVecAndCalculate(d.vecM);
  Cu.setVecAndCalculate(d.vecCu);
  sPhi.setVecAndCalculate(d.vecPhi);
  if (view.isVs()) {
    Vs.setVecAndCalculate(view.vVs);
    G0.setVecAndCalculate(view.vG0);
  }
  if (view.isVp()) {
    // The two readings go into one vector: its scale covers both curves of the box.
    Vp.setVecAndCalculate(view.vP1);
    Vp.setVecAndCalculate(view.vP2);
  }
}

void cls_statVars::add(const cls_statVars& other) {
  Po.add(other.Po);
  P1.add(other.P1);
  P2.add(other.P2);
  sGamma.add(other.sGamma);
  sSigmaEFF.add(other.sSigmaEFF);
  sSigmaH.add(other.sSigmaH);
  sSigmaV.add(other.sSigmaV);
  Ed.add(other.Ed);
  Uo.add(other.Uo);
  Ud.add(other.Ud);
  Id.add(other.Id);
  Kd.add(other.Kd);
  Ko.add(other.Ko);
  sOCR.add(other.sOCR);
  M.add(other.M);
  Cu.add(other.Cu);
  sPhi.add(other.sPhi);
  Vs.add(other.Vs);
  Vp.add(other.Vp);
  G0.add(other.G0);
}

const cls_statVec* cls_statVars::vectorForName(std::string_view n) const {
  if (n == "M") return &M;
  if (n == "CU") return &Cu;
  if (n == "KD") return &Kd;
  if (n == "ED") return &Ed;
  if (n == "K0") return &Ko;
  if (n == "U0") return &Uo;
  if (n == "UD") return &Ud;
  if (n == "PHI") return &sPhi;
  if (n == "OCR") return &sOCR;
  if (n == "P2U0") return &P2;
  // The pressure boxes that show Po and P1 together are scaled on P1, the larger of the two.
  if (n == "P0P1" || n == "U0P2P0P1") return &P1;
  if (n == "SIGMAH") return &sSigmaH;
  if (n == "SIGMAV") return &sSigmaV;
  if (n == "SIGMAEFF") return &sSigmaEFF;
  if (n == "GAMMA") return &sGamma;
  if (n == "VS") return &Vs;
  if (n == "VP") return &Vp;
  if (n == "G0") return &G0;
  return nullptr;
}

// The scale reaches as far above the mean as the values above it do on average, weighted by
// the share of values that lie above it, times a reach of 2.5 (5 for Kd, whose long upper tail
// would otherwise be cut): a single wild reading cannot stretch the scale, and the result never
// passes the largest value actually read.
float cls_statVars::getNameBestMax(std::string_view name) const {
  const std::string upper = upperAscii(name);
  const cls_statVec* stat = vectorForName(upper);
  if (stat == nullptr || stat->nNon0 <= 0) return 0;

  double result = 0;
  if (upper == "P2U0") {
    // The cut below is to P2's own largest value, so Uo never lifts this scale above P2's.
    result = Max(P2.sngMax, Uo.sngMax);
  } else {
    const double reach = upper == "KD" ? 5.0 : 2.5;
    result = static_cast<double>(stat->nOltreMedia) / static_cast<double>(stat->nNon0) * reach *
                 static_cast<double>(stat->mediaOltreMedia) +
             static_cast<double>(stat->media);
  }
  result = Min(static_cast<double>(stat->sngMax), result);
  return std::isfinite(result) ? static_cast<float>(result) : 0.0f;
}

std::vector<std::string> cls_statVars::debugLines() const {
  const std::pair<const char*, const cls_statVec*> labelled[] = {
      {"Po:  ", &Po},         {"P1:  ", &P1},         {"P2:  ", &P2},       {"Gamma:  ", &sGamma},
      {"Sigmaeff:  ", &sSigmaEFF}, {"sigmah:  ", &sSigmaH}, {"sigmav:  ", &sSigmaV}, {"Ed:  ", &Ed},
      {"Uo:  ", &Uo},         {"Ud:  ", &Ud},         {"Id:  ", &Id},       {"Kd:  ", &Kd},
      {"Ko:  ", &Ko},         {"OCR:  ", &sOCR},      {"M:  ", &M},         {"Cu:  ", &Cu},
      {"Phi:  ", &sPhi}};
  std::vector<std::string> lines;
  for (const auto& [label, vec] : labelled) {
    lines.emplace_back(label);
    for (std::string& l : vec->debugLines()) lines.push_back(std::move(l));
  }
  return lines;
}

void cls_statVars::debugPrint() const {
  for (const std::string& l : debugLines()) logLine(l);
}

}  // namespace koru
