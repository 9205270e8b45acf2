#include "dmt_output.h"

#include <ostream>

#include "csv_output.h"
#include "dmt/cls_DmtTEST.h"
#include "frame/Numbers.h"
#include "frame/strings/StringTable.h"

namespace koru::cli {

bool parseEvalOptions(const std::vector<std::string>& args, EvalOutputOptions& parsed, std::ostream& err) {
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--units") {
      parsed.units = true;
    } else if (arg == "--table") {
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
      if (eq == std::string::npos) {
        err << "koru: --set needs NAME=VALUE, got '" << assignment << "'\n";
        return false;
      }
      std::string why;
      if (!parsed.options.setByName(assignment.substr(0, eq), assignment.substr(eq + 1), &why)) {
        err << "koru: " << why << (why.starts_with("unknown") ? " (koru help dmt eval lists the names)" : "") << '\n';
        return false;
      }
    } else if (!arg.empty() && arg[0] == '-') {
      err << "koru: unknown option '" << arg << "'\n";
      return false;
    } else {
      parsed.positional.push_back(arg);
    }
  }
  return true;
}

std::optional<DMTOptions> evaluationOptions(const DMTOptions& given, bool testHasThrust, std::string_view what,
                                            std::ostream& err) {
  const std::string conflict = given.thrustConflict(testHasThrust);
  if (conflict.empty()) return given.forTest(testHasThrust);
  err << "koru: " << what << ": " << conflict << '\n';
  return std::nullopt;
}

namespace {

// The CSV columns: the result vectors' names without their prefix, and their units (kPa for
// readings and pressures, MPa for moduli, none for the indices and ratios).
struct Column {
  const char* name;
  const char* unit;
};
constexpr Column kColumns[] = {
    {"Z", "m"},          {"A", "kPa"},      {"B", "kPa"},         {"C", "kPa"},      {"CODREAD", ""},
    {"Po", "kPa"},       {"P1", "kPa"},     {"P2", "kPa"},        {"Gamma", "kN/m3"}, {"SigmaEff", "kPa"},
    {"SigmaV", "kPa"},   {"Sigmah", "kPa"}, {"Uo", "kPa"},        {"Ud", ""},        {"Id", ""},
    {"LogId", ""},       {"Ed", "MPa"},     {"Kd", ""},           {"Ko", ""},        {"OCR", ""},
    {"M", "MPa"},        {"Cu", "kPa"},     {"Phi", "degrees"},   {"SoilType", ""},  {"IdReal", ""},
    {"EdReal", "MPa"},   {"UdReal", ""},    {"description", ""},
};

std::string description(const cls_DmtTEST& t, size_t row, const ProgramStrings* strings) {
  const int id = t.getDescrSoilRealStringId(static_cast<int>(row));
  return id != 0 && strings ? strings->getString(id) : std::string();
}

void writeCsv(const cls_DmtTEST& t, const ProgramStrings* strings, bool units, std::ostream& out) {
  CsvLine header, unitLine;
  for (const Column& column : kColumns) {
    header.addText(column.name);
    unitLine.addText(column.unit);
  }
  header.writeTo(out);
  if (units) unitLine.writeTo(out);
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
    line.addText(description(t, i, strings));
    line.writeTo(out);
  }
}

void writeReadableTable(const cls_DmtTEST& t, const ProgramStrings* strings, std::ostream& out) {
  const std::vector<std::string> header = {"Z m", "A kPa",  "B kPa", "C kPa", "Po",     "P1",     "Id",     "Kd",
                                           "Ed MPa", "Ko", "OCR",   "M MPa", "Cu kPa", "Phi deg", "soil"};
  std::vector<std::vector<std::string>> rows;
  auto cell = [](const std::vector<float>& v, size_t i, const char* pattern) {
    return i < v.size() && v[i] != 0 ? formatNumber(v[i], pattern) : std::string("-");
  };
  for (size_t i = 0; i < t.vZ.size(); ++i) {
    std::string soil = description(t, i, strings);
    rows.push_back({formatNumber(t.vZ[i], "0.00"), std::to_string(t.vA[i]), std::to_string(t.vB[i]),
                    t.vC[i] != 0 ? std::to_string(t.vC[i]) : "-", cell(t.vecPo, i, "0.0"), cell(t.vecP1, i, "0.0"),
                    cell(t.vecId, i, "0.00"), cell(t.vecKd, i, "0.0"), cell(t.vecEd, i, "0.0"),
                    cell(t.vecKo, i, "0.00"), cell(t.vecOCR, i, "0.0"), cell(t.vecM, i, "0.0"),
                    cell(t.vecCu, i, "0.0"), cell(t.vecPhi, i, "0.0"), soil.empty() ? "-" : soil});
  }
  writeTable(out, header, rows, /*leftAlignLast=*/true);
}

}  // namespace

void writeEvaluation(const cls_DmtTEST& test, const EvalOutputOptions& output, Context& context) {
  if (output.table)
    writeReadableTable(test, context.strings, context.out);
  else
    writeCsv(test, context.strings, output.units, context.out);
}

}  // namespace koru::cli
