// The folders that hold dummy files: creation, recognition and removal.
//
// Such a folder is named stub + "_" + 16 hexadecimal digits. It holds a marker file, empty or
// of null bytes, whose name repeats the digits and shows the purpose. Dummy files in it are named
// stub + number, small files as described at RecordFileName. On FAT the top folder of the drive may
// also hold empty files for a while; their names end with digits of the folder's name. Nothing else
// is ever treated as ours. A run keeps the marker open while it uses the folder, so that a second
// instance of the program does not mistake the folder for a leftover.
#pragma once

#include "platform/Files.h"

#include <cstdint>
#include <string>
#include <vector>

/// One dummy file of a folder, in the file system's order.
struct DummyFile {
    std::int64_t lngNumber = 0;
    std::int64_t lngLength = 0; ///< bytes
};

/// The purpose of one of our folders. Unknown: a crash left it without its marker.
enum class DummyPurpose { Unknown, Filling, SpeedTest };

/// One of our folders that a run left behind.
struct DummyFolder {
    std::string strPath;
    DummyPurpose Purpose = DummyPurpose::Unknown;
};

/// Creates a new folder for dummy files on a drive ("X:\") and returns its path without a trailing
/// backslash, or "" on failure. The marker stays open in `marker`; the caller closes it.
std::string MakeDummyFolder(const std::string& strDriveRoot, const std::string& strStub,
                            DummyPurpose purpose, platform::File& marker);
/// The dummy files in one of our folders: files named stub + number, no links. Calls no ui
/// function.
platform::Fault ListDummyFiles(const std::string& strFolder, const std::string& strStub,
                               std::vector<DummyFile>& files);
std::string DummyFilePath(const std::string& strFolder, const std::string& strStub,
                          std::int64_t lngNumber);
/// The name of a small file that takes the record of a deleted file (see SmallRecords.h):
/// "_NW0001Z". It is a valid DOS name, so the file gets no second (short) name. All these names
/// have the same length.
std::string RecordFileName(std::int64_t lngNumber);
/// A longer name, which reserves room in the folder for other names.
std::string SpareFileName(std::int64_t lngNumber);
/// The name of an empty file in the top folder, with digits of our folder's name: "_NW0001Z.3F2".
std::string RootEntryName(const std::string& strFolder, std::int64_t lngNumber);
/// The paths of the small files in one of our folders and of those in the top folder that belong to
/// it. Calls no ui function.
platform::Fault ListRecordFiles(const std::string& strFolder, const std::string& strStub,
                                std::vector<std::string>& paths);
/// Removes the marker and the folder. AccessDenied while a dummy or small file is left; NotEmpty
/// when the folder holds foreign files, which stay. Missing files or folders are no fault.
platform::Fault RemoveDummyFolder(const std::string& strFolder, const std::string& strStub);
/// Our folders on a drive that no running program uses: those with our kind of name and our marker,
/// or with such a name and no content at all (left by a crash between creating the folder and its
/// marker). Calls no ui function: a drive may have to spin up first.
std::vector<DummyFolder> FindLeftoverDummyFolders(const std::string& strDriveRoot,
                                                  const std::string& strStub);
