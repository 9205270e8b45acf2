// Writes the bundled demo data from the demo soil model:
//   make_demo_data OUTPUT_FOLDER
// OUTPUT_FOLDER/SITES/SITE_1 becomes a demo site with two verticals: VERT_1 with unit weights
// from the soil chart, VERT_2 (a second sounding nearby) with a unit-weight profile of its own.
// The bundled files are this program's output; a test checks that they still are.

#include <filesystem>
#include <iostream>

#include "demo_soil_model.h"
#include "synthetic_dissipation.h"
#include "synthetic_strike.h"

#include <cmath>
#include "sites/FS.h"
#include "sites/cls_SITE.h"

namespace {

void fillSounding(koru::cls_VERTICAL& vertical, const koru::demo::SoundingPlan& plan, const std::string& name) {
  vertical.strTestname = name;
  vertical.strFirm = "KORU Demo Geotechnics";
  vertical.strCustomer = "Harbour Authority";
  vertical.strJob = "Quay wall extension";
  vertical.strSite = "North Pier";
  vertical.strRemark = "Demo sounding from a layered soil model";
  vertical.strDate = "14 MAY 2026";
  vertical.strGPS = "44.4056 N 8.9463 E";
  vertical.sngZw = plan.waterTable;
  vertical.createNewDMTTest();
  koru::cls_DmtTEST& test = *vertical.dmt;
  test.strFirm = vertical.strFirm;
  test.strCustomer = vertical.strCustomer;
  test.strJob = vertical.strJob;
  test.strSite = vertical.strSite;
  test.strRemark = vertical.strRemark;
  test.strDate = vertical.strDate;
  test.strTstname = name;
  test.intDeltaA = static_cast<int16_t>(plan.deltaA);
  test.intDeltaB = static_cast<int16_t>(plan.deltaB);
  test.sngZw = plan.waterTable;
  test.sngGammaTop = 18.5f;
  for (const auto& r : koru::demo::makeSounding(plan)) test.addZABCtoData(r.z, r.a, r.b, r.c, false);
}

// Shear wave velocity of the demo soil model at a depth, m/s.
double demoVs(float z) {
  if (z < 2.0f) return 150;
  if (z < 9.0f) return 95 + 5.0 * (z - 2.0);
  if (z < 14.0f) return 180 + 8.0 * (z - 9.0);
  return 260 + 7.0 * (z - 14.0);
}

// A Vs test every 2 m: three strikes a depth, as the operator takes them. One strike of every
// fourth depth is struck too hard and clips (marked bad), and one depth has a noise record.
void addSeismicTest(koru::cls_VERTICAL& vertical) {
  vertical.createNewVsTest();
  koru::cls_VTEST& test = *vertical.vsTest;
  std::filesystem::create_directories(test.strikesFolder());
  int32_t number = 1;
  uint32_t seed = 100;
  for (int step = 1; step <= 12; ++step) {
    const float z = 2.0f * static_cast<float>(step);
    koru::cls_zSTRIKES depth(z);
    for (int strike = 0; strike < 3; ++strike) {
      koru::synth::StrikeSettings shot;
      shot.Z = z;
      shot.velocity = demoVs(z);
      // The trigger delay is set so that the wave reaches the upper receiver early in the record.
      shot.arrival = 12.0 + 0.4 * strike;
      shot.frequency = z < 14.0f ? 80 : 120;
      shot.amplitude = 55.0 * std::exp(-0.04 * z);
      shot.noise = 1.5;
      shot.seed = seed++;
      const bool clipped = strike == 2 && step % 4 == 0;
      const bool noise = strike == 2 && step == 7;
      if (clipped) shot.amplitude = 190;
      if (noise) {
        shot.amplitude = 0;
        shot.triggerType = 2;
      }
      koru::cls_SEISMOGRAM record = koru::synth::makeSyntheticStrike(shot);
      record.Data = "14/05/2026";
      record.hour = "10:" + std::string(step < 10 ? "0" : "") + std::to_string(step * 4);
      const std::string name = std::to_string(number++);
      record.saveFile(test.seismogramPath(name));
      if (noise) {
        record.setNoiseParameters();
        depth.addNoise(name, record.get_elabString());
        continue;
      }
      record.setDefaultElabParameters();
      record.evalV();
      if (clipped)
        depth.addBad(name, record.get_elabString());
      else
        depth.addGood(name, record.V(), record.get_elabString());
    }
    depth.evaluateData();
    test.strikes.add(std::move(depth));
  }
}

// Rod thrust of the demo sounding, kgf: light in the soft clay, rising through the silt and
// steeply in the dense sand.
float demoThrust(float z) {
  if (z < 2.0f) return 120 + 60 * z;
  if (z < 9.0f) return 200 + 25 * (z - 2.0f);
  if (z < 14.0f) return 380 + 90 * (z - 9.0f);
  return 1400 + 220 * (z - 14.0f);
}

bool report(const std::vector<koru::Diagnostic>& problems) {
  for (const auto& p : problems) std::cerr << p.toString() << '\n';
  return problems.empty();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_demo_data OUTPUT_FOLDER\n";
    return 2;
  }
  const std::filesystem::path sites = std::filesystem::path(argv[1]) / "SITES";
  std::error_code ec;
  std::filesystem::remove_all(sites / "SITE_1", ec);
  std::filesystem::create_directories(sites, ec);

  koru::cls_SITE site;
  koru::Diagnostic why;
  if (!site.newSite(sites, "North Pier - quay wall extension", &why)) {
    std::cerr << why.toString() << '\n';
    return 1;
  }
  std::vector<koru::Diagnostic> problems;

  koru::cls_VERTICAL* first = site.newVertical(&problems);
  if (!first) return report(problems) ? 1 : 1;
  koru::demo::SoundingPlan plan;
  fillSounding(*first, plan, "SDMT 1");
  // Two dissipation tests: in the soft clay, where the excess pore pressure takes an hour or
  // more to go, and in the silt, where it goes in minutes.
  first->createNewDissipationTests();
  struct Decay {
    float zd, ch, a0, aEnd, bFinal, mh;
    uint32_t seed;
  };
  for (const Decay& d : {Decay{6.0f, 0.004f, 236.0f, 160.0f, 302.0f, 2.1f, 11},
                         Decay{11.0f, 0.05f, 385.0f, 300.0f, 702.0f, 13.0f, 12}}) {
    koru::synth::DecayModel model;
    model.Ch = d.ch;
    model.A0 = d.a0;
    model.Aend = d.aEnd;
    model.zd = d.zd;
    model.bFinal = d.bFinal;
    model.mh = d.mh;
    model.seed = d.seed;
    koru::cls_DissTEST test = koru::synth::makeSyntheticDissipation(model, first->strDissipFolder);
    test.Firm = first->strFirm;
    test.Customer = first->strCustomer;
    test.Job = first->strJob;
    test.Site = first->strSite;
    test.Remark = "Demo dissipation test";
    test.Data = first->strDate;
    test.TstName = first->strTestname;
    first->dissipations->add(std::move(test), true);
  }
  addSeismicTest(*first);
  first->saveInfo(&problems);

  koru::cls_VERTICAL* second = site.newVertical(&problems);
  if (!second) return report(problems) ? 1 : 1;
  koru::demo::SoundingPlan nearby;
  nearby.seed = 20260102;
  nearby.waterTable = 1.5f;
  nearby.zEnd = 20.0f;
  fillSounding(*second, nearby, "SDMT 2");
  // Unit weights measured on samples of the borehole beside the sounding.
  const float z[] = {0.0f, 2.0f, 9.0f, 14.0f, 20.0f};
  const float y[] = {18.6f, 16.9f, 18.1f, 19.6f, 19.8f};
  second->gamma.setMethod(2);
  second->gamma.setN(5);
  for (int i = 0; i < 5; ++i) {
    second->gamma.setZi(i, z[i]);
    second->gamma.setYi(i, y[i]);
  }
  second->saveInfo(&problems);

  // A third sounding with the rod thrust read at every depth.
  koru::cls_VERTICAL* third = site.newVertical(&problems);
  if (!third) return report(problems) ? 1 : 1;
  koru::demo::SoundingPlan thrusted;
  thrusted.seed = 20260103;
  fillSounding(*third, thrusted, "SDMT 3");
  koru::DMTOptions options;
  third->dmt->addThrust(options);
  for (size_t i = 0; i < third->dmt->vZ.size(); ++i)
    third->dmt->vTH[i] = std::round(demoThrust(third->dmt->vZ[i]));
  third->saveInfo(&problems);
  // The lock files of the changes above hold nothing; the bundled data is the data alone.
  std::filesystem::remove(sites / koru::FS::kLockFileName, ec);
  std::filesystem::remove(sites / "SITE_1" / koru::FS::kLockFileName, ec);
  return report(problems) ? 0 : 1;
}
