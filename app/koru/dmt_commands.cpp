#include <ostream>

#include "commands.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "dmt_output.h"
#include "usage.h"

namespace koru::cli {

namespace {

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

int runEval(Context& context) {
  EvalOutputOptions parsed;
  if (!parseEvalOptions(context.args, parsed, context.err)) return kExitUsage;
  if (parsed.positional.size() != 1) return usageError(context, "dmt eval");
  cls_DmtTEST test;
  bool partial = false;
  if (!loadTest(test, parsed.positional[0], parsed.allowPartial, context.err, partial)) return kExitDataError;
  const auto options = evaluationOptions(parsed.options, test.blnHasThrust, parsed.positional[0], context.err);
  if (!options) return kExitUsage;
  cls_GAMMA gamma;
  cls_U u;
  test.evalDMT(gamma, u, *options);
  writeEvaluation(test, parsed, context);
  return partial ? kExitDataError : kExitOk;
}

int runSave(Context& context) {
  if (context.args.size() != 2) return usageError(context, "dmt save");
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

int runUni(Context& context) {
  EvalOutputOptions parsed;
  if (!parseEvalOptions(context.args, parsed, context.err)) return kExitUsage;
  if (parsed.positional.size() != 2 || parsed.units || parsed.table || parsed.allowPartial)
    return usageError(context, "dmt uni");
  cls_DmtTEST test;
  bool partial = false;
  if (!loadTest(test, parsed.positional[0], false, context.err, partial)) return kExitDataError;
  const auto options = evaluationOptions(parsed.options, test.blnHasThrust, parsed.positional[0], context.err);
  if (!options) return kExitUsage;
  cls_GAMMA gamma;
  cls_U u;
  test.evalDMT(gamma, u, *options);
  Diagnostic why;
  if (!test.generateUNI(parsed.positional[1], &why)) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  return kExitOk;
}

}  // namespace

int runDmtCommand(Context& context) {
  return runGroup(context, "dmt", {{"eval", runEval}, {"save", runSave}, {"uni", runUni}});
}

}  // namespace koru::cli
