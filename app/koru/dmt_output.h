#pragma once
// The evaluated DMT test on the command line: the options of an evaluation (--set, --table,
// --allow-partial) and its output, shared by `dmt eval` and `vertical eval`.

#include <iosfwd>
#include <string>
#include <vector>

#include "commands.h"
#include "dmt/DMTOptions.h"

namespace koru {
class cls_DmtTEST;
}

namespace koru::cli {

struct EvalOutputOptions {
  DMTOptions options;
  bool table = false;
  bool allowPartial = false;
  std::vector<std::string> positional;  // what is not an option, in order
};

// False (with the reason on `err`) for an unknown option or a bad --set.
bool parseEvalOptions(const std::vector<std::string>& args, EvalOutputOptions& parsed, std::ostream& err);

// CSV (one line per row, numbers in 9 significant digits, the soil description last) or, with
// --table, a table for people.
void writeEvaluation(const cls_DmtTEST& test, const EvalOutputOptions& output, Context& context);

}  // namespace koru::cli
