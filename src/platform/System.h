// Other system services: well-known folders, clock, regional settings, text case, links.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

/// The user's application-data folder (special folder 26), without a trailing backslash.
Fault ReadApplicationDataFolder(std::string& folder);
/// The folder of the running program and the path of the program file, without a trailing backslash
/// and with long names only.
std::string ProgramFolder();
std::string ProgramPath();
/// The folder of the operating system ("C:\WINDOWS"), "" when unknown.
std::string SystemFolder();
/// The arguments after the program's name on the command line.
std::vector<std::string> CommandLineArguments();
/// Bare file names are relative to the current folder; see start-up.
Fault ChangeCurrentFolder(const std::string& folder);
/// The full path of a path relative to the current folder, with drive letter (or server) and
/// folders. The parts that exist get their long names.
std::string FullPath(const std::string& path);

/// Milliseconds since an arbitrary moment; never runs backwards.
std::uint64_t TickCount();
/// Seconds since midnight, local time, with fractions; returns to 0 at midnight.
double SecondsSinceMidnight();
/// Today's date in the user's short form, and the time as "hh:mm:ss" in 24 hours.
std::string DateText();
std::string TimeText();

/// Local date and time in machine-readable form: "2026-11-22T09:05:00".
std::string IsoTimeText();

/// How the user's regional settings write numbers.
struct NumberFormat {
    std::string Decimal = ".";
    std::string Thousands = ",";
    std::string Grouping = "3;0"; ///< as in the settings: "3;0" groups of three, "3;2;0" Indian
    bool LeadingZero = true;      ///< 0.7 rather than .7
};
NumberFormat RegionalNumberFormat();

/// Maps the case of all Unicode letters, code point by code point, independently of the locale.
std::string LowerCase(const std::string& text);
std::string UpperCase(const std::string& text);

/// Shows the text in a box that uses no other part of the program, and ends the process at once.
/// May be called on any thread.
[[noreturn]] void EndForMistake(const std::string& text);

/// The display names of the programs that have a file open. NotSupported: the system does not tell.
/// May take a while.
Fault ListHolders(const std::string& path, std::vector<std::string>& programs);

/// Opens an address or a document with the user's default program.
Fault OpenLink(const std::string& target);

/// The auxiliary library nwaux6.dll, loaded from the program's own folder only.
/// NotFound: no such file there; NotSupported: it lacks an export that we need.
Fault LoadAuxiliaryLibrary();
/// _change_filesize: sets a file's length in bytes; −1 changes nothing and tests whether the file
/// can be opened for change. 0 on success, negative on failure, −4 when another program holds the
/// file. The library must be loaded.
std::int32_t AuxiliaryChangeFileSize(const std::string& path, std::int64_t newLength);
/// _flush_file: 0 after the file's data have been forced to the disk.
std::int32_t AuxiliaryFlushFile(const std::string& path);

} // namespace platform
