// Choosing what is to be purged: files, folders, subfolders, by dialogs, dropped, or given.
#include "shell/SpecifyCommands.h"
#include "drives/DriveWork.h"
#include "report/frmReport.h"
#include "shell/ShellTest.h"

#include <thread>

using SpecifyCommands = CommandsTest;

TEST_F(SpecifyCommands, SingleFile) {
    fake::PutFiles({"C:\\docs\\a.txt", "C:\\docs\\sub\\b.txt"});
    ChooseSingleFile("");
    EXPECT_FALSE(f.blnQuitGuard);

    user.Dialog("Specify file to be purged.", "C:\\docs\\a.txt");
    fake::Click(f.cmdSingleFile);
    fake::Click(f.cmdSingleFile); // within the guarded second nothing happens
    fake::Click(f.cmdSpecifyFiles);
    EXPECT_EQ("C:\\docs\\|a.txt||No|(Do not operate on files in lower subfolders.)", Choice());
    EXPECT_FALSE(blnMultipleFiles);
    EXPECT_EQ("", f.lblPurgeSpeed.Caption + f.lblEstimatedTime.Caption);
    ui::Wait(1100);

    fake::AddDrive('A', 1 << 20);
    fake::PutFile("A:\\f.txt", "small");
    sngPurgeSpeeds[0] = 0.05F;
    ChooseSingleFile("A:\\f.txt");
    EXPECT_EQ("0.050 MB/sec. (1 overwrite) for Drive A (floppy drive).", f.lblPurgeSpeed.Caption);
    EXPECT_EQ("Less than a minute.", f.lblEstimatedTime.Caption);
    fake::PutBigFile("A:\\f.txt", 600 << 10);
    ChooseSingleFile("A:\\f.txt");
    EXPECT_EQ("1 minute and 11 seconds", f.lblEstimatedTime.Caption);

    ChooseSingleFile("\\\\server\\share\\x", "x is not on a drive with a letter.\r\n");
    fake::PutFile("C:\\docs\\link.txt").LinkTarget = "C:\\docs\\a.txt";
    ChooseSingleFile("C:\\docs\\link.txt", "C:\\docs\\link.txt is a link.\r\n");
    EXPECT_EQ("A:\\", strDirPath);
}

TEST_F(SpecifyCommands, SpecifyFolder) {
    PutFiles("C:\\docs", 1);
    fake::PutFolder("C:\\linked\\link").LinkTarget = "C:\\docs";
    fake::PutFile("C:\\linked\\hidden.txt", "x", platform::AttributeHidden);
    ChooseFolder("C:\\docs", ui::AnswerYes);
    const std::string chosen = "C:\\docs\\|*.*|(All files.)|No|(The folder has no subfolders.)";
    EXPECT_EQ(chosen, Choice());
    EXPECT_EQ("C:\\docs\\", strBrowsePath);
    ChooseFolder("");
    EXPECT_EQ(chosen, Choice());
    // The old pattern is not applied to the new folder.
    ChooseFolder("C:\\linked", ui::AnswerNo);
    EXPECT_EQ("C:\\linked\\|Not specified||No|(The folder has no subfolders.)", Choice());
    user.Dialog("Specify folder containing files to be purged", "C:\\gone");
    ClickWarned(f.cmdSpecifyDirectory[0], "Error", "Cannot access the folder.");
}

// Every look into a folder that takes long says so, lets nothing be clicked, and ends by F10.
TEST_F(SpecifyCommands, LongLooksIntoAFolderAreToldAndEndByF10) {
    PutFiles("C:\\docs", 2);
    frmReport.txbText.Text = "of the last run";
    double milliseconds = 600;
    for (const char* call : {"EnumerateFolder", "ReadFileFacts"})
        fake::Watch(call, [&milliseconds](const std::string&) { fake::Advance(milliseconds); });
    const auto stopped = [this](const std::string& doing, const fake::Action& command) {
        user.During([=, this] { return f.lblStatus.Caption == doing + " ...  (F10 stops this.)"; },
                    [this] {
                        EXPECT_FALSE(f.fraMenu.Enabled || f.fraSetup.Enabled ||
                                     frmReport.cmdSaveReport.Enabled);
                        fake::PressF10();
                    });
        command();
        user.Finish();
        EXPECT_FALSE(blnStop);
        EXPECT_TRUE(f.fraMenu.Enabled && f.fraSetup.Enabled && frmReport.cmdSaveReport.Enabled);
        EXPECT_EQ(doing + " was stopped.", f.lblStatus.Caption);
    };
    // Without the question, which rests on what was not read.
    stopped("Reading C:\\docs\\", [this] { ChooseFolder("C:\\docs"); });
    stopped("Reading C:\\docs\\", [this] { fake::Click(f.cmdSubdirectories); });
    strFilespec = "*.txt";
    blnMultipleFiles = true;
    user.Box("List files", "Display folder names?", ui::AnswerNo);
    stopped("Looking for files", [this] { fake::Click(f.cmdProcessFiles[0]); });
    user.Box("Purge cancelled", "No files purged.");
    stopped("Counting files", [this] { fake::Click(f.cmdProcessFiles[1]); });
    EXPECT_EQ(2u, fake::FilesBelow("C:\\docs").size());
    const auto drop = [] { FilesDroppedOnMain({"C:\\docs\\f0.txt", "C:\\docs\\f1.txt"}); };
    stopped("Looking at the chosen items", drop);
    EXPECT_EQ("*.txt", strFilespec) << "the choice stays as it was";
    milliseconds = 0;
    // The first call of a search may wait for a disk: it is not made on the interface thread.
    user.RealThreads = true;
    std::thread::id reader;
    fake::Watch("EnumerateFolder",
                [&reader](const std::string&) { reader = std::this_thread::get_id(); });
    fake::Click(f.cmdSubdirectories);
    EXPECT_NE(std::this_thread::get_id(), reader);
    user.RealThreads = false;
    // A short one says nothing, and takes the old word away.
    EXPECT_EQ("", f.lblStatus.Caption);
    EXPECT_EQ("(The folder has no subfolders.)", f.lblSubdirectories2.Caption);
}

// What a path leads to is chosen, shown and asked about, by whatever name it was found.
TEST_F(SpecifyCommands, APathIsWhatItResolvesTo) {
    fake::PutFile("C:\\Long name\\Docs\\a.txt");
    fake::PutShortName("C:\\Long name", "LONGNA~1");
    fake::PutFolder("C:\\way\\link").LinkTarget = "C:\\Long name";
    fake::AddDrive('E', 1).StandsFor = "C:";
    fake::AddDrive('L', 1).StandsFor = "C:\\way\\link";
    const std::string choice = "C:\\Long name\\Docs\\|a.txt||No|(The folder has no subfolders.)";
    for (const std::string folder : {"C:\\LONGNA~1\\docs", "C:\\x\\..\\Long name\\Docs",
                                     "C:\\way\\link\\Docs", "E:\\Long name\\Docs", "L:\\Docs"}) {
        SCOPED_TRACE(folder);
        ChooseSingleFile(folder + "\\A.TXT");
        EXPECT_EQ(choice, Choice());
        ClearSpecification();
        ChooseFolder(folder, ui::AnswerNo, "C:\\Long name\\Docs");
    }
    // The root of a drive is no link, whatever its letter stands for.
    ChooseFolder("L:\\");
    EXPECT_EQ("C:\\Long name\\", strDirPath);
    // A setup may have been written by hand.
    fake::PutFile("C:\\hand.nws", "1.0,0,0,L:\\Docs,,0,1,0,0,0,0,0,0,0");
    fake::DropFiles(f, {"C:\\hand.nws"});
    EXPECT_EQ("C:\\Long name\\Docs\\", f.lblDirectory.Caption);
    // What lies on a server keeps its letter.
    fake::AddDrive('N', 1 << 20, 4096, platform::DriveType::Remote);
    fake::PutFile("N:\\docs\\a.txt");
    ChooseSingleFile("N:\\x\\..\\docs\\a.txt");
    fake::PutFile("C:\\Long name\\what?.txt");
    ChooseSingleFile("C:\\Long name\\what?.txt", "must not contain \"?\" or \"*\".");
    fake::FailAlways("ReadFileFacts", "Docs", platform::Fault::AccessDenied);
    user.Dialog("Specify folder containing files to be purged", "C:\\Long name\\Docs");
    ClickWarned(f.cmdSpecifyDirectory[0], "Error", "cannot be accessed: Access was denied.");
    EXPECT_EQ("N:\\docs\\", strDirPath);
}

TEST_F(SpecifyCommands, SpecifyFiles) {
    ClickWarned(f.cmdSpecifyFiles, "Folder unspecified", "The folder has not been specified.");
    fake::PutFiles({"C:\\docs\\a.txt", "C:\\tree\\a.txt", "C:\\tree\\sub\\b.doc"});
    fake::PutFolder("C:\\empty");
    ChooseFolder("C:\\docs", ui::AnswerNo);
    Specify("*.txt");
    EXPECT_EQ("*.txt(All files with extension txt.)", f.lblFiles.Caption + f.lblFiles2.Caption);
    Specify("?.doc", "Empty folder", "The folder contains no matching files and no subfolders.");
    ChooseFolder("C:\\empty");
    Specify("*.txt", "Empty folder", "The folder contains no files and no subfolders.");

    ChooseFolder("C:\\tree", ui::AnswerNo);
    Specify("?.doc", "Specify files", "There are no files in C:\\tree\\.");
    fake::Click(f.cmdSubdirectories);
    Specify("?.xyz", "Specify files", "\r\nor in any of its subfolders.");
    fake::TakeAway("C:\\tree");
    Specify("?.txt", "Error", "Cannot access the folder.");
    user.Modal(frmFileSpecification, [] { fake::PressEscape(frmFileSpecification); });
    fake::Click(f.cmdSpecifyFiles);
    EXPECT_EQ("?.txt", strFilespec);
    for (const std::string form : {"*.t?t", "*", "*."}) {
        strFilespec = form;
        UpdateFilesLabels();
        EXPECT_EQ("(All files of the form " + form + ".)", f.lblFiles2.Caption);
    }
}

TEST_F(SpecifyCommands, TogglesAndClear) {
    fake::PutFiles({"C:\\flat\\a.txt", "C:\\tree\\sub\\b.doc"});
    ChooseFolder("C:\\flat", ui::AnswerYes);
    fake::Click(f.cmdSubdirectories);
    EXPECT_EQ("(The folder has no subfolders.)", f.lblSubdirectories2.Caption);
    ChooseFolder("C:\\tree");
    f.lblSetupFilename.Caption = "some.nws";
    fake::Click(f.cmdSubdirectories);
    EXPECT_TRUE(Choice().ends_with("|Yes|(Operate on all specified files in lower subfolders.)"));
    EXPECT_EQ("", f.lblSetupFilename.Caption);
    fake::drives['C'].MediaPresent = false;
    ClickWarned(f.cmdSubdirectories, "Error", "Error when attempting to access C:\\tree\\.");
    fake::drives['C'].MediaPresent = true;
    EXPECT_TRUE(blnSubdirectories);

    fake::Click(f.cmdConfirmFiles);
    EXPECT_EQ("Yes", f.lblConfirmFiles.Caption);
    for (const int answer : {ui::AnswerNo, ui::AnswerYes}) {
        user.Box("Clear", "Clear folder and file specifications?", answer, fake::AsksYesNo);
        fake::Click(f.cmdClear);
        EXPECT_EQ(answer == ui::AnswerNo ? "C:\\tree\\" : "", strDirPath + strFilespec);
    }
    EXPECT_EQ("Not specified|Not specified||No", Choice().substr(0, 31));
}

TEST_F(SpecifyCommands, DroppedAndGivenPaths) {
    PutFiles("C:\\docs", 2);
    fake::DropFiles(f, {"C:\\docs\\f1.txt"});
    EXPECT_EQ("C:\\docs\\|f1.txt||No|(The folder has no subfolders.)", Choice());
    EXPECT_FALSE(f.blnQuitGuard);
    user.Box("Specify folder", "Do you wish to purge ALL files in C:\\docs\\?", ui::AnswerYes,
             fake::AsksYesNo);
    fake::DropFiles(f, {"C:\\docs"});
    EXPECT_EQ("*.*", strFilespec);
    user.Box("Error", "Error when attempting to load setup from file C:\\docs\\bad.nws!");
    fake::PutFile("C:\\docs\\bad.nws", "1.0\r\n");
    fake::Watch("OpenFile", [](const std::string&) { EXPECT_TRUE(user.InLongStep); });
    ForgetDriveSpeeds(); // the drive may be slow
    fake::DropFiles(f, {"C:\\docs\\bad.nws"});
    user.BoxLike("Single file", "\\\\dead\\a.txt is not on a drive with a letter.\r\n");
    fake::DropFiles(f, {"\\\\dead\\a.txt"}); // its server is not asked

    fake::currentFolder = "C:\\docs";
    user.Box("Error when attempting to load setup.", "File C:\\docs\\missing.nws not found!");
    user.Box("Single file", "File C:\\docs\\missing.txt not found.");
    for (const char* given : {"missing.nws", "C:\\docs\\missing.txt"}) {
        fake::commandLine = {given};
        OpenCommandLineFiles(CommandLineFiles());
    }
    EXPECT_EQ("*.*", strFilespec);
}
