// The selection dialogs, as a person uses them.
#include "selection/Selection.h"
#include "fakes/ProgramTest.h"
#include "selection/frmDrives.h"
#include "selection/frmFileSpecification.h"
#include "selection/frmSubfolders.h"
#include "shell/frmMain.h"

struct SelectionTest : ProgramTest {
    FrmFileSpecification& spec = frmFileSpecification;
    FrmSubfolders& sub = frmSubfolders;

    void SetUp() override {
        ProgramTest::SetUp();
        LoadSelectionForms();
        for (const char* name : {"a.txt", " a.txt", "b.TXT", "c.doc", "read.me.doc"})
            fake::PutFile(std::string("C:\\docs\\") + name);
        fake::PutFile("C:\\docs\\sub\\d.txt");
    }
    std::string Ask(const fake::Action& action) {
        user.Modal(spec, action);
        return AskFileSpecification("C:\\docs\\");
    }
    /// The answer of the subfolder chooser, and what is chosen.
    static std::pair<SubfolderChoice, std::string> Select(SubfolderUse use = SubfolderUse::Purge) {
        std::string chosen = "(untouched)";
        const SubfolderChoice choice = SelectSubfolders("C:\\docs", "Which?", use, chosen);
        return {choice, chosen};
    }
};

TEST_F(SelectionTest, FileSpecificationForms) {
    const char* const characters =
        "A file name cannot contain any of the characters \\ / : < > | \".";
    // The kind, what is typed and what comes of it, none with the text of the refusal behind it.
    const std::tuple<std::size_t, const char*, std::string, const char*> cases[] = {
        {0, " a.txt", " a.txt", "One file in this folder matches."},
        {0, "a.txt ", "a.txt ", "No files in this folder match."},
        {0, "C.DOC", "C.DOC", "One file in this folder matches."},
        {0, "c:\\sub\\..\\DOCS\\c.doc", "c.doc", "One file in this folder matches."},
        {1, "", "*.*", "Five files in this folder match."},
        {2, " txt ", "*.txt", "Three files in this folder match."},
        {2, "*.xyz", "*.xyz", "No files in this folder match."},
        {3, "?.*", "?.*", "Three files in this folder match."},
        {3, " *", " *", "One file in this folder matches."},
        {2, "tar.gz", "", "Extension must not contain \".\""},
        {2, " *. ", "", "Type the extension."},
        {2, "a\"b", "", characters},
        {0, "  ", "", "Type the name of the file, or choose it."},
        {0, "*.doc", "", "The name of a single file must not contain \"?\" or \"*\"."},
        {0, "C:\\other\\c.doc", "", characters},
        {3, "  ", "", "Type the form of the file names, as in \"report*.doc\"."},
    };
    ui::TextBox* const boxes[] = {&spec.txbSingleFile, nullptr, &spec.txbExtension, &spec.txbForm};
    for (const auto& [kind, typed, result, text] : cases) {
        SCOPED_TRACE(typed);
        EXPECT_EQ(result, Ask([&] {
                      fake::Click(spec.optSpecification[kind]);
                      const auto asked = fake::CallsMade("ReadFolderIdentity");
                      if (boxes[kind])
                          fake::Type(*boxes[kind], typed);
                      EXPECT_EQ(asked, fake::CallsMade("ReadFolderIdentity")) << "at each key";
                      if (!result.empty()) {
                          EXPECT_EQ(text, spec.lblMatches.Caption);
                          return fake::PressEnter(spec);
                      }
                      user.Box("Error", text, fake::Warns);
                      fake::Click(spec.cmdOK);
                      EXPECT_TRUE(spec.Visible);
                      fake::PressEscape(spec);
                  }));
    }
}

TEST_F(SelectionTest, FileSpecificationRemembersAndLetsChoose) {
    strFilespec = "*.doc";
    EXPECT_EQ("c.doc", Ask([&] {
                  EXPECT_TRUE(spec.optSpecification[2].Value);
                  EXPECT_EQ("doc", spec.txbExtension.Text);
                  user.Dialog("Choose the file", "C:\\other\\e.doc");
                  user.Box("Error", "The file must be in the folder C:\\docs\\.");
                  fake::Click(spec.cmdChooseFile);
                  user.Dialog("Choose the file", "C:\\docs\\c.doc");
                  fake::Click(spec.cmdChooseFile);
                  EXPECT_TRUE(spec.optSpecification[0].Value);
                  fake::Click(spec.cmdOK);
              }));
    // A folder that is slow or gone is said, and stops nobody.
    strFilespec = "a?c.*";
    fake::FailAlways("EnumerateFolder", "", platform::Fault::NotReady);
    EXPECT_EQ("*.txt", Ask([&] {
                  EXPECT_EQ("The folder cannot be read.", spec.lblMatches.Caption);
                  EXPECT_TRUE(spec.optSpecification[3].Value);
                  fake::Type(spec.txbExtension, "txt"); // typing chooses
                  fake::Click(spec.cmdOK);
              }));
}

TEST_F(SelectionTest, SubfoldersByNameAndTheirAnswersToldApart) {
    fake::PutFiles({"C:\\docs\\a (1) (2)\\inner\\x", "C:\\docs\\a (1) (2)\\y"});
    fake::PutFolder("C:\\docs\\link").LinkTarget = "C:\\elsewhere";
    user.Modal(sub, [&] {
        ASSERT_EQ(2u, sub.lstSubfolders.Items.size()); // without the link
        for (const char* name : {"a (1) (2)  (1 file, 1 subfolder)", "sub  (1 file, no subfolders)",
                                 "sub  (1 file, no subfolders)"})
            fake::Choose(sub.lstSubfolders, name);
        EXPECT_EQ("One subfolder is chosen.", sub.lblChosen.Caption);
        fake::Click(sub.cmdOK);
    });
    EXPECT_EQ("a (1) (2)\r\n", Select().second);
    const auto answer = [](SubfolderChoice choice) { return std::pair(choice, std::string()); };
    user.Modal(sub, [&] {
        EXPECT_TRUE(sub.lblUse.Caption.starts_with("Folders chosen here are PURGED"));
        fake::Click(sub.cmdOK);
    });
    EXPECT_EQ(answer(SubfolderChoice::NoneChosen), Select());
    for (const bool escape : {true, false}) {
        user.Modal(sub, [&] {
            EXPECT_TRUE(sub.lblUse.Caption.starts_with("Folders chosen here are KEPT."));
            EXPECT_EQ("Kept: no folders.  Purged: 2 folders.", sub.lblChosen.Caption);
            fake::Choose(sub.lstSubfolders, sub.lstSubfolders.Items[0].Text);
            EXPECT_EQ("Kept: 1 folder.  Purged: 1 folder.", sub.lblChosen.Caption);
            fake::Click(sub.cmdChooseAll);
            EXPECT_EQ("Kept: 2 folders.  Purged: no folders.", sub.lblChosen.Caption);
            escape ? fake::PressEscape(sub) : fake::CloseForm(sub);
        });
        EXPECT_EQ(answer(SubfolderChoice::Cancelled), Select(SubfolderUse::Keep));
    }
    // What could be missing from the list could not be kept: no list then.
    fake::FailNth(1, platform::Fault::NotReady, "EnumerateFolder");
    user.BoxLike("Error", "could not be read completely: The drive is not ready.\r\n");
    EXPECT_EQ(answer(SubfolderChoice::NotOffered), Select());
    fake::Watch("EnumerateFolder", [](const std::string&) { fake::Advance(600); });
    user.During([] { return frmMain.lblStatus.Caption.starts_with("Reading C:\\docs\\ ..."); },
                [] { blnStop = true; });
    EXPECT_EQ(answer(SubfolderChoice::NotOffered), Select());
    EXPECT_EQ("Reading C:\\docs\\ was stopped.", frmMain.lblLargePurgeMessage.Caption);
}

// Each folder takes long to look into: the dialog is there after a moment, counts on while it is
// open, and stops counting by F10.
TEST_F(SelectionTest, SubfoldersAreCountedInSlices) {
    for (int i = 0; i < 9; ++i)
        fake::PutFolder("C:\\docs\\n" + std::to_string(i));
    fake::PutFolder("C:\\docs\\z");
    fake::OnCall("EnumerateFolder", [](const std::string& path) {
        EXPECT_TRUE(user.InLongStep) << "a slow drive";
        fake::Advance(path == "C:\\docs\\" ? 0 : 100);
        return path == "C:\\docs\\z\\" ? platform::Fault::AccessDenied : platform::Fault::None;
    });
    user.Modal(sub, [&] {
        EXPECT_EQ("n3  (no files, no subfolders)", sub.lstSubfolders.Items[3].Text);
        EXPECT_EQ("n6  (not counted)", sub.lstSubfolders.Items[6].Text);
        fake::Choose(sub.lstSubfolders, "n6  (not counted)");
        for (int i = 0; i < 20; ++i)
            ui::Wait(15);
        EXPECT_EQ("z  (cannot be read)", sub.lstSubfolders.Items[10].Text);
        EXPECT_FALSE(sub.Clock1.Enabled);
        fake::Click(sub.cmdOK);
    });
    EXPECT_EQ("n6\r\n", Select().second);
}

TEST_F(SelectionTest, DrivesAreShownWithWhatIsKnown) {
    fake::drives['C'].Label = "Windows";
    fake::drives['C'].Occupied = 0;
    fake::AddDrive('D', 1 << 20, 4096, platform::DriveType::Removable);
    fake::AddDrive('E', 1 << 20, 2048, platform::DriveType::CdRom).MediaPresent = false;
    fake::AddDrive('N', 1 << 20, 4096, platform::DriveType::Remote).Label = "server";
    fake::Watch("", [](const std::string& drive) { // the server may not answer
        EXPECT_FALSE(drive.starts_with('N')) << drive;
    });
    user.Modal(frmDrives, [&] {
        EXPECT_EQ("Which drive?", frmDrives.Caption);
        EXPECT_EQ(0u, frmDrives.lstDrives.Items[0].Text.rfind("C:  Windows, local disk, ", 0));
        EXPECT_EQ("D:  removable disk, 1.00 MB free of 1.00 MB", frmDrives.lstDrives.Items[1].Text);
        EXPECT_EQ("N:  network drive", frmDrives.lstDrives.Items[3].Text);
        EXPECT_FALSE(fake::CanReach(frmDrives.cmdOK)); // none is chosen beforehand
        fake::Choose(frmDrives.lstDrives, "E:  CD-ROM, no medium");
        frmDrives.lstDrives.DoubleClick();
    });
    EXPECT_EQ('E', ChooseDrive("Which drive?", "CDEN"));
    user.Modal(frmDrives, [&] { fake::PressEnter(frmDrives); });
    EXPECT_EQ('D', ChooseDrive("Which drive?", "D"));
    user.Modal(frmDrives, [&] { fake::CloseForm(frmDrives); });
    EXPECT_EQ(0, ChooseDrive("Which drive?", "CD"));
}
