// "Purge folders": the questions, the summary and the file loop.
#include "DriveTest.h"

#include "engine/HeldFiles.h"

const char* const strTitle = "Purge folders";
const char* const strFirst = "Do you wish to purge all files in\r\nselected subfolders of some";
const char* const strBegin = "\r\n\r\nClick 'OK' to begin purging these files\r\n"
                             "or 'Cancel' to terminate this operation.";
const char* const strGoOn = "Click 'OK' to continue, or 'Cancel' to terminate this operation.";

struct PurgeFoldersTest : DriveTest {
    static void Click() { Run(frmMain.cmdSpecifyDirectory[1]); }
    static void Choose(const std::string& folder, const Paths& names) {
        user.BoxLike(strTitle, strFirst, ui::AnswerYes, fake::AsksYesNo);
        user.Dialog("Specify folder containing subfolders to be purged", folder);
        if (!names.empty())
            ChooseSubfolders("Select subfolders of " + folder + " to be purged.", names);
    }
    static void Summary(const std::string& text, int answer = ui::AnswerOK) {
        user.Box(strTitle, text + strBegin, answer, {ui::Icon::Question, ui::Buttons::OKCancel, 2});
    }
    static void ChooseOne(const std::string& name) {
        Choose("D:\\work\\", {name});
        Summary("One folder will be purged:" + name + " ");
    }
    static void PutFiles(int count) {
        for (int i = 1; i <= count; ++i)
            fake::PutFile("D:\\work\\a\\f" + std::to_string(i), "secret");
    }
};

TEST_F(PurgeFoldersTest, PurgesTheChosenFoldersWithAllBelow) {
    PutFiles(2);
    fake::drives['D'].BytesPerSecond = MiB;
    fake::PutBigFile("D:\\work\\a\\deep\\er\\f3", 8 * MiB).Attributes = platform::AttributeReadOnly;
    for (const char* path : {"D:\\work\\b\\keep", "D:\\work\\keep"})
        fake::PutFile(path);
    fake::PutFile("D:\\other\\f1", "other");
    int attempts = 0;                              // to have the f1 of another folder purged
    fake::Watch("", [&](const std::string& path) { // also before the questions
        if (path == "D:\\work\\a\\" || path == "D:\\work\\a\\f1")
            attempts += fake::ReplaceByLink("D:\\work", "D:\\other") ? 100 : 1;
        if (path == "D:\\work\\a\\f1")
            attempts += fake::ReplaceByLink("D:\\work\\a", "D:\\other") ? 100 : 1;
    });
    ChooseOne("a");
    fake::PutFolder("D:\\work\\a\\turned");            // into a link, after it was listed
    fake::PutFolder("D:\\work\\a\\shy").Denied = true; // but not when it is to be purged
    user.During([] { return !fake::At("D:\\work\\a\\f1"); },
                [] {
                    fake::At("D:\\work\\a\\turned")->LinkTarget = "D:\\other";
                    fake::At("D:\\work\\a\\shy")->Denied = false;
                });
    const std::string unread = "One folder could not be read completely.\r\n\r\nDo you wish";
    user.BoxLike(strTitle, unread, ui::AnswerNo);
    const std::string time = "File 3 of 3.  Elapsed: 5s.  Remaining: about 6s.";
    user.During(
        [&] { return frmMain.lblEstimatedTime.Caption == time; },
        [] { EXPECT_TRUE(frmMain.lblSubdirectories2.Caption.ends_with("are being purged.")); });
    Click();
    EXPECT_EQ("3 files in one folder have been purged.", frmMain.lblSubdirectories2.Caption);
    EXPECT_EQ("", frmMain.lblEstimatedTime.Caption);
    EXPECT_EQ(
        (Paths{"D:\\docs\\letter.txt", "D:\\work\\b\\keep", "D:\\work\\keep", "D:\\other\\f1"}),
        fake::FilesBelow("D:\\"));
    EXPECT_LT(0, attempts);
    EXPECT_GT(100, attempts);

    ChooseOne("b");
    user.Box(strTitle, "There are no files in any of the selected folders.");
    user.BoxLike(strTitle, unread, ui::AnswerNo);
    fake::At("D:\\work\\b")->Denied = true;
    Click();
    EXPECT_THAT(frmReport.txbText.Text,
                testing::HasSubstr("b\\: could not be read completely: Access was denied.\r\n"));
    EXPECT_EQ("", frmMain.lblSubdirectories2.Caption);
}

TEST_F(PurgeFoldersTest, EndsWhereTheUserSaysSo) {
    user.BoxLike(strTitle, strFirst, ui::AnswerNo);
    Click();
    Choose("", {});
    Click();
    fake::PutFolder("D:\\link").LinkTarget = "C:\\elsewhere";
    Choose("D:\\link", {});
    user.BoxLike("Error", "D:\\link is a link.");
    Click();
    Choose("D:\\docs\\", {});
    user.BoxLike(strTitle, "D:\\docs\\ has no subfolders.\r\n", ui::AnswerOK, fake::Informs);
    Click();
    Choose("D:\\", {});
    ChooseSubfolders("Select subfolders of D:\\ to be purged.", {});
    user.Box(strTitle, "No subolders were selected.", fake::Informs);
    Click();
    Choose("D:\\docs\\", {});
    StopReading("D:\\docs\\");
    Click();
    EXPECT_EQ("Purge of folders was stopped.", frmMain.lblLargePurgeMessage.Caption);
    Choose("D:\\docs\\", {});
    fake::FailNth(1, Fault::AccessDenied, "EnumerateFolder");
    user.Box("Error", "Cannot access the folder.");
    Click();
    fake::PutFile("D:\\WINDOWS\\x");
    for (const int answer : {int{ui::AnswerNo}, int{ui::AnswerCancel}, int{ui::AnswerYes}}) {
        Choose("D:\\", {"WINDOWS"});
        user.BoxLike(strTitle, "You have included the D:\\WINDOWS folder.\r\n", answer,
                     fake::AsksYesNoCancel);
        if (answer == ui::AnswerYes)
            Summary("One folder will be purged:WINDOWS ", ui::AnswerCancel);
        Click();
    }
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(PurgeFoldersTest, TheSummaryNamesTenAndCountsTheRest) {
    Paths names{std::string(41, '0')}; // a line of its own
    for (int i = 10; i < 21; ++i)
        names.push_back(std::to_string(i));
    for (const std::string& name : names)
        fake::PutFolder("D:\\many\\" + name);
    Choose("D:\\many\\", names);
    Summary("Twelve folders will be purged:" + names[0] +
                "\r\n10 11 12 13 14 15 16 17 18 and\r\n2 more.",
            ui::AnswerCancel);
    Click();
}

TEST_F(PurgeFoldersTest, F10AndFailuresAskAfterTheFileInHand) {
    const std::string file = "D:\\work\\a\\f2";
    // The user presses F10 at f2, or f2 fails in one of two ways; goes on or ends.
    for (const std::string call : {"", "RemoveFile", "WriteBytes"})
        for (const bool goOn : {true, false}) {
            Begin(60 * MiB);
            PutFiles(3);
            ChooseOne("a");
            if (call.empty())
                PressF10When([&] { return fake::At(file) == nullptr; });
            else
                fake::FailAlways(call, file, Fault::AccessDenied);
            const std::string text =
                call == "RemoveFile" ? "File deletion error.  File (shown below) may be hidden.\r\n"
                : call == "WriteBytes" ? "An error (-3) has been reported.\r\n"
                                       : "";
            // Of files purged side by side all are done when the first is told.
            const bool blnAll = intGroupThreads > 1;
            user.Box(strTitle,
                     text + (blnAll && call.empty() ? "D:\\work\\a\\f1" : file) +
                         (call.empty() ? "\r\n" : "\r\n\r\n") + strGoOn,
                     goOn ? ui::AnswerOK : ui::AnswerCancel, {{}, ui::Buttons::OKCancel, 1});
            if (!call.empty())
                user.BoxLike(strTitle, "One file could not be purged.\r\n" + file + ": ",
                             ui::AnswerNo);
            Click();
            EXPECT_EQ(goOn || blnAll, fake::At("D:\\work\\a\\f3") == nullptr);
            EXPECT_EQ(goOn, frmMain.lblSubdirectories2.Caption.ends_with(" been purged."));
            EXPECT_EQ(goOn ? "" : "Purge of folders was stopped.",
                      frmMain.lblLargePurgeMessage.Caption);
        }
    // One that another program holds is passed over; so is one whose data also belong to a name
    // elsewhere, but not one that has its other name in the second of the chosen folders. One that
    // is gone is nobody's failure. A folder that cannot be read is met twice, in counting and in
    // purging, and counts once.
    Begin(60 * MiB);
    PutFiles(5);
    fake::At(file)->Locked = true;
    fake::At("D:\\work\\a\\f1")->Attributes = platform::AttributeEncrypted;
    fake::At("D:\\work\\a\\f4")->Attributes = platform::AttributeIntegrity;
    fake::PutName("D:\\work\\c\\f3", "D:\\work\\a\\f3");
    fake::PutName("D:\\work\\b\\f4", "D:\\work\\a\\f4");
    fake::PutFolder("D:\\work\\a\\closed").Denied = true;
    user.During([] { return !fake::At("D:\\work\\a\\f1"); },
                [] { fake::TakeAway("D:\\work\\a\\f5"); });
    for (int i = 0; i < 6; ++i) // an earlier command has waited for others as long as it may
        (void)TryWhileHeld([] { return Fault::SharingViolation; });
    const std::uint64_t began = platform::TickCount();
    fake::Watch("OpenFile", [](const std::string&) { fake::Advance(50); }); // a slow drive
    fake::Watch("ListNames", [](const std::string&) { EXPECT_TRUE(user.InLongStep); });
    Choose("D:\\work\\", {"a", "b"});
    Summary("Two folders will be purged:a b ");
    user.Box(strTitle,
             "One file could not be purged.\r\n" + file +
                 ": unable to open file for writing (another program is using the file)\r\n"
                 "One folder could not be read completely.\r\nOne purged file was encrypted, "
                 "compressed, sparse or in the cloud: older copies of its data may remain.\r\n2 "
                 "purged files: their file system may keep older copies of their data.\r\n"
                 "One file was not purged, as its data "
                 "also belong to a name outside what was chosen:\r\nD:\\work\\a\\f3\r\n\r\n"
                 "Do you wish to see the report?",
             ui::AnswerNo);
    Click();
    EXPECT_GE(platform::TickCount() - began, 2000u);
    EXPECT_EQ("secret", fake::ContentOf("D:\\work\\c\\f3"));
    EXPECT_EQ((Paths{file, "D:\\work\\a\\f3", "D:\\work\\c\\f3"}), fake::FilesBelow("D:\\work"));
    // F10 while a folder is listed, or a group is looked at, asks before anything is purged.
    for (const bool goOn : {true, false})
        for (const int threads : {0, 4}) {
            Begin(60 * MiB);
            PutFiles(3);
            ChooseOne("a");
            intGroupThreads = threads;
            threads ? PressF10When([] { return fake::CallsMade("ListStreams") > 0; })
                    : StopReading("D:\\work\\a\\");
            user.Box(strTitle,
                     (threads ? "D:\\work\\a\\f1\r\n" : "D:\\work\\a\\\r\n") + std::string(strGoOn),
                     goOn ? ui::AnswerOK : ui::AnswerCancel);
            Click();
            EXPECT_EQ(goOn ? 0u : 3u, fake::FilesBelow("D:\\work").size());
        }
}
