// Procedures on single files.
#pragma once

#include "platform/Fault.h"
#include "support/SizeText.h"

#include <cstdint>
#include <string>

/// Forces a file's data to the disk; true when that was done. Overwrites do without it: they flush
/// through the handle that wrote.
bool FlushFile(const std::string& path);
/// Sets a file's length in bytes; −1 only tells whether the file can be opened for change.
/// 0 done, negative failed (intFileHeld: another program has it open).
constexpr std::int16_t intFileHeld = -4;
std::int16_t ChangeFileSize(const std::string& path, std::int64_t newLength);
/// Deletes a file, its protecting attributes cleared before. True when it is gone. `fault`, when
/// given, takes what the deletion came to. A file that has not `onlyLength` bytes, when that is
/// given, is kept; the fault is then None.
bool DeleteFileClearingAttributes(const std::string& path, bool clearHidden, bool clearReadOnly,
                                  bool clearSystem, platform::Fault* fault = nullptr,
                                  std::int64_t onlyLength = -1);
bool FileExistsFSO(const std::string& path);
/// No file or folder has this name any more; false where that cannot be asked, as the drive or the
/// folder around it is not there.
bool IsGone(const std::string& path);
/// A file's length in bytes; 0 when it cannot be read.
std::int64_t GetFileLength(const std::string& path);
/// `base` followed by 1, 2, 3 ...: the first name that no file has yet.
std::string UniqueNumberedFileName(const std::string& base);
/// Whether the extension is one of documents and programs that other software watches.
bool IsSensitiveFile(const std::string& path, bool shortList);
