#pragma once
// What a new dissipation test takes over from its vertical: the header texts and, when the
// vertical has a DMT test, its membrane calibration. Filled by whoever holds the vertical, so that
// the dissipation records do not depend on the site store.

#include <cstdint>
#include <string>

namespace koru {

struct DissVertData {
  std::string Firm, Customer, Job, Site, Remark, Data, TstName;
  bool hasDmtTest = false;
  int16_t DeltaA = 0, DeltaB = 0;  // kPa, of the DMT test; ignored without one
};

}  // namespace koru
