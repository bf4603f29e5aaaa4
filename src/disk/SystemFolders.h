// The folders about which a purge of folders asks once more.
#pragma once

#include "platform/System.h"

#include <string>

struct SystemFolder {
    const char* strName;      ///< as the questions write it
    const char* strUpperName; ///< as it is compared
};
constexpr SystemFolder systemFolders[] = {{"WINDOWS", "WINDOWS"},
                                          {"Program Files", "PROGRAM FILES"}};

/// Whether a path is that folder at the top of its drive.
inline bool IsSystemFolder(const std::string& strPath, const SystemFolder& folder) {
    const std::string strUpper = platform::UpperCase(strPath);
    return strUpper.size() > 3 && strUpper.compare(1, 2, ":\\") == 0 &&
           strUpper.substr(3) == folder.strUpperName;
}
