// Several files and folders at once: chosen, counted, purged, and saved as a report.
#include "report/frmReport.h"
#include "settings/frmPurgeConfirmation.h"
#include "shell/ShellTest.h"
#include "shell/SpecifyCommands.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

using ChosenItems = CommandsTest;

TEST_F(ChosenItems, FromTwoDrivesWithOverlapsArePurgedOnce) {
    fake::AddDrive('D', 1 << 30);
    for (const char* file :
         {"D:\\e\\mnt\\in\\8.txt", "D:\\e\\mnt\\no.txt", "C:\\a\\1.txt", "C:\\a\\2.txt",
          "C:\\a\\keep.txt", "C:\\b\\3.txt", "C:\\b\\deep\\4.txt", "D:\\5.txt", "D:\\locked.txt",
          "D:\\e\\6.txt", "C:\\other\\7.txt"})
        fake::PutFile(file, "data");
    fake::At("D:\\locked.txt")->Locked = true;
    fake::At("D:\\e\\mnt")->MountedCluster = 4096; // the walk of D:\e does not enter it
    fake::PutFolder("C:\\link").LinkTarget = "C:\\other";
    const std::string strLink =
        " is a link.\r\nLinks are not followed: choose what it leads to.\r\n";
    user.Box("Chosen items",
             "3 of 14 items cannot be purged:\r\nD:\\e\\mnt\\" + strLink + "C:\\link" + strLink +
                 "C:\\gone.txt was not found.",
             fake::Warns);
    FilesDroppedOnMain({"C:\\a\\1.txt", "C:\\b", "D:\\5.txt", "C:\\A\\2.TXT", "C:\\a\\.\\2.txt",
                        "D:\\e", "D:\\e\\mnt\\no.txt", "D:\\e\\mnt\\in\\8.txt", "C:\\b\\deep",
                        "C:\\b\\deep\\4.txt", "C:\\b\\3.txt", "C:\\link", "D:\\locked.txt",
                        "C:\\gone.txt"});
    EXPECT_EQ("10 chosen items (7 files, 3 folders)", f.lblDirectory.Caption);
    EXPECT_TRUE(f.lblDirectory.ToolTip.starts_with("C:\\a\\1.txt\r\nC:\\b\\\r\nD:\\5.txt\r\n"));
    fake::Click(f.cmdSubdirectories);
    EXPECT_EQ("Yes", f.lblSubdirectories.Caption);
    user.Modal(frmPurgeConfirmation, [] {
        EXPECT_EQ("8 files in 10 chosen items (7 files, 3 folders), 32 bytes",
                  frmPurgeConfirmation.lblWhat.Caption);
        fake::Click(frmPurgeConfirmation.cmdDoPurge);
    });
    user.BoxLike(
        "Purge files",
        "want to purge all 8 files in 10 chosen items (7 files, 3 folders)\r\nand all files",
        ui::AnswerYes);
    fake::Click(f.cmdProcessFiles[1]);
    const std::string& report = frmReport.txbText.Text;
    EXPECT_THAT(report,
                HasSubstr("Purging 10 chosen items (7 files, 3 folders)\r\n(including all files "
                          "in subfolders) \r\nusing random bytes 6 times."));
    const auto left = fake::FilesBelow("C:\\");
    EXPECT_EQ((std::vector<std::string>{"C:\\a\\keep.txt", "C:\\other\\7.txt"}),
              std::vector(left.end() - 2, left.end()));
    EXPECT_EQ(fake::FilesBelow("D:\\"),
              (std::vector<std::string>{"D:\\e\\mnt\\no.txt", "D:\\locked.txt"}));

    // Both forms of the saved report hold each file; what cannot be saved loses nothing.
    const char* const question = "Save report";
    user.Dialog(question, "C:\\report");
    fake::Click(f.cmdSetup); // to the panel the menu gives way, and stays away
    fake::Watch("WriteBytes", [&](const std::string&) { EXPECT_FALSE(f.fraSetup.Enabled); });
    fake::Click(frmReport.cmdSaveReport);
    EXPECT_TRUE(f.fraSetup.Enabled && frmReport.cmdSaveReport.Enabled && !f.fraMenu.Enabled);
    fake::Click(f.cmdKeepSetup);
    std::string saved = fake::ContentOf("C:\\report.txt");
    EXPECT_TRUE(saved.starts_with(report.substr(0, 100)));
    EXPECT_THAT(saved, HasSubstr("C:\\a\\2.txt (4 bytes) purged\r\n"));
    for (const std::string& text : {report, saved}) {
        EXPECT_THAT(text, HasSubstr("Number of files purged: 7\r\n"));
        EXPECT_THAT(text,
                    HasSubstr("\r\nFiles that could not be purged: 1\r\nD:\\locked.txt: unable"));
    }
    user.Dialog(question, "C:\\report|JSON lines (*.json)");
    fake::Click(frmReport.cmdSaveReport);
    saved = fake::ContentOf("C:\\report.json");
    EXPECT_EQ(10, std::count(saved.begin(), saved.end(), '\n'));
    EXPECT_TRUE(
        saved.starts_with("{\"path\":\"C:\\\\a\\\\1.txt\",\"bytes\":4,\"result\":\"purged\","
                          "\"passes\":6,\"error\":0,\"time\":"))
        << saved;
    EXPECT_THAT(saved, HasSubstr("\"purged\":7,\"files\":9,\"failed\":1,\"bytes\":28,"));
    fake::FailAlways("WriteBytes", "report.json.new1", Fault::DiskFull);
    user.Dialog(question, "C:\\report.json");
    user.BoxLike("File exists", "C:\\report.json", ui::AnswerYes);
    user.BoxLike("Save report", "cannot be saved in C:\\report.json.\r\nThe disk is full.");
    fake::Click(frmReport.cmdSaveReport);
    EXPECT_EQ(saved, fake::ContentOf("C:\\report.json"));
}

TEST_F(ChosenItems, GiveWayToWhatIsChosenNextAndAreNotSaved) {
    PutFiles("C:\\docs", 4);
    fake::PutFile("C:\\docs\\sub\\deep.txt");
    ChooseSingleFile("C:\\docs\\f0.txt|C:\\docs\\f2.txt"); // two in the dialog for one
    EXPECT_EQ("2 chosen items (2 files)|As chosen (point at the line above to see them)||No|(No "
              "folder is among the chosen items.)",
              Choice());
    fake::Click(f.cmdSubdirectories);
    EXPECT_FALSE(blnSubdirectories);
    sngPurgeSpeeds[2] = 10; // of drive C
    user.Box("List files", "Display folder names?", ui::AnswerYes, fake::AsksYesNoCancel);
    fake::Click(f.cmdProcessFiles[0]);
    EXPECT_NE(frmReport.txbText.Text.find("Number of files: 2\r\n"), std::string::npos);
    EXPECT_NE(frmReport.txbText.Text.find("Estimated purge time: less than"), std::string::npos);
    user.Box("Clear", "Clear folder and file specifications?", ui::AnswerYes, fake::AsksYesNo);
    fake::Click(f.cmdClear);
    EXPECT_EQ("Not specified", f.lblDirectory.Caption);

    FilesDroppedOnMain({"C:\\docs\\f0.txt", "C:\\docs\\sub"});
    user.BoxLike("Save setup", "The chosen items are not part of a setup.");
    fake::Click(f.cmdSetup);
    fake::Click(f.cmdSaveSetup);
    fake::Click(f.cmdSaveSetupForNextRun);
    fake::TakeAway("C:\\docs\\f0.txt"); // what is gone when the run comes to it is told
    user.Modal(frmPurgeConfirmation, [] { fake::Click(frmPurgeConfirmation.cmdDoPurge); });
    user.BoxLike("Purge files", "want to purge the single file in 2 chosen items", ui::AnswerYes);
    fake::Click(f.cmdProcessFiles[1]);
    EXPECT_THAT(frmReport.txbText.Text, HasSubstr("C:\\docs\\f0.txt: no longer there.\r\n"));
    EXPECT_EQ(3U, fake::FilesBelow("C:\\docs").size());
    ChooseFolder("C:\\docs", ui::AnswerNo);
    EXPECT_EQ("C:\\docs\\", f.lblDirectory.Caption);
    EXPECT_EQ("", f.lblDirectory.ToolTip);
}

TEST_F(ChosenItems, MustBeInTheFoldersThatWereChosen) {
    fake::PutFiles({"C:\\x\\a\\1.txt", "C:\\x\\b\\2.txt", "C:\\o\\a\\1.txt", "C:\\o\\b\\2.txt"});
    FilesDroppedOnMain({"C:\\x\\a", "C:\\x\\b\\2.txt"});
    user.Modal(frmPurgeConfirmation, [] {
        EXPECT_TRUE(fake::ReplaceByLink("C:\\x", "C:\\o"));
        fake::Click(frmPurgeConfirmation.cmdDoPurge);
    });
    user.BoxLike("Purge files", "all 2 files", ui::AnswerYes);
    fake::Click(f.cmdProcessFiles[1]);
    EXPECT_THAT(frmReport.txbText.Text,
                HasSubstr("C:\\x\\b\\: not the folder any more that was cho"));
    EXPECT_THAT(frmReport.txbText.Text, HasSubstr("Folders that could not be read: 2\r\n"));
    EXPECT_EQ(2u, fake::FilesBelow("C:\\o").size());
    // What concerns the folder is asked once: of each further file its facts and its real path.
    fake::PutFolder("C:\\s").TellsCase = true;
    fake::PutFiles({"C:\\s\\a", "C:\\s\\A", "C:\\s\\b"});
    const auto made = fake::CallsMade();
    FilesDroppedOnMain({"C:\\s\\a", "C:\\s\\A", "C:\\s\\b", "C:\\s\\a"});
    EXPECT_EQ(made + 2 * 4 + 3, fake::CallsMade());
    EXPECT_EQ("3 chosen items (3 files)", f.lblDirectory.Caption);
}
