// The rest of what the system gives: well-known folders, clock, regional settings, text case,
// links.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

/// The user's application-data folder (special folder 26), without a trailing backslash.
Fault ReadApplicationDataFolder(std::string& folder);
/// The folder of the running program and the path of the program file, no trailing backslash; long
/// names only.
std::string ProgramFolder();
std::string ProgramPath();
/// The folder of the operating system ("C:\WINDOWS"), "" when it cannot be had.
std::string SystemFolder();
/// What followed the program's name on the command line.
std::vector<std::string> CommandLineArguments();
/// The current folder decides what a bare file name means; see start-up.
Fault ChangeCurrentFolder(const std::string& folder);
/// A path as it is meant from the current folder, with drive letter (or server) and folders; of
/// what exists the long names.
std::string FullPath(const std::string& path);

/// Milliseconds since some moment in the past; never runs backwards.
std::uint64_t TickCount();
/// Seconds since midnight, local time, with fractions; falls back to 0 at midnight.
double SecondsSinceMidnight();
/// Today's date in the user's short form, and the time as "hh:mm:ss" in 24 hours.
std::string DateText();
std::string TimeText();

/// Local date and time as programs read them: "2026-11-22T09:05:00".
std::string IsoTimeText();

/// How the user's regional settings write numbers.
struct NumberFormat {
    std::string Decimal = ".";
    std::string Thousands = ",";
    std::string Grouping = "3;0"; ///< as in the settings: "3;0" groups of three, "3;2;0" Indian
    bool LeadingZero = true;      ///< 0.7 rather than .7
};
NumberFormat RegionalNumberFormat();

/// Case of the whole of Unicode, one code point at a time, whatever the locale.
std::string LowerCase(const std::string& text);
std::string UpperCase(const std::string& text);

/// Shows the text in a box that needs nothing else of the program, and ends the process at once.
/// May be called on any thread.
[[noreturn]] void EndForMistake(const std::string& text);

/// The programs that have a file open, as the user knows them. NotSupported: the system does not
/// tell. May take a while.
Fault ListHolders(const std::string& path, std::vector<std::string>& programs);

/// Opens an address or a document with the program that the user has chosen for it.
Fault OpenLink(const std::string& target);

/// The auxiliary library nwaux6.dll, loaded from the program's own folder only.
/// NotFound: no such file there; NotSupported: it lacks an export that we need.
Fault LoadAuxiliaryLibrary();
/// _change_filesize: sets a file's length in bytes; −1 changes nothing and tells whether the file
/// can be opened for change. 0 done, negative failed, −4 where another program holds the file. The
/// library must have been loaded.
std::int32_t AuxiliaryChangeFileSize(const std::string& path, std::int64_t newLength);
/// _flush_file: 0 when the file's data have been forced to the disk.
std::int32_t AuxiliaryFlushFile(const std::string& path);

} // namespace platform
