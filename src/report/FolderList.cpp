#include "report/FolderList.h"

#include "platform/Folders.h"
#include "shell/Session.h"
#include "support/Paths.h"
#include "ui/Interface.h"

namespace {
constexpr std::size_t lngEntriesBetweenYields = 64;
}

platform::Fault TakeFolderList(const std::string& folder, const std::string& filespec,
                               bool blnWantSubfolders, FolderList& list) {
    const bool blnAll = filespec == "*.*";
    std::size_t entries = 0;
    return platform::EnumerateFolder(folder, [&](const platform::FolderEntry& entry) {
        // A folder of a million files takes seconds; the interface stays alive meanwhile.
        if (++entries % lngEntriesBetweenYields == 0) {
            ui::DoEvents();
            if (blnStop)
                return false;
        }
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
