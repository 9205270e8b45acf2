#pragma once
// From process entry to a ready program. Main creates the window, then runs readSettings and
// initDefaults in that order; the window steps belong to the desktop program.

#include <vector>

#include "program/AppState.h"
#include "frame/Diagnostic.h"
#include "frame/Prompts.h"
#include "frame/SettingsStore.h"
#include "frame/strings/Language.h"

namespace koru {

struct StartupReport {
  // What did not stop the start but must be told: a folder that cannot be made, a missing
  // English language file (the program then runs with whatever texts it has).
  std::vector<Diagnostic> problems;
  LanguageChoice language;           // showPicker: nothing was stored, let the user choose now
};

// Reads the settings into the state, in the order the program has always read them (language
// first, as every later message needs it, then units and the serial line, then the rest),
// removes keys that are no longer used, and makes sure the SITES folder exists. Messages of the
// start (missing texts of a language) go through `prompts`, which the strings keep.
StartupReport readSettings(AppState& state, SettingsStore& settings, Prompts& prompts);

// Fills what no setting carries: the temp folder, the interpretation defaults, the plot and
// report defaults, the mask character, the missing-date marker and the seismic sample step.
void initDefaults(AppState& state);

// The start of the program without its window: readSettings, initDefaults, and no site or
// vertical open. The desktop program creates its main window before this and restores the
// window frame and shows the start screen after it.
StartupReport startUp(AppState& state, SettingsStore& settings, Prompts& prompts);

}  // namespace koru
