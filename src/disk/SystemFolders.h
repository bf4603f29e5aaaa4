// The folders for which a purge of folders asks an extra question.
#pragma once

#include "platform/System.h"

#include <string>

struct SystemFolder {
    const char* strName;      ///< as shown in the questions
    const char* strUpperName; ///< as used in comparisons
};
constexpr SystemFolder systemFolders[] = {{"WINDOWS", "WINDOWS"},
                                          {"Program Files", "PROGRAM FILES"}};

/// Whether a path is this folder at the top of its drive.
inline bool IsSystemFolder(const std::string& strPath, const SystemFolder& folder) {
    const std::string strUpper = platform::UpperCase(strPath);
    return strUpper.size() > 3 && strUpper.compare(1, 2, ":\\") == 0 &&
           strUpper.substr(3) == folder.strUpperName;
}
