// Exporting the DMT tests of a site as DMTUNI92 files: which verticals, under which names, with
// which options, and what happens when a name can't be a file's.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dmt/Thrust.h"
#include "dmt/UniExport.h"
#include "frame/strings/StringTable.h"
#include "scratch_folder.h"
#include "scripted_prompts.h"
#include "sites/SiteUniExport.h"
#include "sites/cls_SITE.h"

namespace koru {
namespace {

using koru::testing::ScratchFolder;
using koru::testing::ScriptedPrompts;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Three verticals: a sand sounding named "  Sand 1 ", one whose name can't be a file's with
// thrust data, and one without a DMT test.
class SiteUniExport : public ::testing::Test {
 protected:
  void SetUp() override {
    {
      cls_SITE site;
      ASSERT_TRUE(site.newSite(sites.path(), "S"));
      cls_VERTICAL* plain = site.newVertical();
      fill(*plain->dmt, "  Sand 1 ");
      ASSERT_TRUE(plain->saveInfo());

      cls_VERTICAL* thrust = site.newVertical();
      fill(*thrust->dmt, "B/3");
      DMTOptions scratch;
      thrust->dmt->addThrust(scratch);
      thrust->dmt->vTH = {600.0f, 650.0f, 700.0f};
      ASSERT_TRUE(thrust->saveInfo());

      cls_VERTICAL* seismic = site.newVertical();
      seismic->blnTestDMT = false, seismic->blnTestVs = true;
      ASSERT_TRUE(seismic->saveInfo());
      ASSERT_TRUE(site.saveInfo());
    }
    ASSERT_TRUE(site.sOpen(sites.path(), "SITE_1"));
    strings.table().append(kStrUniBadTestName, "The test name \"XXX\" cannot name a file. Name of the UNI file:");
  }

  static void fill(cls_DmtTEST& t, const std::string& name) {
    t.strTstname = name;
    for (int i = 0; i < 3; ++i) t.addZABCtoData(5.0f + 0.2f * static_cast<float>(i), 250 + 10 * i, 900 + 40 * i, 0, false);
  }

  // The file the export must write for a vertical: its test read back and evaluated with the
  // thrust fields following the test.
  std::string expectedUni(int vertical, const DMTOptions& options) const {
    const cls_VERTICAL& v = *site.verticals.item(vertical);
    cls_DmtTEST t;
    t.setDatPath(v.strDMTFile);
    EXPECT_EQ(t.loadFile(), -1);
    DMTOptions o = options;
    t.blnHasThrust ? setThrustOptions(o) : resetThrustOptions(o);
    EXPECT_TRUE(t.evalDMT(v.gamma, v.u, o));
    return uniFileText(t);
  }

  ScratchFolder sites, out;
  cls_SITE site;
  ScriptedPrompts prompts;
  ProgramStrings strings{prompts};
};

TEST_F(SiteUniExport, WritesEachDmtTestUnderItsTrimmedNameWithItsOwnThrustFieldsAndAsksForABadName) {
  prompts.inputAnswers.push_back(std::string("  B3 "));
  DMTOptions options;
  setThrustOptions(options);  // as left by a test with thrust opened before
  const SiteUniExportResult r = exportSiteUNI(site, out.path(), options, strings);
  EXPECT_EQ(options.intPhiMethod, 1) << "the caller's options stay as they were";

  EXPECT_THAT(r.problems, IsEmpty());
  EXPECT_THAT(r.written, ElementsAre(out / "Sand 1.uni", out / "B3.uni"));
  ASSERT_EQ(prompts.inputs.size(), 1u);
  EXPECT_EQ(prompts.inputs[0].prompt, "The test name \"B/3\" cannot name a file. Name of the UNI file:");
  // Thrust fields follow each test: without thrust the sand takes Phi from Kd, with it from the thrust.
  EXPECT_EQ(ScratchFolder::read(out / "Sand 1.uni"), expectedUni(1, DMTOptions{}));
  EXPECT_EQ(ScratchFolder::read(out / "B3.uni"), expectedUni(2, DMTOptions{}));
}

// A name taken earlier in the export (letter case aside) gets the vertical's folder as well.
TEST_F(SiteUniExport, ASecondTestOfTheSameNameDoesNotReplaceTheFirst) {
  prompts.inputAnswers.push_back(std::string("SAND 1"));
  const SiteUniExportResult r = exportSiteUNI(site, out.path(), DMTOptions{}, strings);
  EXPECT_THAT(r.written, ElementsAre(out / "Sand 1.uni", out / "SAND 1 (VERT_2).uni"));
  ASSERT_EQ(r.renamed.size(), 1u);
  EXPECT_EQ(r.renamed[0].file, r.written[1]);
  EXPECT_EQ(ScratchFolder::read(out / "Sand 1.uni"), expectedUni(1, DMTOptions{}));
}

TEST(SiteUniFileName, UsableNamesAreThoseEveryFileSystemTakes) {
  for (const char* good : {"Prova_3.b", "citt\xC3\xA0", "CONSOLE", "COM0"}) EXPECT_TRUE(isUsableFileName(good)) << good;
  for (const char* bad : {"A\\B", "C:", "a*", "end.", "end ", "con.txt", "Nul", "lpt9.uni"})
    EXPECT_FALSE(isUsableFileName(bad)) << bad;
}

}  // namespace
}  // namespace koru
