// The folders about which a purge of folders asks once more, and lists of folder names.
#pragma once

#include "platform/System.h"

#include <algorithm>
#include <string>
#include <vector>

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

/// The lines of a text whose lines each end in CR LF.
inline std::vector<std::string> LinesOf(const std::string& strText) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < strText.size();) {
        const auto end = std::min(strText.find("\r\n", at), strText.size());
        if (end > at)
            lines.push_back(strText.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}
