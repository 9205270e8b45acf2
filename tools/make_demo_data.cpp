// Writes the bundled demo data from the demo soil model:
//   make_demo_data OUTPUT_FOLDER
// The bundled files are this program's output; a test checks that they still are.

#include <filesystem>
#include <iostream>

#include "demo_soil_model.h"
#include "dmt/cls_DmtTEST.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_demo_data OUTPUT_FOLDER\n";
    return 2;
  }
  const std::filesystem::path out = argv[1];
  std::filesystem::create_directories(out);

  koru::demo::SoundingSpec spec;
  koru::cls_DmtTEST test;
  test.strFirm = "KORU Demo Geotechnics";
  test.strCustomer = "Harbour Authority";
  test.strJob = "Quay wall extension";
  test.strSite = "North Pier";
  test.strRemark = "Demo sounding from a layered soil model";
  test.strDate = "14 MAY 2026";
  test.strTstname = "SDMT 1";
  test.intDeltaA = static_cast<int16_t>(spec.deltaA);
  test.intDeltaB = static_cast<int16_t>(spec.deltaB);
  test.sngZw = spec.waterTable;
  test.sngGammaTop = 18.5f;
  for (const auto& r : koru::demo::makeSounding(spec)) test.addZABCtoData(r.z, r.a, r.b, r.c, false);

  test.setDatPath(out / "DMT_demo.dat");
  koru::Diagnostic why;
  if (test.saveFile(&why) == 0) {
    std::cerr << why.toString() << '\n';
    return 1;
  }
  return 0;
}
