// The folders that hold dummy files: made by us, recognised as ours, and removed again.
//
// Such a folder is named stub + "_" + 16 hexadecimal digits and holds an empty marker file whose
// name repeats the digits and tells the purpose; a dummy file in it is named stub + number, a small
// file as RecordFileName says. On FAT the top folder of the drive may hold empty files beside it,
// for a while: their names end with digits of the folder's. Nothing else is ever taken for ours,
// whatever a user keeps on the drive. While a run uses the folder the marker is open, so that a
// second instance of the program does not take it for left over.
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

/// What a folder of ours was made for. Unknown: a crash left it without its marker.
enum class DummyPurpose { Unknown, Filling, SpeedTest };

/// A folder of ours that a run left behind.
struct DummyFolder {
    std::string strPath;
    DummyPurpose Purpose = DummyPurpose::Unknown;
};

/// Makes a new folder for dummy files on a drive ("X:\") and returns its path without a trailing
/// backslash, "" when it cannot. The marker stays open in `marker`, for the caller to close.
std::string MakeDummyFolder(const std::string& strDriveRoot, const std::string& strStub,
                            DummyPurpose purpose, platform::File& marker);
/// The dummy files in a folder of ours: files, no links, named stub + number. Calls no ui function.
platform::Fault ListDummyFiles(const std::string& strFolder, const std::string& strStub,
                               std::vector<DummyFile>& files);
std::string DummyFilePath(const std::string& strFolder, const std::string& strStub,
                          std::int64_t lngNumber);
/// The name of a small file that takes the record of a deleted one (see SmallRecords.h):
/// "_NW0001Z". A name that DOS could have gets no second one; all are of one length.
std::string RecordFileName(std::int64_t lngNumber);
/// A longer one, which keeps room in the folder for the names of others.
std::string SpareFileName(std::int64_t lngNumber);
/// The name of an empty file in the top folder that belongs to a folder of ours: "_NW0001Z.3F2".
std::string RootEntryName(const std::string& strFolder, std::int64_t lngNumber);
/// The paths of the small files in a folder of ours, and of those in the top folder that belong to
/// it. Calls no ui function.
platform::Fault ListRecordFiles(const std::string& strFolder, const std::string& strStub,
                                std::vector<std::string>& paths);
/// Removes the marker and the folder. AccessDenied while a dummy or small file is left; NotEmpty
/// when something of somebody else's is, which stays. What is gone already is no fault.
platform::Fault RemoveDummyFolder(const std::string& strFolder, const std::string& strStub);
/// The folders of ours on a drive that no running program uses: those with a name of ours and our
/// marker, or with such a name and nothing in them at all (what a crash between making the folder
/// and its marker leaves). Calls no ui function: a drive may have to spin up first.
std::vector<DummyFolder> FindLeftoverDummyFolders(const std::string& strDriveRoot,
                                                  const std::string& strStub);
