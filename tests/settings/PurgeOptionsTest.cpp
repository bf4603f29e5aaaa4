// The dialog with the purge options, and the cluster sizes.
#include "fakes/ProgramTest.h"
#include "settings/frmPurgeConfirmation.h"

namespace {

struct PurgeOptions : StartedTest {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    bool Ask(fake::Action action, bool blnSingleFile = false, bool blnFolders = true,
             const std::string& folder = "C:\\data\\") {
        user.Modal(f, std::move(action));
        return AskPurgeOptions(folder, blnSingleFile, blnFolders);
    }
    /// Opens the dialog for a folder and cancels; the size that was selected.
    std::string SelectedFor(const std::string& folder) {
        int index = 0;
        const auto look = [&] {
            index = f.cboClusterSize.ListIndex;
            fake::Click(f.cmdCancel);
        };
        EXPECT_FALSE(Ask(look, false, true, folder));
        return index < 0 ? "(none)" : f.cboClusterSize.Items[static_cast<std::size_t>(index)].Text;
    }
    static std::string Flags() {
        std::string text;
        for (const bool flag :
             {blnPurgeSlackOnly, blnDoNotDeletePurgedFiles, blnOKToPurgeReadOnlyFiles,
              blnOKToPurgeSystemFiles, blnOKToPurgeSensitiveFiles, blnFolderNamesOnly,
              blnDeleteEmptyFolders})
            text += flag ? '1' : '0';
        return text;
    }
};

TEST_F(PurgeOptions, BoxesBecomeFlagsOnAcceptanceOnly) {
    const int intHeight = f.Height;
    fake::drives['C'].Nature.Compressed = true;
    EXPECT_TRUE(Ask([&] {
        EXPECT_TRUE(f.lblRemarks.Visible &&
                    f.lblRemarks.Caption.starts_with("Windows compresses "));
        EXPECT_TRUE(f.Height > intHeight && f.cmdCancel.Top + f.cmdCancel.Height < f.Height);
        fake::drives['C'].Nature = {};
        EXPECT_EQ("Yes, purge these files", f.cmdDoPurge.Caption);
        EXPECT_EQ(&f.cmdCancel, user.Focus);
        for (const OptionBox& option : PurgeOptionBoxes()) {
            if (option.Box != &f.chkPurgeSlackOnly && option.Box != &f.chkOKToPurgeSystemFiles)
                fake::Click(*option.Box);
            EXPECT_EQ(&f.cmdCancel, user.Focus);
        }
        EXPECT_EQ("0000000", Flags());
        fake::Click(f.cmdDoPurge);
    }));
    EXPECT_EQ("0110111", Flags());
    EXPECT_FALSE(purgeOptions.Verify || purgeOptions.OverwriteNames);
    // The boxes are found as they were left; what is changed and cancelled does not count.
    EXPECT_FALSE(Ask(
        [&] {
            EXPECT_EQ("Yes, purge this file", f.cmdDoPurge.Caption);
            EXPECT_TRUE(!f.lblRemarks.Visible && f.Height == intHeight);
            EXPECT_EQ(1, f.chkDoNotDeletePurgedFiles.Value);
            EXPECT_FALSE(f.chkDeleteEmptyFolders.Visible || f.chkDeleteEmptyFolders.Value == 1);
            fake::Click(f.chkOKToPurgeReadOnlyFiles);
            fake::PressEscape(f);
        },
        true, false));
    EXPECT_EQ("0110111", Flags());
}

TEST_F(PurgeOptions, SlackOnlyForcesDoNotDeleteAndGivesItBack) {
    for (const int intBefore : {0, 1}) {
        f.chkDoNotDeletePurgedFiles.Value = intBefore;
        f.chkDeleteEmptyFolders.Value = 1;
        f.chkPurgeSlackOnly.Value = 1; // as a setup file would leave it
        f.chkVerifyPurge.Value = f.chkOverwriteNames.Value = 1;
        EXPECT_TRUE(Ask([&] {
            EXPECT_EQ(0, f.chkPurgeSlackOnly.Value);
            EXPECT_EQ(intBefore, f.chkDoNotDeletePurgedFiles.Value);
            const std::string strOrdinary = f.lblMessage.Caption;
            for (int i = 0; i < 3; ++i) { // on, off, on
                fake::Click(f.chkPurgeSlackOnly);
                const bool blnOn = f.chkPurgeSlackOnly.Value == 1;
                EXPECT_EQ(blnOn ? 1 : intBefore, f.chkDoNotDeletePurgedFiles.Value);
                EXPECT_NE(blnOn, fake::CanReach(f.chkDoNotDeletePurgedFiles));
                EXPECT_NE(blnOn, fake::CanReach(f.chkDeleteEmptyFolders));
                EXPECT_NE(blnOn, strOrdinary == f.lblMessage.Caption);
            }
            fake::Click(f.cmdDoPurge);
        }));
        EXPECT_EQ("1100000", Flags()) << "slack only: nothing is deleted, no folder either";
        EXPECT_TRUE(purgeOptions.Verify && !purgeOptions.OverwriteNames);
        EXPECT_TRUE(Ask([&] { fake::Click(f.cmdDoPurge); }));
        EXPECT_EQ(intBefore ? "0100001" : "0000001", Flags());
        EXPECT_TRUE(purgeOptions.Verify && purgeOptions.OverwriteNames);
    }
}

TEST_F(PurgeOptions, ClusterSizeFromTheDriveTheTableOrTheUser) {
    fake::AddDrive('D', 1 << 30, 131072);
    fake::AddDrive('E', 1 << 30).BytesPerSector = 1000;
    fake::AddDrive('F', 1 << 30, 2048);
    const std::pair<const char*, int> sizes[] = {
        {"C", 4096}, {"D", 65536}, {"E", 8000}, {"f:", 2048}, {"A", 512}, {"B", 512}, {"X", 4096}};
    for (const auto& [drive, size] : sizes)
        EXPECT_EQ(size, GetClusterSize(drive)) << drive;
    EXPECT_EQ(131072, GetRealClusterSize("d"));
    EXPECT_EQ("64 KB", SelectedFor("D:\\x\\"));
    EXPECT_EQ("(none)", SelectedFor("E:\\"));
    EXPECT_TRUE(Ask([&] {
        fake::Choose(f.cboClusterSize, "2 KB");
        fake::Click(f.lblClusterSize);
        EXPECT_EQ("NTFS", f.lblFileSystem.Caption);
        fake::Click(f.lblFileSystem);
        EXPECT_FALSE(f.lblFileSystem.Visible);
        fake::Click(f.cmdDoPurge);
    }));
    EXPECT_EQ(2048, GetClusterSize("C"));
    EXPECT_EQ(4096, GetRealClusterSize("C"));
    // A volume that is mounted in a folder has its own.
    fake::PutFolder("C:\\mnt\\big\\x").Attributes = 0;
    fake::At("C:\\mnt\\big")->MountedCluster = 16384;
    EXPECT_EQ("16 KB", SelectedFor("C:\\mnt\\big\\x\\"));
    EXPECT_EQ("Volume in C:\\mnt\\big\\", f.fraClusterSize.Caption);
    EXPECT_EQ(16384, GetRealClusterSize("C:\\mnt\\big\\x\\f.txt"));
    EXPECT_EQ(2048, GetClusterSize("C:\\mnt\\f.txt"));
    EXPECT_EQ("2 KB", SelectedFor("C:\\mnt\\"));
    EXPECT_EQ("Drive C", f.fraClusterSize.Caption);
    fake::AddDrive('C', 1 << 30, 32768); // other media; what was chosen stays
    fake::AddDrive('F', 1 << 30, 32768);
    EXPECT_EQ("32 KB", SelectedFor("F:\\"));
    EXPECT_EQ("2 KB", SelectedFor("C:\\"));
    EXPECT_EQ(32768, GetRealClusterSize("C"));
    fake::drives.clear();
    EXPECT_EQ("32 KB", SelectedFor("F:\\")) << "kept where nobody tells";
    EXPECT_EQ(131072, GetRealClusterSize("D")) << "kept, not asked again";
}

} // namespace
