// What the tests of the main window share.
#pragma once

#include "fakes/ProgramTest.h"
#include "selection/frmFileSpecification.h"
#include "shell/frmMain.h"

/// Paths of the setup that the next run finds, and of the window's place.
inline const std::string strNextRun = "C:\\Users\\me\\AppData\\Roaming\\Nullwright\\nullwright.usr";
inline const std::string strWindowPlace =
    "C:\\Users\\me\\AppData\\Roaming\\Nullwright\\nullwright.pos";

/// The labels of a setup that chooses nothing, up to the type of purge.
inline const std::string strNothingChosen =
    "Not specified|Not specified||No|(Do not operate on files in lower subfolders.)|"
    "No(Do not confirm purge operation for each file.)|";

struct ShellTest : ProgramTest {
    FrmMain& f = frmMain;

    /// What the labels say of a setup.
    std::string Labels() const {
        return Choice() + "|" + f.lblConfirmFiles.Caption + f.lblConfirmFiles2.Caption + "|" +
               f.lblTypeOfPurge.Caption + "|" + f.lblEstimatedTime.Caption + "|" +
               f.lblSetupFilename.Caption;
    }
    /// The part of it that tells what is to be purged.
    std::string Choice() const {
        return f.lblDirectory.Caption + "|" + f.lblFiles.Caption + "|" + f.lblFiles2.Caption + "|" +
               f.lblSubdirectories.Caption + "|" + f.lblSubdirectories2.Caption;
    }
};

using StartedShell = Started<ShellTest>;

/// The commands that choose what to purge, and those that list and purge it.
struct CommandsTest : StartedShell {
    void TearDown() override {
        EXPECT_TRUE(f.fraMenu.Enabled && f.fraSetup.Enabled && f.cmdProcessFiles[1].Enabled);
        EXPECT_EQ("", f.lblLargePurgeMessage.Caption);
        StartedShell::TearDown();
    }
    static void PutFiles(const std::string& folder, int count, const char* extension = ".txt") {
        for (int i = 0; i < count; ++i)
            fake::PutFile(folder + "\\f" + std::to_string(i) + extension);
    }
    /// `purgeAll` answers the question that is asked where the folder holds files.
    void ChooseFolder(const std::string& folder, std::optional<int> purgeAll = {},
                      const std::string& shown = "") {
        fake::user.Dialog("Specify folder containing files to be purged", folder);
        if (purgeAll)
            fake::user.Box("Specify folder",
                           "Do you wish to purge ALL files in " + (shown.empty() ? folder : shown) +
                               "\\?",
                           *purgeAll, fake::AsksYesNo);
        fake::Click(f.cmdSpecifyDirectory[0]);
    }
    /// With the box that the command must end with, if any.
    void Specify(const std::string& filespec, const std::string& title = "",
                 const std::string& text = "") {
        fake::user.Modal(frmFileSpecification, [filespec] {
            fake::Type(frmFileSpecification.txbForm, filespec);
            fake::Click(frmFileSpecification.cmdOK);
        });
        if (!text.empty())
            fake::user.BoxLike(title, text, ui::AnswerOK, fake::Warns);
        fake::Click(f.cmdSpecifyFiles);
    }
    void ChooseSingleFile(const std::string& path, const std::string& complaint = "") {
        fake::user.Dialog("Specify file to be purged.", path);
        if (!complaint.empty())
            fake::user.BoxLike("Single file", complaint, ui::AnswerOK, fake::Warns);
        fake::Click(f.cmdSingleFile);
        ui::Wait(1100);
    }
    /// A command that does nothing but complain, with this in its text.
    static void ClickWarned(ui::Button& command, const std::string& title,
                            const std::string& text) {
        fake::user.BoxLike(title, text, ui::AnswerOK, fake::Warns);
        fake::Click(command);
    }
};
