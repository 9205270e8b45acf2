#include <filesystem>
#include <ostream>
#include <system_error>
#include <vector>

#include "commands.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"
#include "dmt_output.h"
#include "usage.h"

namespace koru::cli {

namespace {

namespace fs = std::filesystem;

// Loads the test; a partial read is reported and, unless allowed, ends the command. Thrust rows
// that end at a depth no row matches end the thrust reading quietly: every row of the test was
// read, so the test goes on with a warning.
bool loadTest(cls_DmtTEST& test, const std::string& file, bool allowPartial, std::ostream& err, bool& partial) {
  test.setDatPath(file);
  Diagnostic why;
  partial = false;
  if (test.loadFile(&why) != 0) return true;
  if (test.onlyThrustEndedEarly()) {
    err << "koru: warning: " << why.toString() << '\n';
    return true;
  }
  err << why.toString() << '\n';
  if (!allowPartial || test.N() == 0) return false;
  partial = true;
  err << "koru: " << file << ": only the first " << test.N() << " rows could be read\n";
  return true;
}

// One file under two names (links, "..", a second spelling) is the same file.
bool sameFile(const fs::path& a, const fs::path& b) {
  std::error_code ec, ecA, ecB;
  if (fs::equivalent(a, b, ec)) return true;
  const fs::path canonicalA = fs::weakly_canonical(a, ecA), canonicalB = fs::weakly_canonical(b, ecB);
  return !ecA && !ecB && canonicalA == canonicalB;
}

// The files a loaded test was read from: its .dat file and the Thrust.dat beside it.
std::vector<fs::path> filesRead(const cls_DmtTEST& test) {
  std::vector<fs::path> files{test.getDatPath()};
  if (test.hasThrustFile()) files.push_back(test.thrustFilePath());
  return files;
}

// Writing over a file the command reads would destroy its own input: refused.
bool isAnInput(const fs::path& output, const std::vector<fs::path>& inputs, std::ostream& err) {
  for (const fs::path& input : inputs) {
    if (!sameFile(output, input)) continue;
    err << "koru: " << output.string() << ": is also an input of the command: not replaced\n";
    return true;
  }
  return false;
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
  std::vector<std::string> positional;
  bool force = false;
  for (const std::string& arg : context.args) {
    if (arg == "--force") force = true;
    else positional.push_back(arg);
  }
  if (positional.size() != 2) return usageError(context, "dmt save");
  cls_DmtTEST test;
  bool partial = false;
  if (!loadTest(test, positional[0], false, context.err, partial)) return kExitDataError;
  const std::vector<fs::path> inputs = filesRead(test);
  test.setDatPath(positional[1]);
  // A Thrust.dat left in the target folder would be read with the new test even when the test
  // has no thrust rows of its own, so it counts as an output in every case.
  const std::vector<fs::path> outputs{test.getDatPath(), test.thrustFilePath()};
  for (const fs::path& output : outputs) {
    if (isAnInput(output, inputs, context.err)) return kExitUsage;
    // A file already there holds another test (or its thrust rows): replaced only on request.
    std::error_code ec;
    if (!force && fs::symlink_status(output, ec).type() != fs::file_type::not_found) {
      context.err << "koru: " << output.string() << ": already holds another test: not replaced (--force replaces it)\n";
      return kExitDataError;
    }
  }
  Diagnostic why;
  if (test.saveFile(&why) == 0) {
    context.err << why.toString() << '\n';
    return kExitDataError;
  }
  std::error_code ec;
  if (!test.blnHasThrust && fs::remove(test.thrustFilePath(), ec)) {
    context.err << "koru: " << test.thrustFilePath().string() << ": the thrust rows of the replaced test were removed\n";
  } else if (ec) {
    context.err << "koru: " << test.thrustFilePath().string() << ": cannot remove the thrust rows of the replaced test: "
                << ec.message() << '\n';
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
  if (isAnInput(parsed.positional[1], filesRead(test), context.err)) return kExitUsage;
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
