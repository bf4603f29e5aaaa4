// The fake platform: drives, files, clock and settings in memory, set up by the tests, with a
// journal of all changes and with faults on demand.
#pragma once

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Places.h"
#include "platform/System.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <unordered_map>

namespace fake {

/// Bytes that repeat a pattern: byte i is Pattern[i % Pattern.size()]. So gigabytes of one byte or
/// block need no memory. Arbitrary bytes have a pattern as long as the run.
struct Run {
    std::uint64_t Length = 0;
    std::string Pattern;
    bool operator==(const Run&) const = default;
    /// At most `count` bytes starting at `from`.
    std::string Bytes(std::uint64_t from, std::uint64_t count) const;
};

/// A file's bytes as a sequence of runs.
struct Content {
    std::vector<Run> Runs;
    std::uint64_t Length() const;
    std::string Read(std::uint64_t from, std::uint64_t count) const;
    void Write(std::uint64_t offset, const Run& run);
    void Resize(std::uint64_t length); ///< new bytes are zeros
};

inline std::uint64_t lastNumber = 0;
/// A file, a folder, or a link to one.
struct Node {
    explicit Node(std::shared_ptr<Content> bytes = std::make_shared<Content>())
        : Bytes(std::move(bytes)), Data(*Bytes) {}
    std::string Name;
    std::uint64_t Number = ++lastNumber; ///< never changes
    bool Folder = false;
    std::uint32_t Attributes = 0; ///< platform::Attribute bits; the folder and link bits are added
    std::shared_ptr<Content> Bytes; ///< shared by all names of a file
    Content& Data;
    std::uint32_t HardLinks = 1;  ///< at least the names that are there; the system tells no others
    std::uint32_t ReparseTag = 0; ///< of a reparse point that is not a link
    bool InRecord = false;    ///< takes no cluster; moves out at the first write past its end ...
    std::string LeftInRecord; ///< ... and these bytes stay behind
    std::uint64_t Record = 0; ///< number of its record, where the drive has a table of them
    std::uint64_t IndexRoom = 0; ///< bytes that a folder's names may take before it grows
    std::vector<platform::Range> Allocated; ///< of a sparse file what takes room
    std::int64_t Dates = 0;                 ///< as WriteDates set them
    /// By offset: bytes of writes that went wrong. Only who reads past the cache finds them.
    std::map<std::uint64_t, std::string> OnDisk;
    std::string LinkTarget; ///< path of the target when this is a link (junction, symbolic link)
    bool Locked = false;    ///< another program holds it: SharingViolation
    bool Denied = false;    ///< no permission: AccessDenied
    bool Open = false;      ///< the program currently has it open for writing
    int Handles = 0;        ///< open handles of the program
    bool TellsCase = false; ///< case-sensitive folder; set it while the folder is empty
    std::uint32_t MountedCluster = 0; ///< a folder where a volume without a letter is mounted
    std::vector<std::shared_ptr<Node>> Children; ///< in the file system's order; a file's streams
    std::unordered_map<std::string, std::shared_ptr<Node>> ByName; ///< by KeyOf
};

struct Drive {
    platform::DriveType Type = platform::DriveType::Fixed;
    std::uint64_t Capacity = 0; ///< bytes
    std::uint64_t Occupied = 0; ///< bytes taken by other data; set it to limit free space
    std::uint64_t KeptBack = 0; ///< free bytes that the user cannot have (a quota)
    std::uint32_t BytesPerSector = 512, SectorsPerCluster = 8;
    std::uint64_t Serial = ++lastNumber;
    std::string Label, FileSystem = "NTFS";
    bool MediaPresent = true;
    bool ReadOnly = false;
    double BytesPerSecond = 0; ///< speed of writes on the clock; 0: they take no time
    std::string StandsFor;     ///< a substituted letter, or a second one: the folder it stands for
    platform::DriveNature Nature;
    /// NTFS: the records of its table; 0: none is modelled. Names then take room in their folder,
    /// and files of up to recordRoom bytes none.
    std::uint64_t Records = 0;
    bool TellsRecords = true;
    std::map<std::uint64_t, std::string> FreeRecords; ///< by number: the bytes left in them
    /// FAT: the names left in free entries of its top folder, which has no others.
    std::vector<std::string> FreeEntries;
    std::shared_ptr<Node> Root;
    std::uint64_t Cluster() const { return std::uint64_t{BytesPerSector} * SectorsPerCluster; }
    std::uint64_t InClusters(std::uint64_t length) const;
    std::uint64_t Free() const;
    std::uint64_t FreeForUser() const { return Free() - std::min(Free(), KeptBack); }
};

constexpr std::uint64_t recordRoom = 640;

/// A change of the disk, in order. Successive contiguous writes form one event, whatever the number
/// of calls. Paths are real paths, with links resolved.
struct Event {
    std::string What; ///< as in JournalText: "create", "write", "rename <new path>"
    std::string Path;
    std::uint64_t Offset = 0; ///< of a write
    Run Data;                 ///< of a write
};

/// Resets everything: drive C: (fixed, NTFS, 64 GiB, clusters of 4096), the application-data
/// folder, no program folder, an empty journal, no faults, clock at noon.
void Reset();
/// The same without the drives, for tests over another back end for files.
void ResetMachine();

extern std::map<char, Drive> drives; ///< by upper-case letter
Drive& AddDrive(char letter, std::uint64_t capacity, std::uint32_t cluster = 4096,
                platform::DriveType type = platform::DriveType::Fixed);
/// Makes a file, with the folders on the way, or a stream of a file ("C:\a:s"); replaces one that
/// is there. Not journaled.
Node& PutFile(const std::string& path, const std::string& content = "x",
              std::uint32_t attributes = platform::AttributeArchive);
void PutFiles(std::initializer_list<const char*> paths);
/// A file of `length` equal bytes.
Node& PutBigFile(const std::string& path, std::uint64_t length, char byte = 'x');
Node& PutFolder(const std::string& path);
/// A second name for the bytes of a file.
void PutName(const std::string& path, const std::string& file);
/// Removes a file, or a folder with its contents. Not journaled.
void TakeAway(const std::string& path);
/// Gives a file or folder its short name.
void PutShortName(const std::string& path, const std::string& name);
/// Simulates another program that tries to replace a folder by a link. False: refused because the
/// folder, or an item in it, is open.
bool ReplaceByLink(const std::string& path, const std::string& target);
/// The file or folder, or nullptr.
Node* At(const std::string& path);
/// The bytes of a file, "(missing)" when there is none. For small files.
std::string ContentOf(const std::string& path);
/// Paths of all files below a folder, in depth-first order.
std::vector<std::string> FilesBelow(const std::string& folder);

extern std::vector<Event> journal;
/// The journal as text, a line per event, of one path or ("") of all with the path in front:
/// "create", "write 0+8192 AA" (equal bytes), "write 0+8192 *" (other bytes), "make folder",
/// "remove folder", "length 8192", "flush", "remove", "rename <new path>", "attributes 32".
std::string JournalText(const std::string& path = "");
/// The number of handles that the program has not closed.
int OpenHandles();

// Calls are named as the functions of platform: "WriteBytes"; "" means all of them.

/// For back ends: counts a call, runs the hooks, and returns the fault that the call must have.
platform::Fault Begin(const char* call, const std::string& path);
void ResetOrders();
/// The n-th call from now on (1 = the next) fails with this fault; a write that fails so has
/// written half of its bytes. One such order at a time. The auxiliary library's functions then
/// return −1.
void FailNth(std::int64_t n, platform::Fault fault, const std::string& call = "");
/// The call that failed by order of FailNth, "" if none has.
std::string FailedCall();
/// The n-th write from now on is said to have gone well, and is in the system's memory; on the disk
/// is what was there before, or of the second half of the write, or all but one bit of its last
/// byte is right.
enum class Spoil { Drop, Tear, Flip };
void SpoilNth(std::int64_t n, Spoil how);
/// Withdraws the order of FailNth; true when it was carried out.
bool HasFailed();
/// Calls made since Reset.
std::int64_t CallsMade(const std::string& call = "");
/// Every such call for a path with this end fails, or every one for which `when` holds.
void FailAlways(const std::string& call, const std::string& end, platform::Fault fault,
                std::function<bool()> when = {});
/// Calls the hook with the path before each such call; if it returns a fault, the call fails with
/// it. A hook may change the disk.
void OnCall(const std::string& call, std::function<platform::Fault(const std::string& path)> hook);
/// The same with a hook that returns no fault.
void Watch(const std::string& call, std::function<void(const std::string& path)> hook);

extern double tick; ///< milliseconds
/// Advances the clock.
void Advance(double milliseconds);
/// The clock is the computer's own, for what is measured, and for work on several threads; Reset
/// takes that back. Dates and times in texts stay as they are.
extern bool blnRealClock;
extern double secondsSinceMidnight; ///< 43200; wraps at midnight
extern platform::NumberFormat numberFormat;
extern std::string programFolder;   ///< "C:\Program Files\Nullwright"
extern std::string applicationData; ///< "C:\Users\me\AppData\Roaming"
extern std::string currentFolder;
extern std::vector<std::string> commandLine;
extern std::vector<std::string> linksOpened;
extern std::vector<std::string> holders; ///< programs that hold any queried file
/// What LoadAuxiliaryLibrary finds: None, NotFound or NotSupported.
extern platform::Fault auxiliaryLibrary;

} // namespace fake
