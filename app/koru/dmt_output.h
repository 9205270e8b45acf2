#pragma once
// The evaluated DMT test on the command line: the options of an evaluation (--set, --units,
// --table, --allow-partial) and its output, shared by `dmt eval` and `vertical eval` (and the
// options by `dmt uni` and `vertical stats`).

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "dmt/DMTOptions.h"

namespace koru {
class cls_DmtTEST;
}

namespace koru::cli {

struct EvalOutputOptions {
  DMTOptions options;
  bool units = false;  // a second header line with the unit of each column
  bool table = false;
  bool allowPartial = false;
  std::vector<std::string> positional;  // what is not an option, in order
};

// False (with the reason on `err`) for an unknown option or a bad --set.
bool parseEvalOptions(const std::vector<std::string>& args, EvalOutputOptions& parsed, std::ostream& err);

// The options a test is evaluated with (DMTOptions::forTest). Nothing, after telling on `err`
// why with the test's name `what`, when a thrust field given with --set cannot apply to it.
std::optional<DMTOptions> evaluationOptions(const DMTOptions& given, bool testHasThrust, std::string_view what,
                                            std::ostream& err);

// CSV (one line per row, numbers in 9 significant digits, the soil description last; columns
// named after the parameters, with their units on a second line if asked) or, with --table, a
// table for people.
void writeEvaluation(const cls_DmtTEST& test, const EvalOutputOptions& output, Context& context);

}  // namespace koru::cli
