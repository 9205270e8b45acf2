#include <gtest/gtest.h>

#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "run_program.h"
#include "scratch_folder.h"

namespace koru {
namespace {

using testing::ScratchFolder;

const std::string kSource = KORU_SOURCE_DIR;

// The bundled demo data is the generator's output, not something edited by hand.
TEST(DemoData, BundledFilesAreWhatTheGeneratorMakes) {
  ScratchFolder dir;
  auto run = testing::runProgram(std::string(KORU_BINARY_DIR) + "/tools/make_demo_data", {dir.path().string()});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const std::filesystem::path bundled = kSource + "/demo";
  size_t files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(dir.path())) {
    if (!entry.is_regular_file()) continue;
    ++files;
    auto rel = std::filesystem::relative(entry.path(), dir.path());
    EXPECT_EQ(ScratchFolder::read(entry.path()), ScratchFolder::read(bundled / rel)) << rel;
  }
  size_t bundledFiles = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(bundled / "SITES"))
    bundledFiles += entry.is_regular_file();
  EXPECT_EQ(files, bundledFiles);
}

// The demo sounding evaluates to the soils it was made from: clay on top, sand at the bottom.
TEST(DemoData, SoundingEvaluatesToItsLayers) {
  cls_DmtTEST test;
  test.setDatPath(kSource + "/demo/SITES/SITE_1/VERT_1/DMT_1.dat");
  ASSERT_EQ(test.loadFile(), -1);
  ASSERT_EQ(test.N(), 125);
  cls_GAMMA gamma;
  cls_U u;
  ASSERT_TRUE(test.evalDMT(gamma, u, DMTOptions{}));
  for (int i = 0; i < test.N(); ++i) {
    const float z = test.vZ[static_cast<size_t>(i)];
    EXPECT_EQ(test.vecCODREAD[static_cast<size_t>(i)], 100) << z;
    if (z > 3.0f && z < 8.5f) {
      EXPECT_LT(test.vecId[static_cast<size_t>(i)], 0.6f) << z;
      EXPECT_GT(test.vecCu[static_cast<size_t>(i)], 5.0f) << z;
    }
    if (z > 15.0f) {
      EXPECT_GT(test.vecId[static_cast<size_t>(i)], 1.8f) << z;
      EXPECT_GT(test.vecPhi[static_cast<size_t>(i)], 30.0f) << z;
    }
  }
}

}  // namespace
}  // namespace koru
