#pragma once
// The strikes of one depth of a seismic test: which seismograms the user judged good, bad or
// noise, the velocities of the good ones, their elab strings, and the best strike.
//
// Every list is kept as the text the index file holds, so that an index read and written again
// comes out as it went in:
//   goodList, badList, noiseList   file names joined by ","  ("1204,1205")
//   vList                          velocities of the good files, in goodList's order, by ","
//   elabGood, elabBad, elabNoise   elab strings of each list, in its order, joined by "#"
//                                  (elab strings use "," and ";" themselves)
// A file name is the seismogram's file name without folder or extension: a decimal number.
// vList and the three elab lists are parallel to their file list: position i belongs to the
// i-th file. An operation that changes a list re-aligns its parallel lists to it (a missing item
// becomes empty), so a hand-edited index that lost an item cannot shift the others.
//
// A file stands in at most one of the three lists; the moves (setGood, setBad, setNoise) keep it
// so. Which list a strike is in is always the user's decision; nothing here judges a trace.
//
// Nothing here touches the disk: the operations that need a seismogram take the loaded record.
// The depth lookups and the operations on files are in cls_STRIKES and cls_VTEST.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace koru {

class cls_SEISMOGRAM;

// Kinds of list, as getElab and setElab number them.
inline constexpr int16_t kElabGood = 1;
inline constexpr int16_t kElabBad = 2;
inline constexpr int16_t kElabNoise = 3;

// The file name a seismogram stands under in the lists: what lies between the last "\" (or "/")
// of the path and the "." after it ("C:\S\VS_1\1204.kor" -> "1204").
std::string strikeNameOfPath(std::string_view path);

class cls_zSTRIKES {
 public:
  // Fields in the order of the record; see the header comment for the list texts.
  std::string noiseList;
  std::string vList;
  float devStd = -1;  // coefficient of variation of the good velocities, %; -1 below two values
  std::string bestFile;
  std::string elabGood;
  std::string elabBad;
  std::string elabNoise;
  float Z = 0;  // m
  std::string goodList;
  std::string badList;
  int16_t vMean = 0;  // m/s, 0 when no good velocity

  cls_zSTRIKES() = default;
  explicit cls_zSTRIKES(float z) : Z(z) {}

  // "g", "b", "n", or "" when the file is in no list (looked up in that order).
  std::string getListTypeFromFilename(std::string_view name) const;
  bool isGood(std::string_view name) const;
  bool isBad(std::string_view name) const;
  bool isNoise(std::string_view name) const;

  // Append a file to a list with its elab string. addGood also stores the velocity, runs
  // evaluateData and makes the first good file the best one.
  void addGood(std::string_view name, int16_t v, std::string_view elab);
  void addBad(std::string_view name, std::string_view elab);
  void addNoise(std::string_view name, std::string_view elab);

  // Moves a file from the bad or noise list into the good list: the record (already loaded
  // from the file) gets the file's elab string, or the default settings of its wave when it has
  // none, is evaluated, and goes in with its velocity. False, and nothing changed, when the file
  // is in neither list (a good file stays as it is) or when its elab string cannot be read.
  bool setGood(std::string_view name, cls_SEISMOGRAM& record);
  // Moves a file into the bad (noise) list from the good or noise (good or bad) list, with its
  // elab string and without evaluation. False, nothing changed, when it is in neither.
  bool setBad(std::string_view name);
  bool setNoise(std::string_view name);

  // Takes the file out of whichever list holds it, with its velocity and elab string. False
  // when no list holds it.
  bool Remove(std::string_view name);
  // Takes the file out of goodList, vList and elabGood and re-evaluates; when it was the best,
  // the first good file left becomes the best (none if none). False when it is not good.
  bool remove_fromGood(std::string_view name);

  // Elab strings by kind (kElabGood, kElabBad, kElabNoise) and 0-based position in the list.
  // An empty elab list or a position outside the file list gives "".
  std::string getElab(int16_t kind, int position) const;
  std::string getElab_byFName(std::string_view name) const;
  // False when the kind or the position does not name a file of the list.
  bool setElab(int16_t kind, int position, std::string_view text);
  bool setElab_byFName(std::string_view name, std::string_view text);

  // vMean and devStd from the good velocities above 0 (a good strike whose velocity is 0 was
  // not evaluated and does not count): vMean is their mean rounded half to even; devStd is
  // 100 x sqrt(S / (n - 1)) / vMean, S the squared differences from that rounded mean, and -1
  // when fewer than two values count (or the rounded mean is 0).
  void evaluateData();

  // Stores the record's elab string and, for a good file, its velocity V; then evaluateData.
  // False when no list holds the file.
  bool updateSeismogram(const cls_SEISMOGRAM& record, std::string_view name);

  bool isEmpty() const;     // no file in any list
  bool existsGood() const;  // goodList is not empty
  bool existsBest() const;  // bestFile is not empty

  // All file names, good then bad then noise, joined by ",".
  std::string fileList() const;
  // The greatest file number of the depth; 0 when it has none. Names that are not whole
  // numbers do not count.
  int32_t getMaxFileNumber() const;
  // The number of the last good file; -1 when there is none (or it is not a number).
  int32_t getLastGoodIndex() const;
  // badList and goodList joined: the files pseudo-interval elaboration may draw on.
  std::string returnPseudableList() const;

  // The lists as items (an empty text has none); the parallel lists are cut or padded with
  // empty items to their file list's length.
  std::vector<std::string> goodFiles() const;
  std::vector<std::string> badFiles() const;
  std::vector<std::string> noiseFiles() const;
  std::vector<std::string> velocities() const;
  std::vector<std::string> elabs(int16_t kind) const;

 private:
  // The file list and elab list of a kind; nullptr for another kind.
  std::string* fileListOf(int16_t kind);
  const std::string* fileListOf(int16_t kind) const;
  std::string* elabListOf(int16_t kind);
  const std::string* elabListOf(int16_t kind) const;
  // Kind holding the name and its position there; kind 0 when none.
  int16_t find(std::string_view name, int& position) const;
  // Takes the item at a position out of a kind's lists (and vList for good ones).
  void removeAt(int16_t kind, int position);
  void append(int16_t kind, std::string_view name, std::string_view elab);
  void resetBest();
};

}  // namespace koru
