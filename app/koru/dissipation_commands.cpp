#include <ostream>

#include "commands.h"
#include "csv_output.h"
#include "dissipation/cls_DissTEST.h"
#include "usage.h"

namespace koru::cli {

namespace {

const char* statusText(TflexStatus status) {
  switch (status) {
    case TflexStatus::Computed: return "";
    case TflexStatus::TooFewReadings: return "fewer than 4 readings: no flex computed";
    case TflexStatus::SingularSystem: return "the readings do not determine a cubic: no flex computed";
    case TflexStatus::ZeroCubicTerm: return "the fitted cubic has no flex";
    case TflexStatus::NumericFault: return "the fit went out of range: no flex computed";
  }
  return "";
}

// Loads and interprets the test. A file that is not a dissipation test, or that broke off,
// ends the command; a test whose fit fails is still shown, with the reason on stderr.
bool loadAndCalculate(Context& context, cls_DissTEST& test) {
  const std::filesystem::path file = context.args[0];
  test.folder = file.parent_path();
  test.filename = file;
  Diagnostic why;
  if (test.parseFile(&why) != LoadStatus::Complete) {
    context.err << why.toString() << '\n';
    return false;
  }
  const TflexStatus status = test.calculate();
  if (status != TflexStatus::Computed) context.err << file.string() << ": " << statusText(status) << '\n';
  return true;
}

int dissipationEval(Context& context) {
  if (context.args.size() != 1) return usageError(context, "dissipation eval");
  cls_DissTEST test;
  if (!loadAndCalculate(context, test)) return kExitDataError;
  context.out << "Zd,N,FlexT,FlexA,isGoodFlex,Ch,ChMinutes,Kh,Po\n";
  CsvLine line;
  line.add(test.Zd()).addInt(test.N()).add(test.FlexT).add(test.FlexA).addInt(test.isGoodFlex ? 1 : 0);
  // The three results are the program's texts ("1.94 * 10 ^ - 4"), always quoted.
  line.addQuoted(test.strCh()).addQuoted(test.ChMinutes()).addQuoted(test.strKh());
  line.add(test.Po());
  line.writeTo(context.out);
  return kExitOk;
}

int dissipationReport(Context& context) {
  if (context.args.size() != 1) return usageError(context, "dissipation report");
  cls_DissTEST test;
  if (!loadAndCalculate(context, test)) return kExitDataError;
  std::string text = test.test();
  for (char c : text)
    if (c != '\r') context.out << c;
  if (!text.empty() && text.back() != '\n') context.out << '\n';
  return kExitOk;
}

}  // namespace

int runDissipationCommand(Context& context) {
  return runGroup(context, "dissipation", {{"eval", dissipationEval}, {"report", dissipationReport}});
}

}  // namespace koru::cli
