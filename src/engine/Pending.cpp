// Provisional definitions, replaced one by one by the modules of this room.
#include "engine/FileOps.h"
#include "engine/FileProc.h"
#include "engine/FilePurge.h"
bool PurgeFileWithChecks(const std::string&, std::int16_t, std::int16_t, bool, bool, bool, bool,
                         std::int32_t, std::int16_t&, std::uint32_t*) {
    return false;
}
std::int16_t PurgeFile(const std::string&, std::int16_t, std::int16_t, bool, bool) {
    return -1;
}
bool PurgeLibraryReady() {
    return false;
}
bool FlushFile(const std::string&) {
    return false;
}
std::int16_t ChangeFileSize(const std::string&, std::int64_t) {
    return -1;
}
bool DeleteFileClearingAttributes(const std::string&, bool, bool, bool) {
    return false;
}
bool FileExistsFSO(const std::string&) {
    return false;
}
std::int64_t GetFileLength(const std::string&) {
    return 0;
}
std::string UniqueNumberedFileName(const std::string& s) {
    return s;
}
std::string ByteSizeText(double, int) {
    return {};
}
std::string ByteSizeTextUpToMB(double, int) {
    return {};
}
bool IsSensitiveFile(const std::string&, bool) {
    return false;
}
void InitSystemExtensions(std::int16_t) {}
void SetExtensionVerdict(const std::string&, std::int16_t) {}
std::int16_t ClassifyFileForPurge(const std::string&) {
    return 0;
}
