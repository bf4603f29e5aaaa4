// The walk over a folder tree: the only one there is. What a command does with what it meets is
// given as functions.
#pragma once

#include "report/run/FolderList.h"

#include <functional>
#include <string>
#include <vector>

struct TreeWalk {
    std::string strFilespec = "*.*";
    /// Files of the folder that is walked, each by its very name, and nothing else of it.
    std::vector<std::string> names;
    bool blnSubfolders = false;
    /// Each folder is held open while the walk is in it or below: a link that is put in its place
    /// would lead a purge to what nobody chose.
    bool blnHoldFolders = false;
    bool blnPagefile = false; ///< "pagefile.sys" is a swap file, wherever it lies

    // Each may be missing. Those that return false end the walk.
    std::function<bool(const std::string& strFolder, const FolderList& list)> onFolder;
    std::function<bool(const std::string& strPath, const FoundFile& file)> onFile;
    /// A link to a file or a folder, which is not followed. `blnInPlace`: a folder was listed, and
    /// when it was to be entered a link stood in its place.
    std::function<void(const std::string& strPath, bool blnFolder, bool blnInPlace)> onLink;
    /// A file that was asked for by its name, and is not there.
    std::function<void(const std::string& strPath)> onGone;
    /// A folder that could not be read, or not to its end.
    std::function<void(const std::string& strFolder)> onUnread;
    /// After a subfolder, when all of it was walked.
    std::function<void(const std::string& strFolder)> onSubfolderDone;
    /// After each file and each subfolder.
    std::function<bool(const std::string& strPath)> onTurn;
    /// blnStop was set while a folder was read: true, with blnStop cleared, to go on.
    std::function<bool(const std::string& strFolder)> onStop;
};

/// Walks a folder and, with blnSubfolders, everything below it. Subfolders that a fault has left
/// listed are walked all the same. False when the walk was ended.
bool WalkTree(const TreeWalk& walk, const std::string& strFolder);
