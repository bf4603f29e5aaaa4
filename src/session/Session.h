// The state shared by all rooms: what is to be purged and how, measured speeds, and stop requests.
// These are plain variables. This file includes no other file of the program, so that every room
// may include it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

/// Folder of the files to purge, with a trailing backslash; "" = not specified.
inline std::string strDirPath;
/// Start folder of the browsers; set together with strDirPath when a folder is chosen.
inline std::string strBrowsePath;
/// A single file name, "*.*", "*.ext" or a wildcard form; "" = not specified.
inline std::string strFilespec;
/// True when a folder plus file specification is set, false when a single file is set.
inline bool blnMultipleFiles = false;
/// Include matching files in all subfolders.
inline bool blnSubdirectories = false;
/// Ask before each file is purged.
inline bool blnConfirmFiles = false;

/// Last measured purge speed in MB/s for one overwrite; 0 = none yet.
inline float sngPurgeSpeed = 0;

constexpr int intNumDrives = 26; ///< drive letters A to Z
/// Per drive letter (index = letter − 'A'): the speed in MB/s for one overwrite (0 = not measured),
/// then the bytes written and the seconds taken in the measurement.
inline std::array<float, intNumDrives> sngPurgeSpeeds{};
inline std::array<double, intNumDrives> dblBytesMeasured{};
inline std::array<double, intNumDrives> dblSecondsMeasured{};

/// Per drive letter: the seconds that a small file takes beyond its bytes, for one overwrite; 0 =
/// not measured.
inline std::array<double, intNumDrives> dblSmallFileSeconds{};

/// The two coefficients of the write-time adjustment factor AF = A / (size in MB ^ B).
constexpr double dblDefaultAF_A = 0.917;
constexpr double dblDefaultAF_B = 0.2;
inline double dblAF_A = dblDefaultAF_A;
inline double dblAF_B = dblDefaultAF_B;

/// Base name of the dummy files and of their folder.
constexpr const char* strDefaultDummyFileFolderStub = "_nw_dummy";
inline std::string strDummyFileFolderStub = strDefaultDummyFileFolderStub;
/// Largest dummy file written in one piece, bytes.
constexpr double dblStandardDummySize = 52428800;
inline double dblMaxSizeDummyFile = dblStandardDummySize;
/// The number of dummy files needed to fill the current drive.
inline std::int64_t intNumDummyFiles = 0;
/// Bytes in the free clusters of the drive queried last.
inline double dblSpaceInFreeClusters = 0;

/// A stop request, by F10 in any window or by the report's Stop. After a loop it is also the loop's
/// result: true means that the operation was stopped.
inline bool blnStop = false;
/// The user chose "Cancel purge operation" in the purge advice.
inline bool blnStopPurge = false;
/// The number of files at which a count ends; 0 = count all.
inline std::int32_t intStopAt = 0;

inline bool blnPurgingFreeSpace = false;
inline bool blnPurgingDrive = false;
inline bool blnDisplayDialogBoxesDuringRemainderOfPurgeDrive = true;

/// Purge advice on or off while the program runs.
inline bool blnShowPurgeWarning = true;
/// Set when the user wants no more confirmations in this run.
inline bool blnPurgeRemainingFiles = false;

/// False while start-up runs.
inline bool blnStartupCompleted = false;
