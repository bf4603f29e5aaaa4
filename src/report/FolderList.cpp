#include "report/FolderList.h"

#include "support/FolderSearch.h"
#include "support/Paths.h"

platform::Fault TakeFolderList(const std::string& folder, const std::string& filespec,
                               bool blnWantSubfolders, FolderList& list) {
    const bool blnAll = filespec == "*.*";
    return SearchFolder(folder, [&](const platform::FolderEntry& entry) {
        if (entry.IsFolder) {
            if (blnWantSubfolders)
                list.Subfolders.push_back({entry.Name, entry.IsLink});
        } else if (blnAll || MatchesFilespec(entry.Name, filespec)) {
            list.Files.push_back({entry.Name, entry.Length, entry.IsLink});
            list.LinkedFiles += entry.IsLink ? 1 : 0;
        }
        return true;
    });
}
