// Names against file specifications: a name, a line end, a pattern.
#include "support/Paths.h"

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string strText(reinterpret_cast<const char*>(data), size);
    const std::size_t lngEnd = strText.find('\n');
    const std::string strName = strText.substr(0, lngEnd);
    const std::string strPattern =
        lngEnd == std::string::npos ? std::string() : strText.substr(lngEnd + 1);
    const bool blnExact = MatchesWildcard(strName, strPattern, true);
    const bool blnFolded = MatchesWildcard(strName, strPattern, false);
    static_cast<void>(MatchesFilespec(strName, strPattern));
    const bool blnPlain = strPattern.find_first_of("?*") == std::string::npos;
    // A plain pattern matches the same name only; a name matches itself; "*.*" means all.
    const bool blnGood = (!blnPlain || strPattern.empty() || blnExact == (strName == strPattern)) &&
                         (!blnExact || !blnPlain || blnFolded) &&
                         (strName.empty() || MatchesFilespec(strName, "*.*"));
    if (!blnGood)
        std::abort();
    return 0;
}
