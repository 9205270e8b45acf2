// Writes the bundled demo data from the demo soil model:
//   make_demo_data OUTPUT_FOLDER
// OUTPUT_FOLDER/SITES/SITE_1 becomes a demo site with two verticals: VERT_1 with unit weights
// from the soil chart, VERT_2 (a second sounding nearby) with a unit-weight profile of its own.
// The bundled files are this program's output; a test checks that they still are.

#include <filesystem>
#include <iostream>

#include "demo_soil_model.h"
#include "synthetic_dissipation.h"
#include "sites/cls_SITE.h"

namespace {

void fillSounding(koru::cls_VERTICAL& vertical, const koru::demo::SoundingSpec& spec, const std::string& name) {
  vertical.strTestname = name;
  vertical.strFirm = "KORU Demo Geotechnics";
  vertical.strCustomer = "Harbour Authority";
  vertical.strJob = "Quay wall extension";
  vertical.strSite = "North Pier";
  vertical.strRemark = "Demo sounding from a layered soil model";
  vertical.strDate = "14 MAY 2026";
  vertical.strGPS = "44.4056 N 8.9463 E";
  vertical.sngZw = spec.waterTable;
  vertical.createNewDMTTest();
  koru::cls_DmtTEST& test = *vertical.dmt;
  test.strFirm = vertical.strFirm;
  test.strCustomer = vertical.strCustomer;
  test.strJob = vertical.strJob;
  test.strSite = vertical.strSite;
  test.strRemark = vertical.strRemark;
  test.strDate = vertical.strDate;
  test.strTstname = name;
  test.intDeltaA = static_cast<int16_t>(spec.deltaA);
  test.intDeltaB = static_cast<int16_t>(spec.deltaB);
  test.sngZw = spec.waterTable;
  test.sngGammaTop = 18.5f;
  for (const auto& r : koru::demo::makeSounding(spec)) test.addZABCtoData(r.z, r.a, r.b, r.c, false);
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
  koru::demo::SoundingSpec spec;
  fillSounding(*first, spec, "SDMT 1");
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
  first->saveInfo(&problems);

  koru::cls_VERTICAL* second = site.newVertical(&problems);
  if (!second) return report(problems) ? 1 : 1;
  koru::demo::SoundingSpec nearby;
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
  return report(problems) ? 0 : 1;
}
