// What the tests of "Purge free space" share: its texts, its boxes, and the click on it.
#pragma once

#include "DriveTest.h"

inline const char* const strTitle = "Purge free space";
inline const char* const strQuestion = "Purge free space on which drive?";
inline const char* const strAdvice =
    "It is advisable to test the purge speed of Drive D first, so as to "
    "get an estimate of the time required.";
inline const char* const strStopped = "Purging of free space was stopped.";
inline const char* const strPurged = "The free space has been purged.";
inline const char* const strOne = "One dummy file has been written.";
inline const char* const strThree = "3 dummy files have been written.";

/// With one or more dummy files unpurged, of `all`.
inline std::string PurgedText(int purged, int all, const std::string& next) {
    return "Dummy files purged: " + std::to_string(purged) +
           "\r\nDummy files not purged: " + std::to_string(all - purged) + "\r\n\r\n" + next;
}

inline bool IsPurging() {
    return frmMain.lblStatus.Caption.ends_with("% of purge done.");
}

struct FreeSpaceTest : DriveTest {
    /// A new drive, and the boxes up to the one that announces the dummy files.
    void Announce(std::uint64_t capacity, const std::string& free, const std::string& files,
                  int answer = ui::AnswerOK) {
        if (capacity > 0)
            Begin(capacity);
        ChooseDrive(strQuestion);
        user.Box(strTitle,
                 "Drive D has " + free + " free.\r\n\r\n" + files +
                     " will now be written to fill this space.\r\n\r\n" + strAdvice + strTrailer,
                 answer, {ui::Icon::Information, ui::Buttons::OKCancel, 1});
    }
    void AnnounceThree() { Announce(120 * MiB, "120.00 MB", "3 dummy files"); }
    void AnnounceOne() { Announce(20 * MiB, "20.00 MB", "A dummy file"); }
    /// The box between writing and purging, with the count of files where one is given, and what
    /// happens meanwhile.
    static void Written(const std::string& files, const fake::Action& meanwhile = {},
                        const std::string& unfilled = "") {
        user.BoxLike(strTitle, [=](const std::string& text) {
            if (meanwhile)
                meanwhile();
            const std::string rest = "\r\nThis has overwritten " +
                                     std::string(unfilled.empty() ? "all the " : "") +
                                     "free space with null bytes.\r\n" + unfilled +
                                     "This provides some security but is not very secure.\r\n\r\n"
                                     "Do you wish to continue with the purge?";
            return files.empty() ? text.ends_with(rest) : text == files + rest;
        });
    }
    static void Click() { Run(frmMain.cmdLargePurge[2]); }
    /// Lengths of our dummy files.
    static std::vector<std::uint64_t> Lengths() {
        std::vector<std::uint64_t> lengths;
        for (const auto& file : fake::At("D:\\" + Dummies()[0])->Children)
            if (file->Name.starts_with("_nw_dummy"))
                lengths.push_back(file->Data.Length());
        return lengths;
    }
};
