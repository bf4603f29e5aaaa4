// What a purge run tells of files that it verifies and renames.
#include "report/run/RunRecords.h"
#include "report/run/RunReport.h"
#include "report/RunTest.h"

static std::string Saved(bool (*write)(const PutText&)) {
    std::string text;
    write([&](const std::string& piece) { return !(text += piece).empty(); });
    return RunTest::Plain(text);
}

TEST_F(RunTest, VerifiedAndRenamedFilesAreToldSo) {
    const auto begin = [&](bool slackOnly) {
        Begin(1);
        blnSubdirectories = blnDeleteEmptyFolders = purgeOptions.Verify =
            purgeOptions.OverwriteNames = true;
        blnPurgeSlackOnly = slackOnly;
        for (const char* name : {"cached", "fine", "lost", "stuck"})
            fake::PutBigFile(std::string("C:\\d\\") + name, 5000);
        fake::drives['C'].Nature = {true, {}, {}, {}, {}};
        fake::PutFolder("C:\\d\\gone").Attributes |= platform::AttributeReadOnly;
        fake::PutFolder("C:\\d\\kept\\link").LinkTarget = "C:\\out";
        fake::FailNth(1, Fault::NotSupported, "ReadBytes");
        fake::SpoilNth(3, fake::Spoil::Flip);
        fake::FailAlways("RemoveFile", "", {Fault::AccessDenied.Kind, 5},
                         [] { return fake::FilesBelow("C:\\d").size() == 2; });
    };
    begin(false);
    std::string report = Purge();
    const std::string left = fake::FilesBelow("C:\\d").back();
    EXPECT_EQ(left.size(), std::string("C:\\d\\stuck").size()) << left;
    const std::string files = R"(
C:\d\

C:\d\cached (5,000 bytes) purged, verified in memory only
C:\d\fine (5,000 bytes) purged and verified
C:\d\lost (5,000 bytes) purging: verification failed at byte 8,191, not purged.
C:\d\stuck (5,000 bytes) purging: file overwritten but not deleted, left as )" +
                              left + R"(. (error 5)
Folder C:\d\gone\ removed.
C:\d\kept\link\: a link, not purged.
)";
    EXPECT_THAT(report, HasSubstr(files));
    EXPECT_THAT(report,
                HasSubstr("once.\nWith \"Verify by reading back\" and \"Overwrite file names and "
                          "dates\".\nDrive C is a solid-state drive: "));
    EXPECT_EQ(ReasonText(RecordAt(2), ""), "verification failed at byte 8,191, not purged");
    EXPECT_TRUE(fake::At("C:\\d\\kept") && !fake::At("C:\\d\\gone"));
    EXPECT_THAT(JsonOfRecord(RecordAt(1)), EndsWith(",\"verified\":true}"));
    FileRecord record = RecordAt(0);
    record.Reach = ReachEncrypted | ReachName;
    EXPECT_THAT(
        JsonOfRecord(record),
        HasSubstr("\"purged\",\"remark\":\"verified in memory only; encrypted: older copies of its "
                  "data may remain on the disk; its name or dates may remain on the disk\","));
    record.Result = PurgeStopped;
    record.Remark = " during pass 1";
    EXPECT_THAT(JsonOfRecord(record), HasSubstr("\"stopped\",\"remark\":\"during pass 1\","));

    begin(true);
    report = Purge();
    for (const char* line : {"cached (5,000 bytes) slack area purged, verified in memory only\n",
                             "fine (5,000 bytes) slack area purged and verified\n",
                             "not purged.\nC:\\d\\stuck (5,000 bytes) slack area purged and ver"})
        EXPECT_THAT(report, HasSubstr(line));
    EXPECT_EQ(fake::FilesBelow("C:\\d").size(), 4u);

    // A folder that cannot be removed after all: in what is saved, and in a full report, too.
    Begin(1);
    blnSubdirectories = blnDeleteEmptyFolders = purgeOptions.OverwriteNames = true;
    fake::PutFile("C:\\d\\goes\\a");
    fake::PutFile("C:\\d\\stays\\b");
    fake::PutFile("C:\\d\\then\\c").Locked = true;
    bool blnRefused = false; // from then on it does not get its name back either
    fake::OnCall("RemoveFolder", [&](const std::string& path) {
        blnRefused |= path.size() == 10;
        return path.size() == 10 ? Fault::SharingViolation : Fault::None;
    });
    fake::FailAlways("RenameNew", "", Fault::AccessDenied, [&] { return blnRefused; });
    lngReportLimit = 0;
    report = Purge();
    lngReportLimit = lngMaxReportText;
    const std::string warning = "Folder C:\\d\\stays\\ not removed, left as C:\\d\\" +
                                fake::At("C:\\d")->Children.back()->Name + "\\.\n";
    EXPECT_THAT(report, HasSubstr("\n\nWarnings: 1\n" + warning + "11"));
    for (const std::string& line : {std::string("Folder C:\\d\\goes\\ removed.\n"), warning})
        EXPECT_THAT(Saved(WriteReportAsText), HasSubstr("(1 bytes) purged\n" + line + "\nC:\\d\\"));
    EXPECT_THAT(Saved(WriteReportAsJson),
                HasSubstr(R"("warnings":["Folder C:\\d\\stays\\ not removed, left as C:\\d\\)"));

    // A folder that cannot be removed after all, and gets none, three, or all of its names.
    for (const int renames : {0, 3, 4}) {
        Begin(1);
        blnSubdirectories = blnDeleteEmptyFolders = purgeOptions.OverwriteNames = true;
        const fake::Node& folder = fake::PutFolder("C:\\d\\stays");
        fake::FailAlways("RemoveFolder", "", Fault::SharingViolation);
        int done = 0;
        fake::FailAlways("RenameNew", "", Fault::AccessDenied, [&] { return done++ >= renames; });
        report = Purge();
        EXPECT_TRUE((folder.Name == "stays") == (renames != 3) &&
                    (folder.Dates == 0) == (renames == 0));
        const std::string told = renames == 0   ? "\n\n"
                                 : renames == 3 ? "left as C:\\d\\" + folder.Name + "\\.\n"
                                                : "its dates may have changed.\n";
        EXPECT_THAT(report,
                    HasSubstr((renames ? "Folder C:\\d\\stays\\ not removed, " : "") + told));
    }

    // The files that fill the folder's index, where the old names were.
    for (const bool blnRoom : {true, false}) {
        Begin(1);
        purgeOptions.OverwriteNames = true;
        fake::PutFile("C:\\d\\secret.txt", "M");
        int intMade = 0;
        fake::OnCall(blnRoom ? "RemoveFile" : "OpenFile", [&](const std::string& path) {
            if (path.find("_nw_name_") == path.npos || ++intMade <= 3)
                return Fault{Fault::None};
            return Fault{blnRoom ? Fault::AccessDenied : Fault::DiskFull};
        });
        report = Purge();
        const auto fillers = fake::FilesBelow("C:\\d");
        EXPECT_EQ(fillers.size(), blnRoom ? 5u : 0u);
        for (const std::string& path : fillers)
            EXPECT_THAT(report, HasSubstr(path + ": an empty file, which could not be deleted.\n"));
        EXPECT_EQ(blnRoom, report.find("may remain in the index of C:\\d\\.\n") == report.npos);
    }
}
