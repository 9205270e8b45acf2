#include <ostream>

#include "commands.h"
#include "csv_output.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "frame/numbers.h"
#include "frame/strings/StringTable.h"

namespace koru::cli {

namespace {

struct EvalArguments {
  std::string file;
  DMTOptions options;
  bool table = false;
  bool allowPartial = false;
};

bool parseEvalArguments(const std::vector<std::string>& args, EvalArguments& parsed, std::ostream& err) {
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--table") {
      parsed.table = true;
    } else if (arg == "--allow-partial") {
      parsed.allowPartial = true;
    } else if (arg == "--set") {
      if (i + 1 >= args.size()) {
        err << "koru: --set needs NAME=VALUE\n";
        return false;
      }
      const std::string& assignment = args[++i];
      auto eq = assignment.find('=');
      std::string why;
      if (eq == std::string::npos) {
        err << "koru: --set needs NAME=VALUE, got '" << assignment << "'\n";
        return false;
      }
      if (!parsed.options.setByName(assignment.substr(0, eq), assignment.substr(eq + 1), &why)) {
        err << "koru: " << why << '\n';
        return false;
      }
    } else if (!arg.empty() && arg[0] == '-') {
      err << "koru: unknown option '" << arg << "'\n";
      return false;
    } else if (parsed.file.empty()) {
      parsed.file = arg;
    } else {
      err << "koru: unexpected argument '" << arg << "'\n";
      return false;
    }
  }
  if (parsed.file.empty()) {
    err << "koru: dmt eval needs a .dat file\n";
    return false;
  }
  return true;
}

// Loads the test; a partial read is reported and, unless allowed, ends the command.
bool loadTest(cls_DmtTEST& test, const std::string& file, bool allowPartial, std::ostream& err, bool& partial) {
  test.setDatPath(file);
  Diagnostic why;
  partial = false;
  if (test.loadFile(&why) != 0) return true;
  err << why.toString() << '\n';
  if (!allowPartial || test.N() == 0) return false;
  partial = true;
  err << "koru: " << file << ": only the first " << test.N() << " rows could be read\n";
  return true;
}

void writeCsv(const cls_DmtTEST& t, const ProgramStrings* strings, std::ostream& out) {
  out << "Z,A,B,C,vecCODREAD,vecPo,vecP1,vecP2,vecGamma,vecSigmaEff,vecSigmaV,vecSigmah,vecUo,vecUd,vecId,vecLogId,"
         "vecEd,vecKd,vecKo,vecOCR,vecM,vecCu,vecPhi,vecSoilType,vecIdReal,vecEdReal,vecUdReal,description\n";
  for (size_t i = 0; i < t.vZ.size(); ++i) {
    auto at = [i](const std::vector<float>& v) { return i < v.size() ? static_cast<double>(v[i]) : 0.0; };
    CsvLine line;
    line.add(t.vZ[i]).addInt(t.vA[i]).addInt(t.vB[i]).addInt(t.vC[i]);
    line.addInt(i < t.vecCODREAD.size() ? t.vecCODREAD[i] : 0);
    for (const auto* v : {&t.vecPo, &t.vecP1, &t.vecP2, &t.vecGamma, &t.vecSigmaEff, &t.vecSigmaV, &t.vecSigmah,
                          &t.vecUo, &t.vecUd, &t.vecId, &t.vecLogId, &t.vecEd, &t.vecKd, &t.vecKo, &t.vecOCR,
                          &t.vecM, &t.vecCu, &t.vecPhi})
      line.add(at(*v));
    line.addInt(i < t.vecSoilType.size() ? t.vecSoilType[i] : 0);
    line.add(at(t.vecIdReal)).add(at(t.vecEdReal)).add(at(t.vecUdReal));
    const int descriptionId = t.getDescrSoilRealStringId(static_cast<int>(i));
    line.addText(descriptionId != 0 && strings ? strings->getString(descriptionId) : std::string());
    line.writeTo(out);
  }
}

void writeReadableTable(const cls_DmtTEST& t, std::ostream& out) {
  const std::vector<std::string> header = {"Z m",  "A kPa", "B kPa", "C kPa", "Po",  "P1",     "Id",     "Kd",
                                           "Ed MPa", "Ko", "OCR",   "M MPa", "Cu kPa", "Phi deg", "soil"};
  std::vector<std::vector<std::string>> rows;
  auto cell = [](const std::vector<float>& v, size_t i, const char* pattern) {
    return i < v.size() && v[i] != 0 ? formatNumber(v[i], pattern) : std::string("-");
  };
  for (size_t i = 0; i < t.vZ.size(); ++i) {
    rows.push_back({formatNumber(t.vZ[i], "0.00"), std::to_string(t.vA[i]), std::to_string(t.vB[i]),
                    t.vC[i] != 0 ? std::to_string(t.vC[i]) : "-", cell(t.vecPo, i, "0.0"), cell(t.vecP1, i, "0.0"),
                    cell(t.vecId, i, "0.00"), cell(t.vecKd, i, "0.0"), cell(t.vecEd, i, "0.0"),
                    cell(t.vecKo, i, "0.00"), cell(t.vecOCR, i, "0.0"), cell(t.vecM, i, "0.0"),
                    cell(t.vecCu, i, "0.0"), cell(t.vecPhi, i, "0.0"),
                    i < t.vecSoilType.size() && t.vecSoilType[i] != 0 ? std::to_string(t.vecSoilType[i]) : "-"});
  }
  writeTable(out, header, rows);
}

int runEval(Context& context) {
  EvalArguments parsed;
  if (!parseEvalArguments(context.args, parsed, context.err)) return kExitUsage;
  cls_DmtTEST test;
  bool partial = false;
  if (!loadTest(test, parsed.file, parsed.allowPartial, context.err, partial)) return kExitDataError;
  cls_GAMMA gamma;
  cls_U u;
  test.evalDMT(gamma, u, parsed.options);
  if (parsed.table)
    writeReadableTable(test, context.out);
  else
    writeCsv(test, context.strings, context.out);
  return partial ? kExitDataError : kExitOk;
}

int runSave(Context& context) {
  if (context.args.size() != 2) {
    context.err << "koru: usage: koru dmt save IN.dat OUT.dat\n";
    return kExitUsage;
  }
  cls_DmtTEST test;
  bool partial = false;
  if (!loadTest(test, context.args[0], false, context.err, partial)) return kExitDataError;
  test.setDatPath(context.args[1]);
  Diagnostic why;
  if (test.saveFile(&why) == 0) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  return kExitOk;
}

}  // namespace

int runDmtCommand(Context& context) {
  if (context.args.empty()) {
    context.err << "koru: dmt needs a subcommand: eval, save\n";
    return kExitUsage;
  }
  const std::string sub = context.args.front();
  context.args.erase(context.args.begin());
  if (sub == "eval") return runEval(context);
  if (sub == "save") return runSave(context);
  context.err << "koru: unknown dmt subcommand '" << sub << "'\n";
  return kExitUsage;
}

}  // namespace koru::cli
