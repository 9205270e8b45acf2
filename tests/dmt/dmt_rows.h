#pragma once
// Shared inputs of the DMT tests: a record built from rows as they stand, and the string lines
// of a .dat file.

#include <array>
#include <initializer_list>
#include <string>

#include "dmt/cls_DmtTEST.h"

namespace koru::testing {

// Rows written {Z, A, B, C}, stored as given: no editing rule decides what goes in.
inline cls_DmtTEST withRows(std::initializer_list<std::array<float, 4>> rows) {
  cls_DmtTEST t;
  for (const auto& r : rows) {
    t.vZ.push_back(r[0]);
    t.vA.push_back(static_cast<int16_t>(r[1]));
    t.vB.push_back(static_cast<int16_t>(r[2]));
    t.vC.push_back(static_cast<int16_t>(r[3]));
  }
  t.vTH.resize(t.vZ.size());
  return t;
}

inline const std::string kDatStrings =
    "\"Studio Rossi\",\"Comune di Prato\"\r\n\"Job 7\",\"Via Roma\",\"no remark\"\r\n\"5 MAR 2008\",\"DMT1\"\r\n";

}  // namespace koru::testing
