// Fronts of the engine that purge a single file at once. The program itself runs jobs and groups;
// tests and benches use these.
#pragma once

#include "engine/PurgeJob.h"

/// RunPurgeJob for a file that is purged at once: checks attributes and permissions, purges it and
/// restores its length when it is kept. True when resultCode is 0 or more. `reserved` is not used.
/// `reach`, when given, takes the OutOfReach bits of the file, also when the purge fails.
bool PurgeFileWithChecks(const std::string& path, std::int16_t purgeTypeIndex,
                         std::int16_t numPasses, bool deleteAfter, bool okReadOnly, bool okSystem,
                         bool slackOnly, std::int32_t reserved, std::int16_t& resultCode,
                         std::uint32_t* reach = nullptr);

/// The same for a file with any attributes. The result code.
std::int16_t PurgeFile(const std::string& path, std::int16_t purgeTypeIndex, std::int16_t numPasses,
                       bool deleteAfter, bool slackOnly);

/// The auxiliary library is there and whole. On false the user has been told, and nothing may be
/// purged.
bool PurgeLibraryReady();
