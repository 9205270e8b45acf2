#pragma once
// The depths of a seismic test, each a cls_zSTRIKES, kept in rising Z. Positions are 1-based,
// as every collection of the program is; 0 means "none".
//
// Two depths closer than 0.5 mm are one depth: the index file keeps Z to the millimetre, so a
// depth typed again or read back from a seismogram finds its group.
//
// The operations on seismogram files (setGood, setBad, setNoise, moveFile) take the file's path
// and report through a Diagnostic; they never throw and leave the index unchanged when they fail.
// References and pointers to items stay valid only until the next add, Remove or Clear.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "seismic/cls_zSTRIKES.h"

namespace koru {

class cls_SEISMOGRAM;

class cls_STRIKES {
 public:
  // Inserts the depth ahead of the first one with a greater Z and returns its position.
  // (Callers look up getIndex_byZ first: a second group at the same depth is not made here.)
  int add(cls_zSTRIKES zstrike);

  int Count() const { return static_cast<int>(items_.size()); }
  // The depth at a position from 1; nullptr outside 1..Count.
  cls_zSTRIKES* item(int position);
  const cls_zSTRIKES* item(int position) const;
  // False for a position outside 1..Count.
  bool Remove(int position);
  void Clear() { items_.clear(); }

  // Iteration in rising Z.
  std::vector<cls_zSTRIKES>::iterator begin() { return items_.begin(); }
  std::vector<cls_zSTRIKES>::iterator end() { return items_.end(); }
  std::vector<cls_zSTRIKES>::const_iterator begin() const { return items_.begin(); }
  std::vector<cls_zSTRIKES>::const_iterator end() const { return items_.end(); }

  // Number of depths with at least one good file.
  int countSignicative() const;
  // Position of the depth with |Z - z| < 0.0005; 0 when there is none.
  int getIndex_byZ(float z) const;
  // The depth nearest to z (the first of equal distances): its position when it lies at z as
  // getIndex_byZ takes it, minus its position when it is only a neighbour; 0 for no depth.
  // Acquisition reads a negative answer as "a new depth, next to this one".
  int getIndex_ClosestZ(float z) const;
  int deepestIndex() const { return Count(); }
  float getDeepestZ() const;  // 0 with no depth

  // For a file at a depth: "g", "b", "n" or "" (also when no depth lies at z).
  std::string getQualityOfSeismogram(float z, std::string_view name) const;
  std::string getElabStringOfSeismogram(float z, std::string_view name) const;
  // Stores the record's elab string and velocity for the file at that depth. False when the
  // depth or the file is not there.
  bool updateSeismogramElab(float z, std::string_view name, const cls_SEISMOGRAM& record);

  // Moves the file into the good, bad or noise list of its depth: the depth is the one written
  // in the seismogram (so the index follows the file). setGood evaluates the record with the
  // file's elab string (or the default settings of its wave). False, with `why`, when the file
  // cannot be read or no depth lies at its Z; false without a reason when the file is not in a
  // list it can move from (see cls_zSTRIKES).
  bool setGood(const std::filesystem::path& path, Diagnostic* why = nullptr);
  bool setBad(const std::filesystem::path& path, Diagnostic* why = nullptr);
  bool setNoise(const std::filesystem::path& path, Diagnostic* why = nullptr);

  // Changes a seismogram's depth: the file is rewritten with Z = newZ, the name leaves the list
  // of its depth and goes into the same kind of list at newZ (created if missing), a good file
  // being evaluated again for its new path length; a depth left empty goes. False, with `why`,
  // and nothing changed when no depth lists the file or it cannot be read or written.
  bool moveFile(const std::filesystem::path& path, float newZ, Diagnostic* why = nullptr);

  // The greatest file number of all depths; 0 with none.
  int32_t getMaxFileNumber() const;

 private:
  // Position of the first depth whose lists hold the name; 0 when none.
  int positionHolding(std::string_view name) const;
  // The depth written in a seismogram's header, for the lookups by file.
  int depthOfFile(const std::filesystem::path& path, cls_SEISMOGRAM& record, bool wholeFile, Diagnostic* why) const;

  std::vector<cls_zSTRIKES> items_;
};

}  // namespace koru
