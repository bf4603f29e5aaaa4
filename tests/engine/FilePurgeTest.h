// The fixture of the tests that purge single files over the fakes.
#pragma once

#include "engine/FilePurge.h"
#include "fakes/ProgramTest.h"

#include <gmock/gmock.h>

using namespace testing;

inline constexpr const char* path = "C:\\f\\a.bin";

struct FilePurgeTest : ProgramTest {
    int Purge(const std::string& file, std::int16_t type, std::int16_t passes, bool deleteAfter,
              bool slackOnly = false) {
        job = {file, type, passes, deleteAfter, true, true, slackOnly, refuseNames};
        job.Options.Verify = verify;
        job.Options.OverwriteNames = rename;
        RunPurgeJob(job);
        EXPECT_EQ(0, fake::OpenHandles());
        return job.Result;
    }
    /// What a purge that goes well does to the file.
    std::string Journal(const std::string& file, std::int16_t type, std::int16_t passes,
                        bool deleteAfter, bool slackOnly = false) {
        fake::journal.clear();
        EXPECT_EQ(0, Purge(file, type, passes, deleteAfter, slackOnly));
        return fake::JournalText(file);
    }
    const std::string stream = std::string(path) + ":s";
    bool refuseNames = false, verify = false, rename = false;
    PurgeJob job;
};

inline std::vector<fake::Run> Written(const std::string& file) {
    std::vector<fake::Run> runs;
    for (const fake::Event& event : fake::journal)
        if (event.What == "write" && event.Path == file)
            runs.push_back(event.Data);
    return runs;
}

/// What one purge of a file of this length does to it, up to the end of the last overwrite.
inline std::string Overwrites(int type, int passes, std::uint64_t length, std::uint64_t cluster) {
    static const std::vector<const char*> values[] = {
        {"*"}, {"AA", "55", "0A", "F5"}, {"AA", "55", "*", "0A", "F5", "*"}};
    const std::uint64_t whole =
        std::max<std::uint64_t>((length + cluster - 1) / cluster, 1) * cluster;
    std::string text;
    for (int pass = 0; pass < passes; ++pass)
        for (const char* value : values[type]) {
            if (text.empty() && length < std::max<std::uint64_t>(cluster, 4096) && length > 0 &&
                length < whole)
                text += "write 0+" + std::to_string(length) + " " + value + "\nflush\n";
            text += "write 0+" + std::to_string(whole) + " " + value + "\nflush\n";
        }
    return text;
}
