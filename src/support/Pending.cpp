// Provisional definitions, replaced one by one by the modules of this room.
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/ProgramTexts.h"
#include "support/StrProc.h"
std::string NumberInWords(std::int64_t) {
    return {};
}
std::string MinutesText(std::int64_t, bool) {
    return {};
}
std::string SecondsText(std::int64_t, bool, bool) {
    return {};
}
int CountOccurrences(const std::string&, const std::string&) {
    return 0;
}
std::string FormatNumber(double, int, bool, bool) {
    return {};
}
std::string GroupedDigits(std::int64_t) {
    return {};
}
std::string SignedDigits(std::int64_t) {
    return {};
}
std::int64_t RoundHalfEven(double) {
    return 0;
}
void ReseedRandom() {}
float NextRandom() {
    return 0;
}
std::int16_t RandomInteger(std::int16_t, std::int16_t) {
    return 0;
}
std::string FolderWithBackslash(const std::string& s) {
    return s;
}
std::string FolderWithoutBackslash(const std::string& s) {
    return s;
}
std::string FolderPartOf(const std::string&) {
    return {};
}
std::string FileNameOf(const std::string&) {
    return {};
}
std::string ExtensionOf(const std::string&) {
    return {};
}
char DriveLetterOf(const std::string&) {
    return 0;
}
int DriveIndexOf(const std::string&) {
    return -1;
}
bool MatchesWildcard(const std::string&, const std::string&, bool) {
    return false;
}
bool MatchesFilespec(const std::string&, const std::string&) {
    return false;
}
std::string LoadProgramTexts(const std::string&) {
    return {};
}
std::string ProgramText(TextNumber) {
    return {};
}
