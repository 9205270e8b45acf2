#include "usage.h"

#include <array>
#include <ostream>
#include <string>

#include "dmt/DMTOptions.h"

namespace koru::cli {

namespace {

struct CommandUsage {
  std::string_view name;       // group and subcommand
  std::string_view arguments;  // what follows the name
  std::string_view summary;
};

constexpr std::array<CommandUsage, 20> kCommands{{
    {"dmt eval", "FILE.dat [--set NAME=VALUE]... [--units] [--table] [--allow-partial]",
     "evaluate a DMT test; CSV on stdout (--units: a second header line with the units;\n"
     "--table: a readable table; --allow-partial: what could be read of a broken file)"},
    {"dmt save", "IN.dat OUT.dat [--force]",
     "load a DMT test and save it in the program's own form, with its Thrust.dat beside OUT.dat\n"
     "(--force: replace files of another test already there)"},
    {"dmt uni", "IN.dat OUT.uni [--set NAME=VALUE]...", "the evaluated test as a DMTUNI92 exchange file"},
    {"site list", "", "sites with their names (CSV)"},
    {"site create", "NAME", "a new site; prints its folder"},
    {"site uni", "SITE_n --out DIR", "a DMTUNI92 file for each DMT test of the site"},
    {"site repair", "SITE_n", "cleans what interrupted changes left in the site; prints what it did"},
    {"vertical create", "SITE_n [NAME]", "a new vertical; prints its folder"},
    {"vertical list", "SITE_n", "the verticals in the site's order (CSV)"},
    {"vertical show", "SITE_n VERT_m", "the vertical's header"},
    {"vertical reorder", "SITE_n INDEX...", "a new order, by the indices of the list"},
    {"vertical remove", "SITE_n VERT_m", "delete a vertical with all its files"},
    {"vertical eval", "SITE_n VERT_m [--set NAME=VALUE]... [--units] [--table]",
     "the vertical's DMT test evaluated with its own profiles, as dmt eval"},
    {"vertical seismic", "SITE_n VERT_m --wave S|P",
     "the depths of the seismic test: mean velocity, spread, best, good, bad, noise (CSV)"},
    {"vertical stats", "SITE_n VERT_m [--set NAME=VALUE]... [--units]",
     "statistics of each parameter and its best plot maximum (CSV; --units: a unit column),\n"
     "the DMT test evaluated as vertical eval does"},
    {"seismogram eval", "FILE.kor [--elab TEXT]",
     "delay and velocity of one strike, with the default or the given elaboration (CSV)"},
    {"seismogram show", "FILE.kor", "the strike's header, means, extremes and scale"},
    {"dissipation eval", "FILE.dis", "Tflex, Ch and Kh of a dissipation test (CSV)"},
    {"dissipation report", "FILE.dis", "the checks of the Tflex interpretation"},
    {"help", "[COMMAND]", "the usage of a command; without one, every command"},
}};

constexpr std::string_view kGlobalOptions =
    "  --root DIR   the folder that holds SITES/ (default: ~/KORU)\n"
    "  --lang NAME  language of the texts: English (default), Italiano, French\n"
    "  --version    the program's version\n";

const CommandUsage* find(std::string_view name) {
  for (const auto& command : kCommands)
    if (command.name == name) return &command;
  return nullptr;
}

std::string synopsis(const CommandUsage& command) {
  std::string line = "koru " + std::string(command.name);
  if (!command.arguments.empty()) line += " " + std::string(command.arguments);
  return line;
}

void writeCommand(std::ostream& out, const CommandUsage& command) {
  out << "  " << synopsis(command) << '\n';
  std::string_view rest = command.summary;
  while (!rest.empty()) {
    const size_t end = rest.find('\n');
    out << "      " << rest.substr(0, end) << '\n';
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
}

bool inGroup(const CommandUsage& command, std::string_view group) {
  return command.name.size() > group.size() && command.name.starts_with(group) && command.name[group.size()] == ' ';
}

// The names --set takes: the readable one, then the field's own.
void writeOptionNames(std::ostream& out) {
  out << "\n  --set NAME=VALUE takes these names (or the field names in brackets); flags and the\n"
         "  thrust methods take 0 or 1, the ...Method ones a line of their table:\n";
  for (std::string_view field : optionFieldNames())
    out << "    " << optionReadableName(field) << " (" << field << ")\n";
}

}  // namespace

int usageError(Context& context, std::string_view command) {
  const CommandUsage* usage = find(command);
  context.err << "koru: usage: " << (usage ? synopsis(*usage) : "koru " + std::string(command)) << '\n';
  return kExitUsage;
}

void writeUsage(std::ostream& out) {
  out << "usage: koru [--root DIR] [--lang NAME] COMMAND ...\n\n";
  for (const auto& command : kCommands) writeCommand(out, command);
  out << '\n' << kGlobalOptions;
}

int runHelp(Context& context) {
  if (context.args.empty()) {
    writeUsage(context.out);
    return kExitOk;
  }
  std::string name = context.args[0];
  for (size_t i = 1; i < context.args.size(); ++i) name += " " + context.args[i];
  if (const CommandUsage* command = find(name)) {
    writeCommand(context.out, *command);
    if (command->arguments.find("--set") != std::string_view::npos) writeOptionNames(context.out);
    return kExitOk;
  }
  bool any = false;
  for (const auto& command : kCommands) {
    if (!inGroup(command, name)) continue;
    writeCommand(context.out, command);
    any = true;
  }
  if (any) return kExitOk;
  context.err << "koru: no command '" << name << "'; koru help lists them\n";
  return kExitUsage;
}

int runGroup(Context& context, std::string_view group,
             std::initializer_list<std::pair<std::string_view, int (*)(Context&)>> commands) {
  if (!context.args.empty()) {
    const std::string sub = context.args.front();
    for (const auto& [name, run] : commands) {
      if (sub != name) continue;
      context.args.erase(context.args.begin());
      return run(context);
    }
    context.err << "koru: unknown " << group << " subcommand '" << sub << "'\n";
  } else {
    context.err << "koru: " << group << " needs a subcommand\n";
  }
  for (const auto& command : kCommands)
    if (inGroup(command, group)) writeCommand(context.err, command);
  return kExitUsage;
}

}  // namespace koru::cli
