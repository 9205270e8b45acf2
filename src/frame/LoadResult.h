#pragma once
// How a reader of one of the program's files ended. Every reader parses a byte buffer and says
// how far it got in one of these; the operations that the rest of the program calls turn it into
// the status values they return (-1 for a complete read, a flag, ...), so callers keep one shape.

#include <utility>

#include "frame/Diagnostic.h"

namespace koru {

enum class LoadStatus {
  Complete,     // every field was read
  Partial,      // the file broke off or a field was bad: what was read before it is kept
  WrongFormat,  // not a file of this kind: nothing was changed
  Unreadable    // the file could not be opened or read: nothing was changed
};

struct LoadResult {
  LoadStatus status = LoadStatus::Complete;
  Diagnostic why;  // file, line and reason of anything but a complete read

  bool complete() const { return status == LoadStatus::Complete; }
  // Something was read and kept: a complete or a partial read.
  bool readSome() const { return status == LoadStatus::Complete || status == LoadStatus::Partial; }

  static LoadResult fail(LoadStatus status, Diagnostic why) { return {status, std::move(why)}; }
};

}  // namespace koru
