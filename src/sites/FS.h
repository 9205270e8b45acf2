#pragma once
// The folder tree of the field data and the files that name it.
//
//   <sites>/SITE_n/SITE_n.dat          site file: display name, then one VERT_m name a line
//   <sites>/SITE_n/VERT_m/VERT_m.dat   vertical file, and the files of the tests made there
//
// There is no index anywhere: the numbers in the folder names are the identity of sites and
// verticals, so every name that comes from a file or a listing is checked before it is turned
// into a path. None of these functions throws; file system errors become a false result (and a
// Diagnostic where one is asked for).

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"

namespace koru::FS {

inline constexpr std::string_view kSitePrefix = "SITE_";
inline constexpr std::string_view kVerticalPrefix = "VERT_";

// --- Names ----------------------------------------------------------------------------------

// The number of "SITE_n" or "VERT_m": n must be written plainly (digits only, no sign, no
// leading zero, at least 1), so that one number has exactly one folder name.
std::optional<int> folderNumber(std::string_view name);
// The same, but only for the given prefix.
std::optional<int> folderNumber(std::string_view name, std::string_view prefix);
// "SITE_" or "VERT_" followed by a number.
bool isValidFolderName(std::string_view name);

// A new site or vertical is built under a hidden name and renamed into place when whole; one
// being removed is first renamed aside under another. Either name left in a folder is what an
// interrupted change leaves behind. The lock file sits in the sites folder and in each site's
// folder; the programs that change them lock it.
inline constexpr std::string_view kBuildingEnd = ".new~";
inline constexpr std::string_view kRemovingEnd = ".removed~";
inline constexpr std::string_view kLockFileName = ".koru-lock";
std::string buildingName(std::string_view folderName);  // ".VERT_m.new~"
std::string removingName(std::string_view folderName);  // ".VERT_m.removed~"
// The SITE_n or VERT_m a leftover name stands for; nullopt for any other name.
std::optional<std::string> leftoverOf(std::string_view name);

// The smallest SITE_n (n from 1) that names nothing below `sitesPath`, and no leftover either.
// A file in the way is skipped with a log line; "" if the folder cannot be inspected.
std::string newSiteFolderName(const std::filesystem::path& sitesPath);
// The same for VERT_m below a site folder; a number the site file names is taken too, even when
// its folder is missing.
std::string newVerticalFolderName(const std::filesystem::path& siteFolderPath);

// First line of SITE_n/SITE_n.dat. A broken site shows as such in the site list:
//   "(ERROR) invalid sitename"            the folder's name has no number
//   "(ERROR) 'SITE_n' not found"          the folder is missing
//   "(ERROR) 'SITE_n.dat not found"       the site file is missing or unreadable
std::string siteDisplayName(const std::filesystem::path& siteFolderPath);

// Names of the SITE_n folders below `sitesPath`, by number. Files and other names are skipped.
std::vector<std::string> listSiteFolders(const std::filesystem::path& sitesPath);

// VERT_m names in the order of the site file. Lines that are not a vertical name or repeat an
// earlier one are skipped, each with a diagnostic in `problems`. A name whose folder is missing
// stays in the list, with a diagnostic: the line keeps its number until the user removes it.
std::vector<std::string> listVerticalFolders(const std::filesystem::path& siteFolderPath,
                                             std::vector<Diagnostic>* problems = nullptr);

// The leftovers of interrupted changes in a folder (see buildingName), by name.
std::vector<std::string> listLeftovers(const std::filesystem::path& folder);
// VERT_m folders of the site that its site file does not name, by number.
std::vector<std::string> listUnlistedVerticalFolders(const std::filesystem::path& siteFolderPath);

// --- Files and folders ----------------------------------------------------------------------

// Copies a folder with its content; only folders and regular files are copied. A file that
// already exists in `to` is replaced only when `overwrite` is set; otherwise it is kept and the
// result is false. Copying a folder into itself is refused.
bool copyFolder(const std::filesystem::path& from, const std::filesystem::path& to, bool overwrite = false,
                Diagnostic* why = nullptr);
// Removes a folder with all it holds. A missing folder is not an error; a file is refused.
bool deleteFolder(const std::filesystem::path& folder, Diagnostic* why = nullptr);
// Copies one regular file. An existing target is replaced only when `overwrite` is set, and then
// through a temporary file, so a failed copy leaves the old target as it was.
bool copyFile(const std::filesystem::path& from, const std::filesystem::path& to, bool overwrite = false,
              Diagnostic* why = nullptr);
// Moves one file; never replaces an existing target.
bool moveFile(const std::filesystem::path& from, const std::filesystem::path& to, Diagnostic* why = nullptr);
// Bytes of all regular files below the folder (symbolic links are not followed); 0 if missing.
std::uintmax_t folderSize(const std::filesystem::path& folder);
// Copy the "*.kor" / "*.dis" files (any case of the extension) of one folder into another,
// creating it if needed. True when every such file was copied.
bool copySeismograms(const std::filesystem::path& from, const std::filesystem::path& to, bool overwrite = false,
                     Diagnostic* why = nullptr);
bool copyDissipations(const std::filesystem::path& from, const std::filesystem::path& to, bool overwrite = false,
                      Diagnostic* why = nullptr);

// --- Line files -----------------------------------------------------------------------------
// The site and vertical files are Windows-1252 text with CR LF line ends. Reading accepts CR LF,
// LF or a lone CR; a final line end adds no empty line.

// The lines of a line file's bytes, in UTF-8.
std::vector<std::string> textFileLines(std::string_view bytes);
// The bytes of a line file: each line in Windows-1252 followed by CR LF. A line break inside a
// line would shift every later line, so it is written as a blank.
std::string textFileBytes(const std::vector<std::string>& lines);
// Writes textFileBytes through a temporary file, so a failed write keeps the old file.
bool writeTextLines(const std::filesystem::path& file, const std::vector<std::string>& lines,
                    Diagnostic* why = nullptr);

}  // namespace koru::FS
