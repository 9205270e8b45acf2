#pragma once
// The usage of every command, in one table: `koru help`, `koru help COMMAND`, --help and the
// usage errors all print from it, so the texts never drift apart.

#include <initializer_list>
#include <iosfwd>
#include <string_view>
#include <utility>

#include "commands.h"

namespace koru::cli {

// Tells the usage of a command ("dmt eval") on stderr; gives the usage-error exit code.
int usageError(Context& context, std::string_view command);

// Every command with its usage: what `koru help` and --help print.
void writeUsage(std::ostream& out);

// `koru help [COMMAND]`: the usage of one command (with the names --set takes, for the
// commands that evaluate), of a group ("vertical"), or of all.
int runHelp(Context& context);

// Runs the subcommand named by the first argument of a group ("vertical" ...); a missing or
// unknown one is a usage error that lists the group's commands.
int runGroup(Context& context, std::string_view group,
             std::initializer_list<std::pair<std::string_view, int (*)(Context&)>> commands);

}  // namespace koru::cli
