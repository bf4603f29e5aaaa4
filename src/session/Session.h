// The state that all rooms share while the program runs: what is to be purged and how, what was
// measured, and whether a stop was asked for. Plain variables, read and written by name; this file
// includes nothing of ours, so that every room may include it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

/// Folder that holds the files to purge, with a trailing backslash; "" = not specified.
inline std::string strDirPath;
/// Folder from which the browsers start; set together with strDirPath when a folder is chosen.
inline std::string strBrowsePath;
/// A single file name, "*.*", "*.ext" or a wildcard form; "" = not specified.
inline std::string strFilespec;
/// True when a folder plus file specification is set, false when a single file is set.
inline bool blnMultipleFiles = false;
/// Operate on matching files in all lower subfolders too.
inline bool blnSubdirectories = false;
/// Ask before each file is purged.
inline bool blnConfirmFiles = false;

/// Last measured purge speed in MB/s for one overwrite; 0 = none yet.
inline float sngPurgeSpeed = 0;

constexpr int intNumDrives = 26; ///< drive letters A to Z
/// Per drive letter, index = letter − 'A': the speed in MB/s for one overwrite (0 = not measured),
/// and what the measurement rests on: bytes written and seconds taken.
inline std::array<float, intNumDrives> sngPurgeSpeeds{};
inline std::array<double, intNumDrives> dblBytesMeasured{};
inline std::array<double, intNumDrives> dblSecondsMeasured{};

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
/// How many dummy files will fill the current drive.
inline std::int64_t intNumDummyFiles = 0;
/// Bytes in the free clusters of the drive last asked about.
inline double dblSpaceInFreeClusters = 0;

/// A stop is requested: by F10 in any window, or by the report's Stop. After a loop has ended it
/// doubles as the loop's result: true means that the operation was stopped.
inline bool blnStop = false;
/// The user chose "Cancel purge operation" in the purge advice.
inline bool blnStopPurge = false;
/// In counting, the number of files at which counting ends; 0 = count all.
inline std::int32_t intStopAt = 0;

inline bool blnPurgingFreeSpace = false;
inline bool blnPurgingDrive = false;
inline bool blnDisplayDialogBoxesDuringRemainderOfPurgeDrive = true;

/// Purge advice on or off while the program runs.
inline bool blnShowPurgeWarning = true;
/// No more confirmations of single files in this run.
inline bool blnPurgeRemainingFiles = false;

/// False while start-up runs.
inline bool blnStartupCompleted = false;
