// What the tests of the commands on drives share: a small drive D: to work on, the choices in the
// dialogs, and what must hold whatever happened.
#pragma once

#include "disk/FillDisk.h"
#include "fakes/ProgramTest.h"
#include "report/frmReport.h"
#include "selection/frmDrives.h"
#include "selection/frmSubfolders.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMain.h"

using Paths = std::vector<std::string>;

constexpr std::uint64_t MiB = 1048576;

inline const char* const strTrailer =
    "\r\n\r\nClick 'OK' to continue or 'Cancel' to terminate this operation.";

struct DriveTest : StartedTest {
    /// Drive D: with a file of somebody's on it; one random pass.
    void SetUp() override { Begin(120 * MiB); }
    void Begin(std::uint64_t capacity) {
        StartedTest::SetUp();
        fake::AddDrive('D', capacity).FileSystem = "exFAT"; // see SmallRecordsTest.cpp
        fake::PutFile("D:\\docs\\letter.txt", "somebody's");
        SetPasses(1);
    }
    static void SetPasses(int passes) {
        ui::SelectOption(frmTypeOfPurge.optPurgeType, 0);
        frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = passes - 1;
    }
    /// Leaves this much free on D:.
    static void LeaveFree(std::uint64_t bytes) {
        fake::Drive& drive = fake::drives['D'];
        drive.Occupied += drive.Free() - bytes;
    }
    static void ChooseDrive(const std::string& title, char letter = 'D') {
        user.Modal(frmDrives, [title, letter] {
            EXPECT_EQ(title, frmDrives.Caption);
            for (const ui::ListItem& item : std::vector(frmDrives.lstDrives.Items))
                if (item.Data == letter)
                    fake::Choose(frmDrives.lstDrives, item.Text);
            fake::Click(frmDrives.cmdOK);
        });
    }
    static void ChooseSubfolders(const std::string& title, const Paths& names) {
        user.Modal(frmSubfolders, [title, names] {
            EXPECT_EQ(title, frmSubfolders.Caption);
            for (const std::string& name : names)
                for (const ui::ListItem& item : std::vector(frmSubfolders.lstSubfolders.Items))
                    if (item.Text.starts_with(name + " "))
                        fake::Choose(frmSubfolders.lstSubfolders, item.Text);
            fake::Click(frmSubfolders.cmdOK);
        });
    }
    /// Looking into this folder takes half a second and more, and F10 is pressed meanwhile.
    static void StopReading(const std::string& folder) {
        fake::Watch("EnumerateFolder",
                    [folder](const std::string& path) { fake::Advance(path == folder ? 600 : 0); });
        PressF10When([folder] {
            return frmMain.lblStatus.Caption == "Reading " + folder + " ...  (F10 stops this.)";
        });
    }
    static void PressF10When(std::function<bool()> when) {
        user.During(std::move(when), [] { fake::PressF10(); });
    }
    /// Our folders and dummy files on a drive.
    static Paths Dummies() {
        Paths found;
        for (const auto& [letter, drive] : fake::drives)
            for (const auto& child : drive.Root->Children)
                if (child->Name.starts_with("_nw_dummy"))
                    found.push_back(child->Name);
        return found;
    }
    /// Clicks, and lets the script come to its end.
    static void Run(ui::Button& command) {
        fake::Click(command);
        ExpectRest();
        user.Finish();
    }
    /// Nothing of ours is left, nothing runs, the menu is there.
    static void ExpectRest() {
        EXPECT_TRUE(Dummies().empty()) << Dummies().front();
        EXPECT_FALSE(blnPurgingFreeSpace || blnPurgingDrive || blnStop);
        EXPECT_TRUE(frmMain.fraMenu.Enabled && blnDisplayDialogBoxesDuringRemainderOfPurgeDrive);
        EXPECT_EQ("", frmMain.lblStatus.Caption);
        EXPECT_EQ(-1, user.TaskbarFraction);
        EXPECT_FALSE(user.EscapeHeld);
        EXPECT_EQ(52428800, dblMaxSizeDummyFile);
        EXPECT_EQ(0, FillDisk.intTestQuantity);
        EXPECT_EQ(0, fake::OpenHandles());
    }
};
