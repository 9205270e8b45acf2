#include <optional>
#include <ostream>
#include <string>

#include "commands.h"
#include "csv_output.h"
#include "dmt_output.h"
#include "frame/FileLock.h"
#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/TextCodec.h"
#include "results/cls_FileOptions.h"
#include "results/cls_statVars.h"
#include "sites/FS.h"
#include "sites/SiteUniExport.h"
#include "sites/cls_SITE.h"
#include "usage.h"

namespace koru::cli {

namespace {

void reportProblems(const std::vector<Diagnostic>& problems, std::ostream& err) {
  for (const auto& p : problems) err << p.toString() << '\n';
}

std::filesystem::path sitesPath(const Context& context) {
  return (context.root ? *context.root : ProgramFolders::locate(context.executable, std::nullopt, homeFolder()).dataRoot) /
         "SITES";
}

// Opens the named site; problems of its files are told on stderr but do not stop the command.
bool openSite(Context& context, const std::string& folder, cls_SITE& site) {
  const auto root = sitesPath(context);
  if (!folderExists(root / folder)) {
    context.err << (root / folder).string() << ": no such site\n";
    return false;
  }
  site.sOpen(root, folder);
  reportProblems(site.problems(), context.err);
  return true;
}

// A command that read the site's files fails when any of them was read only in part: the
// results it printed may lack what could not be read (every such file was named on stderr).
int exitCode(const cls_SITE& site, bool ok = true) { return ok && site.problems().empty() ? kExitOk : kExitDataError; }

// A change holds the site's lock from before the site is read until its last write, so that two
// programs changing one site never undo each other's changes. The lock goes with `lock`.
bool openSiteToChange(Context& context, const std::string& folder, cls_SITE& site, std::optional<FileLock>& lock) {
  const auto root = sitesPath(context);
  if (!FS::folderNumber(folder, FS::kSitePrefix) || !folderExists(root / folder))
    return openSite(context, folder, site);  // says why not
  lock.emplace(cls_SITE::lockFolder(root / folder));
  if (!lock->locked()) {
    context.err << lock->why().toString() << '\n';
    return false;
  }
  return openSite(context, folder, site);
}

// The 1-based index of VERT_m in the site, or 0.
int verticalIndex(cls_SITE& site, const std::string& folder) {
  for (int i = 1; i <= site.verticals.Count(); ++i)
    if (site.verticals.item(i)->strFolderName == folder) return i;
  return 0;
}

// Opens the site and finds the vertical in it; its 1-based index, or 0 after telling why not.
int openVertical(Context& context, const std::string& siteFolder, const std::string& verticalFolder, cls_SITE& site,
                 std::optional<FileLock>* lock = nullptr) {
  if (!(lock ? openSiteToChange(context, siteFolder, site, *lock) : openSite(context, siteFolder, site))) return 0;
  const int index = verticalIndex(site, verticalFolder);
  if (index == 0) context.err << "koru: " << siteFolder << " has no vertical " << verticalFolder << '\n';
  return index;
}

// The site's files are Windows-1252 text: a name with a character they cannot hold is refused
// here, where the user can still choose another, rather than stored with a "?" in its place.
bool isStorable(Context& context, std::string_view what, const std::string& text) {
  const auto bad = firstUnstorable(text);
  if (!bad) return true;
  context.err << "koru: the " << what << " \"" << text << "\" cannot be stored: \"" << *bad
              << "\" is not a character of the Windows-1252 files\n";
  return false;
}

int siteList(Context& context) {
  const auto root = sitesPath(context);
  CsvLine header;
  header.addText("folder").addText("name").addText("verticals");
  header.writeTo(context.out);
  for (const auto& folder : FS::listSiteFolders(root)) {
    CsvLine line;
    line.addText(folder).addText(FS::siteDisplayName(root / folder));
    line.addInt(static_cast<long>(FS::listVerticalFolders(root / folder).size()));
    line.writeTo(context.out);
  }
  return kExitOk;
}

int siteCreate(Context& context) {
  if (context.args.size() != 1) return usageError(context, "site create");
  if (!isStorable(context, "site name", context.args[0])) return kExitUsage;
  const auto root = sitesPath(context);
  if (!ensureFolder(root)) {
    context.err << root.string() << ": cannot create the SITES folder\n";
    return kExitDataError;
  }
  cls_SITE site;
  Diagnostic why;
  if (!site.newSite(root, context.args[0], &why)) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  context.out << site.strFolder << '\n';
  return kExitOk;
}

int siteUni(Context& context) {
  std::string folder;
  std::vector<std::string> positional;
  for (size_t i = 0; i < context.args.size(); ++i) {
    if (context.args[i] == "--out" && i + 1 < context.args.size())
      folder = context.args[++i];
    else
      positional.push_back(context.args[i]);
  }
  if (positional.size() != 1 || folder.empty()) return usageError(context, "site uni");
  cls_SITE site;
  if (!openSite(context, positional[0], site)) return kExitDataError;
  if (!ensureFolder(folder)) {
    context.err << folder << ": cannot create the folder\n";
    return kExitDataError;
  }
  auto result = exportSiteUNI(site, folder, DMTOptions{}, *context.strings);
  for (const auto& file : result.written) context.out << file.string() << '\n';
  for (const auto& skipped : result.skipped) context.err << "koru: " << skipped << " left out\n";
  reportProblems(result.renamed, context.err);
  reportProblems(result.problems, context.err);
  return exitCode(site, result.problems.empty());
}

// Mends what interrupted changes left behind: half-built or half-removed verticals, whole ones
// the site file does not name, temporaries of killed saves.
int siteRepair(Context& context) {
  if (context.args.size() != 1) return usageError(context, "site repair");
  cls_SITE site;
  std::optional<FileLock> lock;
  if (!openSiteToChange(context, context.args[0], site, lock)) return kExitDataError;
  std::vector<Diagnostic> done;
  const bool ok = site.cleanLeftovers(&done);
  for (const Diagnostic& d : done) context.out << d.toString() << '\n';
  return ok ? kExitOk : kExitDataError;
}

int verticalCreate(Context& context) {
  if (context.args.empty() || context.args.size() > 2) return usageError(context, "vertical create");
  if (context.args.size() == 2 && !isStorable(context, "test name", context.args[1])) return kExitUsage;
  cls_SITE site;
  std::optional<FileLock> lock;
  if (!openSiteToChange(context, context.args[0], site, lock)) return kExitDataError;
  std::vector<Diagnostic> problems;
  cls_VERTICAL* vertical = site.newVertical(&problems);
  if (vertical && context.args.size() == 2) {
    vertical->strTestname = context.args[1];
    vertical->saveVerticalFile(&problems);
  }
  reportProblems(problems, context.err);
  if (!vertical) return kExitDataError;
  context.out << vertical->strFolderName << '\n';
  return exitCode(site, problems.empty());
}

int verticalList(Context& context) {
  if (context.args.size() != 1) return usageError(context, "vertical list");
  cls_SITE site;
  if (!openSite(context, context.args[0], site)) return kExitDataError;
  CsvLine header;
  header.addText("index").addText("folder").addText("testname").addText("date").addText("Zw").addText("Zabs");
  header.addText("DMT").addText("Vs").addText("Vp").addText("dissipation");
  header.writeTo(context.out);
  for (int i = 1; i <= site.verticals.Count(); ++i) {
    const cls_VERTICAL& v = *site.verticals.item(i);
    CsvLine line;
    line.addInt(i).addText(v.strFolderName).addText(v.strTestname).addText(v.strDate);
    line.addText(formatNumber(v.sngZw, "")).addText(formatNumber(v.sngZabs, ""));
    line.addInt(v.blnTestDMT).addInt(v.blnTestVs).addInt(v.blnTestVp).addInt(v.blnTestDissip);
    line.writeTo(context.out);
  }
  return exitCode(site);
}

int verticalShow(Context& context) {
  if (context.args.size() != 2) return usageError(context, "vertical show");
  cls_SITE site;
  const int index = openVertical(context, context.args[0], context.args[1], site);
  if (index == 0) return kExitDataError;
  static const char* kLabels[] = {"Test name", "Firm", "Customer", "Job", "Site", "Remark", "Date", "GPS",
                                  "Zabs",      "Zw",   "DMT",      "Vs",  "Vp",   "Dissipation"};
  auto lines = site.verticals.item(index)->verticalFileLines();
  for (size_t i = 0; i < lines.size() && i < std::size(kLabels); ++i)
    context.out << kLabels[i] << ": " << lines[i] << '\n';
  return exitCode(site);
}

int verticalReorder(Context& context) {
  if (context.args.size() < 2) return usageError(context, "vertical reorder");
  cls_SITE site;
  std::optional<FileLock> lock;
  if (!openSiteToChange(context, context.args[0], site, lock)) return kExitDataError;
  std::vector<int> order;
  for (size_t i = 1; i < context.args.size(); ++i) {
    auto value = tryParseDouble(context.args[i]);
    if (!value || *value != static_cast<int>(*value)) {
      context.err << "koru: '" << context.args[i] << "' is not an index\n";
      return kExitUsage;
    }
    order.push_back(static_cast<int>(*value));
  }
  if (!site.verticals.reOrder(order)) {
    context.err << "koru: the new order must name each of the " << site.verticals.Count()
                << " verticals once, by index\n";
    return kExitUsage;
  }
  Diagnostic why;
  if (!site.saveInfo(&why)) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  return exitCode(site);
}

int verticalRemove(Context& context) {
  if (context.args.size() != 2) return usageError(context, "vertical remove");
  cls_SITE site;
  std::optional<FileLock> lock;
  const int index = openVertical(context, context.args[0], context.args[1], site, &lock);
  if (index == 0) return kExitDataError;
  Diagnostic why;
  if (!site.removeVertical(index, &why)) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  return exitCode(site);
}

int verticalEval(Context& context) {
  if (context.args.size() < 2) return usageError(context, "vertical eval");
  const std::string siteFolder = context.args[0], verticalFolder = context.args[1];
  const std::vector<std::string> rest(context.args.begin() + 2, context.args.end());
  EvalOutputOptions output;
  if (!parseEvalOptions(rest, output, context.err)) return kExitUsage;
  if (!output.positional.empty() || output.allowPartial) return usageError(context, "vertical eval");
  cls_SITE site;
  const int index = openVertical(context, siteFolder, verticalFolder, site);
  if (index == 0) return kExitDataError;
  cls_VERTICAL* vertical = site.verticals.activate(index, output.options);
  reportProblems(vertical->problems(), context.err);
  const std::string name = siteFolder + "/" + verticalFolder;
  if (!vertical->dmt || vertical->dmt->N() == 0) {
    context.err << "koru: " << name << " has no DMT readings\n";
    return kExitDataError;
  }
  // Activation evaluated the test with the options as they apply to it; thrust fields that
  // cannot apply are refused here.
  if (!evaluationOptions(output.options, vertical->dmt->blnHasThrust, name, context.err)) return kExitUsage;
  writeEvaluation(*vertical->dmt, output, context);
  return exitCode(site, vertical->problems().empty());
}

int verticalSeismic(Context& context) {
  std::string wave;
  std::vector<std::string> positional;
  for (size_t i = 0; i < context.args.size(); ++i) {
    if (context.args[i] == "--wave" && i + 1 < context.args.size())
      wave = context.args[++i];
    else
      positional.push_back(context.args[i]);
  }
  if (positional.size() != 2 || (wave != "S" && wave != "P")) return usageError(context, "vertical seismic");
  cls_SITE site;
  const int index = openVertical(context, positional[0], positional[1], site);
  if (index == 0) return kExitDataError;
  cls_VERTICAL* vertical = site.verticals.activate(index, DMTOptions{});
  reportProblems(vertical->problems(), context.err);
  const auto& test = wave == "S" ? vertical->vsTest : vertical->vpTest;
  if (!test) {
    context.err << "koru: " << positional[0] << "/" << positional[1] << " has no V" << (wave == "S" ? "s" : "p")
                << " test\n";
    return kExitDataError;
  }
  context.out << "Z,vMean,devStd,bestFile,good,bad,noise\n";
  for (const auto& depth : test->strikes) {
    CsvLine line;
    line.add(depth.Z).addInt(depth.vMean).add(depth.devStd).addText(depth.bestFile);
    line.addText(depth.goodList).addText(depth.badList).addText(depth.noiseList);
    line.writeTo(context.out);
  }
  return exitCode(site, vertical->problems().empty());
}

// The unit of the values behind each scale code of the statistics.
constexpr std::pair<const char*, const char*> kStatCodes[] = {
    {"M", "MPa"},      {"CU", "kPa"},     {"KD", ""},        {"ED", "MPa"},      {"K0", ""},    {"U0", "kPa"},
    {"UD", ""},        {"PHI", "degrees"}, {"OCR", ""},      {"P2U0", "kPa"},    {"P0P1", "kPa"}, {"SIGMAH", "kPa"},
    {"SIGMAV", "kPa"}, {"SIGMAEFF", "kPa"}, {"GAMMA", "kN/m3"}, {"VS", "m/s"}, {"VP", "m/s"}};

int verticalStats(Context& context) {
  EvalOutputOptions output;
  if (!parseEvalOptions(context.args, output, context.err)) return kExitUsage;
  if (output.positional.size() != 2 || output.table || output.allowPartial)
    return usageError(context, "vertical stats");
  cls_SITE site;
  const int index = openVertical(context, output.positional[0], output.positional[1], site);
  if (index == 0) return kExitDataError;
  cls_FileOptions view;
  std::vector<Diagnostic> problems;
  view.initializeFromPalmiro(*site.verticals.item(index), output.options, &problems);
  reportProblems(problems, context.err);
  const std::string name = output.positional[0] + "/" + output.positional[1];
  if (view.isDMT() && !evaluationOptions(output.options, view.dmt.blnHasThrust, name, context.err))
    return kExitUsage;
  cls_statVars stats;
  stats.calculate(view);
  // One line per parameter code that a plot box can ask its scale for; the excess is the mean
  // amount by which the values above the mean exceed it.
  CsvLine header;
  header.addText("code");
  if (output.units) header.addText("unit");
  for (const char* column : {"mean", "min", "max", "count", "countNonZero", "countAboveMean", "meanExcessAboveMean",
                             "bestMax"})
    header.addText(column);
  header.writeTo(context.out);
  for (const auto& [code, unit] : kStatCodes) {
    const cls_statVec* vec = stats.vectorForName(code);
    if (!vec) continue;
    CsvLine line;
    line.addText(code);
    if (output.units) line.addText(unit);
    line.add(vec->media);
    // The bounds mean nothing until a value other than 0 was seen.
    line.add(vec->nNon0 > 0 ? vec->sngMin : 0.0).add(vec->nNon0 > 0 ? vec->sngMax : 0.0);
    line.addInt(vec->N).addInt(vec->nNon0).addInt(vec->nOltreMedia).add(vec->mediaOltreMedia);
    line.add(stats.getNameBestMax(code));
    line.writeTo(context.out);
  }
  return exitCode(site, problems.empty());
}

}  // namespace

int runSiteCommand(Context& context) {
  return runGroup(context, "site", {{"list", siteList}, {"create", siteCreate}, {"uni", siteUni}, {"repair", siteRepair}});
}

int runVerticalCommand(Context& context) {
  return runGroup(context, "vertical",
                  {{"create", verticalCreate},
                   {"list", verticalList},
                   {"show", verticalShow},
                   {"reorder", verticalReorder},
                   {"remove", verticalRemove},
                   {"eval", verticalEval},
                   {"seismic", verticalSeismic},
                   {"stats", verticalStats}});
}

}  // namespace koru::cli
