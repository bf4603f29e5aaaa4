// Lists one folder: which files match, which are links, which are never purged.
#include "report/run/FolderList.h"

#include "engine/FileOps.h"
#include "engine/FileProc.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/Paths.h"

#include <algorithm>
#include <utility>

bool IsPagingFile(const std::string& strName, bool blnPagefile) {
    return IsSwapFile(strName) ||
           (blnPagefile && strName.size() == 12 && platform::LowerCase(strName) == "pagefile.sys");
}

namespace {

// Looks up individually chosen files, because the folder may hold a million others.
platform::Fault TakeNamedFiles(const std::string& folder, const FolderWish& wish,
                               FolderList& list) {
    platform::Fault worst = platform::Fault::None;
    for (const std::string& name : wish.names) {
        if (blnStop && (!wish.onStop || !wish.onStop()))
            break;
        platform::FileFacts facts;
        platform::Fault fault = platform::Fault::None;
        bool blnGone = false;
        AskOnDrive(folder, [&] {
            fault = platform::ReadFileFacts(folder + name, facts);
            blnGone = fault == platform::Fault::NotFound && IsGone(folder + name);
        });
        if (blnGone)
            list.Gone.push_back(name);
        else if (platform::Failed(fault))
            worst = fault;
        else if ((facts.Attributes & platform::AttributeFolder) == 0)
            list.Files.push_back({name, facts.Length, facts.IsLink,
                                  wish.blnOwnFolder || IsPagingFile(name, wish.blnPagefile)});
    }
    return worst;
}

void CountLinks(FolderList& list) {
    list.LinkedFiles = static_cast<std::size_t>(std::count_if(
        list.Files.begin(), list.Files.end(), [](const FoundFile& file) { return file.IsLink; }));
}

} // namespace

platform::Fault TakeFolderList(const std::string& folder, const FolderWish& wish,
                               FolderList& list) {
    if (!wish.names.empty()) {
        const platform::Fault fault = TakeNamedFiles(folder, wish, list);
        CountLinks(list);
        return fault;
    }
    const bool all = wish.strFilespec == "*.*";
    std::vector<FoundFile> otherCase;
    const platform::Fault fault = SearchFolder(folder, [&](const platform::FolderEntry& entry) {
        if (blnStop && (!wish.onStop || !wish.onStop()))
            return false;
        if (entry.IsFolder) {
            if (wish.blnSubfolders)
                list.Subfolders.push_back({entry.Name, entry.IsLink});
            return true;
        }
        const NameMatch match = all ? NameMatch::Exact : MatchName(entry.Name, wish.strFilespec);
        if (match == NameMatch::None)
            return true;
        (match == NameMatch::Exact ? list.Files : otherCase)
            .push_back({entry.Name, entry.Length, entry.IsLink,
                        wish.blnOwnFolder || IsPagingFile(entry.Name, wish.blnPagefile)});
        return true;
    });
    // After a fault, the file itself may be in the unread part.
    if (!platform::Failed(fault) && list.Files.empty() &&
        OtherCaseIsMeant(folder, otherCase.size()))
        list.Files = std::move(otherCase);
    CountLinks(list);
    return fault;
}
