#pragma once
// From process entry to a ready program. Main creates the window, then runs readSettings and
// initDefaults in that order; the window steps belong to the desktop program.

#include "frame/AppState.h"
#include "frame/diagnostic.h"
#include "frame/settings_store.h"

#include <vector>

namespace koru {

// Reads the settings into the state, in the order the program has always read them (language
// first, then units and the serial line, then the rest), removes keys that are no longer used,
// and makes sure the SITES folder exists. Problems that do not stop the start (a folder that
// cannot be made) come back as diagnostics.
std::vector<Diagnostic> readSettings(AppState& state, SettingsStore& settings);

// Fills what no setting carries: the temp folder, the interpretation defaults, the plot and
// report defaults, the mask character, the missing-date marker and the seismic sample step.
void initDefaults(AppState& state);

}  // namespace koru
