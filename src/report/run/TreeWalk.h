// The only walk over a folder tree. Each command supplies functions for what the walk meets.
#pragma once

#include "platform/Places.h"
#include "report/run/FolderList.h"

#include <functional>
#include <string>
#include <vector>

struct TreeWalk {
    std::string strFilespec = "*.*";
    /// If not empty: only these files of the walked folder, by exact name.
    std::vector<std::string> names;
    bool blnSubfolders = false;
    /// Holds each folder open while the walk is in it or below it. Otherwise a link could replace
    /// the folder and lead a purge to files that nobody chose.
    bool blnHoldFolders = false;
    /// If known: the walked folder must be this one, and no other that has taken its place.
    platform::FolderIdentity Chosen{};
    bool blnPagefile = false; ///< treat "pagefile.sys" as a swap file in any folder

    // Each function may be empty. If a function with a result returns false, the walk ends.
    std::function<bool(const std::string& strFolder, const FolderList& list)> onFolder;
    std::function<bool(const std::string& strPath, const FoundFile& file)> onFile;
    /// Called after the last file of a folder, before its subfolders.
    std::function<bool()> onFilesDone;
    /// A link to a file or a folder, which is not followed. `blnInPlace`: the link replaced a
    /// folder between listing and entering it.
    std::function<void(const std::string& strPath, bool blnFolder, bool blnInPlace)> onLink;
    /// A file requested by name that does not exist.
    std::function<void(const std::string& strPath)> onGone;
    /// A folder that could not be read completely, and why.
    std::function<void(const std::string& strFolder, const std::string& strWhy)> onUnread;
    /// Another folder has taken the place of the chosen one; it is not entered.
    std::function<void(const std::string& strFolder)> onReplaced;
    /// Called after all of a folder was walked, while it is held.
    std::function<void(const std::string& strFolder)> onFolderDone;
    /// Called after all of a subfolder was walked and let go.
    std::function<void(const std::string& strFolder)> onSubfolderDone;
    /// Called after each file and each subfolder.
    std::function<bool(const std::string& strPath)> onTurn;
    /// Called when blnStop was set while a folder was read; returns true, with blnStop cleared, to
    /// go on.
    std::function<bool(const std::string& strFolder)> onStop;
};

/// Walks a folder and, with blnSubfolders, everything below it. After a fault the subfolders listed
/// before it are still walked. False when the walk was ended.
bool WalkTree(const TreeWalk& walk, const std::string& strFolder);
