// Takes one folder's list: which files match, what is a link, what is never purged.
#include "report/FolderList.h"

#include "engine/FileOps.h"
#include "platform/System.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/Paths.h"

#include <algorithm>
#include <utility>

platform::Fault TakeFolderList(const std::string& folder, const std::string& filespec,
                               bool blnWantSubfolders, FolderList& list) {
    const bool blnAll = filespec == "*.*";
    // By its spelling alone, which costs nothing and is enough for counts; before a file is purged
    // it is looked at more closely.
    const bool blnOwnFolder = platform::LowerCase(FolderWithBackslash(folder)) ==
                              platform::LowerCase(FolderWithBackslash(platform::ProgramFolder()));
    std::vector<FoundFile> otherCase;
    const platform::Fault fault = SearchFolder(folder, [&](const platform::FolderEntry& entry) {
        if (entry.IsFolder) {
            if (blnWantSubfolders)
                list.Subfolders.push_back({entry.Name, entry.IsLink});
            return true;
        }
        const NameMatch match = blnAll ? NameMatch::Exact : MatchName(entry.Name, filespec);
        if (match == NameMatch::None)
            return true;
        const bool blnPagingFile =
            IsSwapFile(entry.Name) || (blnPurgingDrive && entry.Name.size() == 12 &&
                                       platform::LowerCase(entry.Name) == "pagefile.sys");
        (match == NameMatch::Exact ? list.Files : otherCase)
            .push_back({entry.Name, entry.Length, entry.IsLink, blnOwnFolder || blnPagingFile});
        return true;
    });
    // In what was not read there may be the file itself.
    if (!platform::Failed(fault) && list.Files.empty() &&
        OtherCaseIsMeant(folder, otherCase.size()))
        list.Files = std::move(otherCase);
    list.LinkedFiles = static_cast<std::size_t>(std::count_if(
        list.Files.begin(), list.Files.end(), [](const FoundFile& file) { return file.IsLink; }));
    return fault;
}
