#include "frame/Diagnostic.h"

namespace koru {

std::string Diagnostic::toString() const {
  std::string out = file.string();
  if (line > 0) out += ":" + std::to_string(line);
  out += ": " + reason;
  return out;
}

}  // namespace koru
