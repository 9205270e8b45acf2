#include <ostream>
#include <string>

#include "commands.h"
#include "csv_output.h"
#include "dmt_output.h"
#include "frame/Files.h"
#include "frame/Numbers.h"
#include "results/cls_FileOptions.h"
#include "results/cls_statVars.h"
#include "sites/FS.h"
#include "sites/SiteUniExport.h"
#include "sites/cls_SITE.h"

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

// The 1-based index of VERT_m in the site, or 0.
int verticalIndex(cls_SITE& site, const std::string& folder) {
  for (int i = 1; i <= site.verticals.Count(); ++i)
    if (site.verticals.item(i)->strFolderName == folder) return i;
  return 0;
}

// Opens the site and finds the vertical in it; its 1-based index, or 0 after telling why not.
int openVertical(Context& context, const std::string& siteFolder, const std::string& verticalFolder, cls_SITE& site) {
  if (!openSite(context, siteFolder, site)) return 0;
  const int index = verticalIndex(site, verticalFolder);
  if (index == 0) context.err << "koru: " << siteFolder << " has no vertical " << verticalFolder << '\n';
  return index;
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
  if (context.args.size() != 1) {
    context.err << "koru: usage: koru site create NAME\n";
    return kExitUsage;
  }
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
  if (positional.size() != 1 || folder.empty()) {
    context.err << "koru: usage: koru site uni SITE_n --out DIR\n";
    return kExitUsage;
  }
  cls_SITE site;
  if (!openSite(context, positional[0], site)) return kExitDataError;
  if (!ensureFolder(folder)) {
    context.err << folder << ": cannot create the folder\n";
    return kExitDataError;
  }
  auto result = exportSiteUNI(site, folder, DMTOptions{}, *context.strings);
  for (const auto& file : result.written) context.out << file.string() << '\n';
  for (const auto& skipped : result.skipped) context.err << "koru: " << skipped << " left out\n";
  reportProblems(result.problems, context.err);
  return result.problems.empty() ? kExitOk : kExitDataError;
}

int verticalCreate(Context& context) {
  if (context.args.empty() || context.args.size() > 2) {
    context.err << "koru: usage: koru vertical create SITE_n [TEST_NAME]\n";
    return kExitUsage;
  }
  cls_SITE site;
  if (!openSite(context, context.args[0], site)) return kExitDataError;
  std::vector<Diagnostic> problems;
  cls_VERTICAL* vertical = site.newVertical(&problems);
  if (vertical && context.args.size() == 2) {
    vertical->strTestname = context.args[1];
    vertical->saveVerticalFile(&problems);
  }
  reportProblems(problems, context.err);
  if (!vertical) return kExitDataError;
  context.out << vertical->strFolderName << '\n';
  return problems.empty() ? kExitOk : kExitDataError;
}

int verticalList(Context& context) {
  if (context.args.size() != 1) {
    context.err << "koru: usage: koru vertical list SITE_n\n";
    return kExitUsage;
  }
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
  return kExitOk;
}

int verticalShow(Context& context) {
  if (context.args.size() != 2) {
    context.err << "koru: usage: koru vertical show SITE_n VERT_m\n";
    return kExitUsage;
  }
  cls_SITE site;
  const int index = openVertical(context, context.args[0], context.args[1], site);
  if (index == 0) return kExitDataError;
  static const char* kLabels[] = {"Test name", "Firm", "Customer", "Job", "Site", "Remark", "Date", "GPS",
                                  "Zabs",      "Zw",   "DMT",      "Vs",  "Vp",   "Dissipation"};
  auto lines = site.verticals.item(index)->verticalFileLines();
  for (size_t i = 0; i < lines.size() && i < std::size(kLabels); ++i)
    context.out << kLabels[i] << ": " << lines[i] << '\n';
  return kExitOk;
}

int verticalReorder(Context& context) {
  if (context.args.size() < 2) {
    context.err << "koru: usage: koru vertical reorder SITE_n INDEX...\n";
    return kExitUsage;
  }
  cls_SITE site;
  if (!openSite(context, context.args[0], site)) return kExitDataError;
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
  return kExitOk;
}

int verticalRemove(Context& context) {
  if (context.args.size() != 2) {
    context.err << "koru: usage: koru vertical remove SITE_n VERT_m\n";
    return kExitUsage;
  }
  cls_SITE site;
  const int index = openVertical(context, context.args[0], context.args[1], site);
  if (index == 0) return kExitDataError;
  Diagnostic why;
  if (!site.verticals.Remove(index, &why) || !site.saveInfo(&why)) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  return kExitOk;
}

int verticalEval(Context& context) {
  if (context.args.size() < 2) {
    context.err << "koru: usage: koru vertical eval SITE_n VERT_m [--set NAME=VALUE]... [--table]\n";
    return kExitUsage;
  }
  const std::string siteFolder = context.args[0], verticalFolder = context.args[1];
  std::vector<std::string> options(context.args.begin() + 2, context.args.end());
  EvalOutputOptions output;
  if (!parseEvalOptions(options, output, context.err)) return kExitUsage;
  cls_SITE site;
  const int index = openVertical(context, siteFolder, verticalFolder, site);
  if (index == 0) return kExitDataError;
  cls_VERTICAL* vertical = site.verticals.activate(index, output.options);
  reportProblems(vertical->problems(), context.err);
  if (!vertical->dmt || vertical->dmt->N() == 0) {
    context.err << "koru: " << siteFolder << "/" << verticalFolder << " has no DMT readings\n";
    return kExitDataError;
  }
  writeEvaluation(*vertical->dmt, output, context);
  return vertical->problems().empty() ? kExitOk : kExitDataError;
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
  if (positional.size() != 2 || (wave != "S" && wave != "P")) {
    context.err << "koru: usage: koru vertical seismic SITE_n VERT_m --wave S|P\n";
    return kExitUsage;
  }
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
  return vertical->problems().empty() ? kExitOk : kExitDataError;
}

int verticalStats(Context& context) {
  if (context.args.size() != 2) {
    context.err << "koru: usage: koru vertical stats SITE_n VERT_m\n";
    return kExitUsage;
  }
  cls_SITE site;
  const int index = openVertical(context, context.args[0], context.args[1], site);
  if (index == 0) return kExitDataError;
  cls_FileOptions view;
  std::vector<Diagnostic> problems;
  view.initializeFromPalmiro(*site.verticals.item(index), DMTOptions{}, &problems);
  reportProblems(problems, context.err);
  cls_statVars stats;
  stats.calculate(view);
  // One line per parameter code that a plot box can ask its scale for.
  context.out << "code,media,min,max,N,nNon0,nOltreMedia,mediaOltreMedia,bestMax\n";
  for (const char* code : {"M", "CU", "KD", "ED", "K0", "U0", "UD", "PHI", "OCR", "P2U0", "P0P1", "SIGMAH", "SIGMAV",
                           "SIGMAEFF", "GAMMA", "VS", "VP"}) {
    const cls_statVec* vec = stats.vectorForName(code);
    if (!vec) continue;
    CsvLine line;
    line.addText(code).add(vec->media);
    // The bounds mean nothing until a value other than 0 was seen.
    line.add(vec->nNon0 > 0 ? vec->sngMin : 0.0).add(vec->nNon0 > 0 ? vec->sngMax : 0.0);
    line.addInt(vec->N).addInt(vec->nNon0).addInt(vec->nOltreMedia).add(vec->mediaOltreMedia);
    line.add(stats.getNameBestMax(code));
    line.writeTo(context.out);
  }
  return problems.empty() ? kExitOk : kExitDataError;
}

int dispatch(Context& context, const char* group,
             std::initializer_list<std::pair<const char*, int (*)(Context&)>> commands) {
  if (context.args.empty()) {
    context.err << "koru: " << group << " needs a subcommand\n";
    return kExitUsage;
  }
  const std::string sub = context.args.front();
  context.args.erase(context.args.begin());
  for (const auto& [name, run] : commands)
    if (sub == name) return run(context);
  context.err << "koru: unknown " << group << " subcommand '" << sub << "'\n";
  return kExitUsage;
}

}  // namespace

int runSiteCommand(Context& context) {
  return dispatch(context, "site", {{"list", siteList}, {"create", siteCreate}, {"uni", siteUni}});
}

int runVerticalCommand(Context& context) {
  return dispatch(context, "vertical",
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
