// Files: open, read, write, seek, length, flush, attributes, deletion.
//
// Paths are UTF-8 with backslashes and a drive letter ("C:\folder\name"); the name of an alternate
// data stream may follow after a colon. Lengths and positions are bytes. No function here pumps
// messages: calls that may take long are made inside ui::RunSteps.
#pragma once

#include "platform/Fault.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace platform {

/// An open file. A plain handle: copy it freely, close it once.
struct File {
    std::uintptr_t Handle = 0;
    bool IsOpen() const { return Handle != 0; }
};

enum class Access {
    Read,          ///< existing file, reading only; others may read and write it
    ReadPastCache, ///< Read, from the device and not from the system's memory; positions, sizes
                   ///< and the buffer are multiples of unbufferedUnit. NotSupported: there is
                   ///< nothing of the kind, which a read may also be the first to tell
    Change,        ///< existing file, reading and writing in place; refused while another program
                   ///< has it open for writing, and others may only read meanwhile
    ChangeItself,  ///< Change, of a link the link itself and not what it leads to
    CreateNew,     ///< reading and writing; AlreadyExists when the name is taken
    Replace        ///< writing; an existing file is emptied, a missing one is made
};

/// A multiple of every device's sector.
constexpr std::size_t unbufferedUnit = 65536;

/// Attribute bits as the operating system numbers them.
enum Attribute : std::uint32_t {
    AttributeReadOnly = 0x1,
    AttributeHidden = 0x2,
    AttributeSystem = 0x4,
    AttributeFolder = 0x10,
    AttributeArchive = 0x20,
    AttributeSparse = 0x200,
    AttributeReparsePoint = 0x400,
    AttributeCompressed = 0x800,
    AttributeOffline = 0x1000,
    AttributeEncrypted = 0x4000,
    AttributeIntegrity = 0x8000,
    AttributeRecallOnOpen = 0x40000,
    AttributeRecallOnDataAccess = 0x400000
};

/// Facts about a file, read without opening it for change.
struct FileFacts {
    std::uint32_t Attributes = 0;
    std::uint64_t Length = 0;    ///< bytes
    std::uint32_t HardLinks = 1; ///< names that lead to the same data
    bool IsLink = false;         ///< a symbolic link: the data belong to another name
    std::uint32_t ReparseTag = 0;
};

/// Facts about an open file.
struct OpenFileFacts {
    std::uint64_t Length = 0;    ///< bytes
    std::uint64_t Allocated = 0; ///< bytes on the disk; if unknown, not below the length
    std::uint32_t HardLinks = 1;
    std::uint32_t Attributes = 0;
};

/// The bytes of a file from From up to, but not including, To.
struct Range {
    std::uint64_t From = 0, To = 0;
};

/// An alternate data stream; the unnamed main stream is never listed.
struct Stream {
    std::string Path; ///< "C:\folder\name:stream", ready for OpenFile
    std::uint64_t Length = 0;
};

Fault OpenFile(const std::string& path, Access access, File& file);
/// Reads up to `size` bytes at the current position; `read` is 0 at the end of the file.
Fault ReadBytes(File file, void* data, std::size_t size, std::size_t& read);
/// Writes all of `size` bytes at the current position. A short count is DiskFull, not a success.
Fault WriteBytes(File file, const void* data, std::size_t size);
Fault SeekTo(File file, std::uint64_t position);
Fault ReadLength(File file, std::uint64_t& length);
/// One query to the file; much cheaper than ReadFileFacts when the file is already open.
Fault ReadOpenFileFacts(File file, OpenFileFacts& facts);
/// The file's number on its drive; on NTFS the record number. NotSupported: there is none.
Fault ReadFileNumber(File file, std::uint64_t& number);
/// Whether a file has its own clusters. If not, it is empty or lies in the file system's records.
/// NotSupported: the file system does not tell.
Fault HasClusters(File file, bool& hasClusters);
/// The ranges of a file's `length` bytes that are allocated on the disk, in order. NotSupported:
/// the file system does not tell.
Fault ListAllocatedRanges(File file, std::uint64_t length, std::vector<Range>& ranges);
Fault ChangeLength(File file, std::uint64_t length);
/// Returns after the file's data have been forced to the disk.
Fault FlushBytes(File file);
/// Closes the file in any case; a fault means that the system reported an error.
Fault CloseFile(File& file);

/// `length`, when given, receives the length in bytes from the same system call.
Fault ReadAttributes(const std::string& path, std::uint32_t& attributes,
                     std::uint64_t* length = nullptr);
Fault WriteAttributes(const std::string& path, std::uint32_t attributes);
/// Length by path, without opening the file for change.
Fault ReadFileLength(const std::string& path, std::uint64_t& length);
Fault ReadFileFacts(const std::string& path, FileFacts& facts);
/// The alternate data streams of a file; an empty list where the file system has none.
Fault ListStreams(const std::string& path, std::vector<Stream>& streams);
/// All names (hard links) of a file as full paths, including `path` itself as the system writes it.
/// NotSupported: the system does not tell.
Fault ListNames(const std::string& path, std::vector<std::string>& names);
/// Deletes a file. A read-only file gives AccessDenied; for a link, only the link is deleted.
Fault RemoveFile(const std::string& path);
/// Renames `from` to `to` and replaces an existing file there, in one step.
Fault RenameReplacing(const std::string& from, const std::string& to);
/// Gives a file or a folder another name in its folder. AlreadyExists when the name is taken, by
/// whatever it is; nothing has changed then. Of a link the link.
Fault RenameNew(const std::string& from, const std::string& to);
/// Sets all dates of a file or a folder to so many seconds after the beginning of 1970 (UTC).
Fault WriteDates(const std::string& path, std::int64_t seconds);
/// True for a file, false for a folder, for nothing, and for what cannot be asked about.
bool FileExists(const std::string& path);

} // namespace platform
