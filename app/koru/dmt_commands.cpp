#include <ostream>

#include "commands.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/Thrust.h"
#include "dmt/cls_U.h"
#include "dmt_output.h"

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
  if (parsed.positional.size() != 1) {
    context.err << "koru: usage: koru dmt eval FILE.dat [--set NAME=VALUE]... [--table] [--allow-partial]\n";
    return kExitUsage;
  }
  cls_DmtTEST test;
  bool partial = false;
  if (!loadTest(test, parsed.positional[0], parsed.allowPartial, context.err, partial)) return kExitDataError;
  cls_GAMMA gamma;
  cls_U u;
  test.evalDMT(gamma, u, optionsForTest(parsed.options, test.blnHasThrust));
  writeEvaluation(test, parsed, context);
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

int runUni(Context& context) {
  EvalOutputOptions parsed;
  if (!parseEvalOptions(context.args, parsed, context.err)) return kExitUsage;
  if (parsed.positional.size() != 2) {
    context.err << "koru: usage: koru dmt uni IN.dat OUT.uni [--set NAME=VALUE]...\n";
    return kExitUsage;
  }
  cls_DmtTEST test;
  bool partial = false;
  if (!loadTest(test, parsed.positional[0], false, context.err, partial)) return kExitDataError;
  cls_GAMMA gamma;
  cls_U u;
  test.evalDMT(gamma, u, optionsForTest(parsed.options, test.blnHasThrust));
  Diagnostic why;
  if (!test.generateUNI(parsed.positional[1], &why)) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  return kExitOk;
}

}  // namespace

int runDmtCommand(Context& context) {
  if (context.args.empty()) {
    context.err << "koru: dmt needs a subcommand: eval, save, uni\n";
    return kExitUsage;
  }
  const std::string sub = context.args.front();
  context.args.erase(context.args.begin());
  if (sub == "eval") return runEval(context);
  if (sub == "save") return runSave(context);
  if (sub == "uni") return runUni(context);
  context.err << "koru: unknown dmt subcommand '" << sub << "'\n";
  return kExitUsage;
}

}  // namespace koru::cli
