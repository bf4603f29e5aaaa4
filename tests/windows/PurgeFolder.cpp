// Purges or merely deletes the files of one folder, for the examination of raw disk images:
//   nullwright_purge FOLDER purge TYPE PASSES | nullwright_purge FOLDER delete
// It refuses any folder that does not hold the file "purge-me.mark", and leaves that file alone.
#include "engine/FilePurge.h"
#include "platform/Files.h"
#include "platform/Folders.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

int main(int count, char** arguments) {
    const std::string mark = "purge-me.mark";
    const std::string folder = count > 1 ? arguments[1] : "", what = count > 2 ? arguments[2] : "";
    if (!(what == "delete" || (what == "purge" && count == 5)) ||
        !platform::FileExists(folder + "\\" + mark) || !PurgeLibraryReady()) {
        std::puts("usage: nullwright_purge FOLDER purge TYPE PASSES, or FOLDER delete; the folder "
                  "must hold purge-me.mark");
        return 2;
    }
    std::vector<std::string> paths;
    const platform::Fault fault =
        platform::EnumerateFolder(folder, [&](const platform::FolderEntry& entry) {
            if (!entry.IsFolder && entry.Name != mark)
                paths.push_back(folder + "\\" + entry.Name);
            return true;
        });
    int failures = Failed(fault) ? 1 : 0;
    for (const std::string& path : paths) {
        std::int16_t code = 0;
        if (what == "delete")
            code = Failed(platform::RemoveFile(path)) ? PurgeNotDeleted : PurgeDone;
        else
            (void)PurgeFileWithChecks(path, static_cast<std::int16_t>(std::atoi(arguments[3])),
                                      static_cast<std::int16_t>(std::atoi(arguments[4])), true,
                                      true, true, false, 0, code);
        if (code != PurgeDone) {
            std::printf("%s: %d\n", path.c_str(), code);
            ++failures;
        }
    }
    std::printf("%zu files, %d failures\n", paths.size(), failures);
    return failures == 0 && !paths.empty() ? 0 : 1;
}
