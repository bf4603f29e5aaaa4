// The last confirmation before a purge, and the purge options.
#include "settings/frmPurgeConfirmation.h"

#include "drives/ClusterSizes.h"
#include "drives/DiskProc.h"
#include "drives/DriveNature.h"
#include "platform/Drives.h"
#include "support/Paths.h"
#include "support/ProgramTexts.h"
#include "ui/Interface.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

FrmPurgeConfirmation frmPurgeConfirmation;

namespace {

// What the dialog is shown for.
std::string strFolderShown;
bool blnSingleFileShown = false;
bool blnFoldersShown = false;
std::string strFileSystemShown;

/// "C" for "C:\folder\".
std::string DriveShown() {
    const char chrDrive = DriveLetterOf(strFolderShown);
    return chrDrive ? std::string(1, chrDrive) : "";
}

void GiveFocusToCancel() {
    if (frmPurgeConfirmation.Visible)
        ui::SetFocus(frmPurgeConfirmation.cmdCancel);
}

/// A slack-only purge neither deletes files nor folders. What the user had chosen before comes
/// back when slack-only is turned off.
void ApplySlackOnly() {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    const bool blnSlackOnly = f.chkPurgeSlackOnly.Value == 1;
    if (blnSlackOnly) {
        f.intDoNotDeleteBefore = static_cast<std::int16_t>(f.chkDoNotDeletePurgedFiles.Value);
        f.chkDoNotDeletePurgedFiles.Value = 1;
    } else {
        f.chkDoNotDeletePurgedFiles.Value = f.intDoNotDeleteBefore;
    }
    f.chkDoNotDeletePurgedFiles.Enabled = !blnSlackOnly;
    f.chkDeleteEmptyFolders.Enabled = !blnSlackOnly;
    f.chkOverwriteNames.Enabled = !blnSlackOnly;
    f.lblMessage.Caption =
        ProgramText(blnSlackOnly ? TextNumber::SlackOnlyNote : TextNumber::OrdinaryNote);
}

void chkPurgeSlackOnly_Click() {
    if (frmPurgeConfirmation.Visible)
        ApplySlackOnly();
}

void SelectClusterSize(std::int32_t lngSize) {
    ui::ComboBox& list = frmPurgeConfirmation.cboClusterSize;
    if (!ui::SelectItem(list, &ui::ListItem::Data, lngSize))
        list.ListIndex = -1;
}

void frmPurgeConfirmation_Activate() {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    f.intDoNotDeleteBefore = static_cast<std::int16_t>(f.chkDoNotDeletePurgedFiles.Value);
    f.chkPurgeSlackOnly.Value = 0;
    ApplySlackOnly();
    f.blnAccepted = false;
    f.cmdDoPurge.Caption = blnSingleFileShown ? "Yes, purge this file" : "Yes, purge these files";

    f.fraClusterSize.Visible = false;
    SelectClusterSize(GetClusterSize(strFolderShown));
    f.lblFileSystem.Caption = strFileSystemShown;
    f.lblFileSystem.Visible = false;
    const std::string strMountedRoot = MountedRootOf(strFolderShown);
    f.fraClusterSize.Caption =
        strMountedRoot.empty() ? "Drive " + DriveShown() : "Volume in " + strMountedRoot;
    f.fraClusterSize.Visible = true;

    f.chkDeleteEmptyFolders.Visible = blnFoldersShown;
    if (!blnFoldersShown)
        f.chkDeleteEmptyFolders.Value = 0;
    ui::SetFocus(f.cmdCancel);
}

/// Undoes what slack-only did to the box; the user's own choice stands between showings.
void GiveBackDoNotDelete() {
    if (frmPurgeConfirmation.chkPurgeSlackOnly.Value == 1)
        frmPurgeConfirmation.chkDoNotDeletePurgedFiles.Value =
            frmPurgeConfirmation.intDoNotDeleteBefore;
}

void cmdDoPurge_Click() {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    blnPurgeSlackOnly = f.chkPurgeSlackOnly.Value == 1;
    blnDoNotDeletePurgedFiles = f.chkDoNotDeletePurgedFiles.Value == 1;
    blnOKToPurgeReadOnlyFiles = f.chkOKToPurgeReadOnlyFiles.Value == 1;
    blnOKToPurgeSystemFiles = f.chkOKToPurgeSystemFiles.Value == 1;
    blnOKToPurgeSensitiveFiles = f.chkOKToPurgeSensitiveFiles.Value == 1;
    blnFolderNamesOnly = f.chkFolderNamesOnly.Value == 1;
    purgeOptions.Verify = f.chkVerifyPurge.Value == 1;
    // These boxes are disabled, but keep their checks, while slack-only is on.
    blnDeleteEmptyFolders = f.chkDeleteEmptyFolders.Value == 1 && !blnPurgeSlackOnly;
    purgeOptions.OverwriteNames = f.chkOverwriteNames.Value == 1 && !blnPurgeSlackOnly;

    if (f.cboClusterSize.ListIndex >= 0)
        ChooseClusterSize(
            strFolderShown,
            static_cast<std::int32_t>(
                f.cboClusterSize.Items[static_cast<std::size_t>(f.cboClusterSize.ListIndex)].Data));

    f.lblFileSystem.Caption.clear();
    GiveBackDoNotDelete();
    f.blnAccepted = true;
    ui::Hide(f);
}

void cmdCancel_Click() {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    f.blnAccepted = false;
    f.lblFileSystem.Caption.clear();
    GiveBackDoNotDelete();
    ui::Hide(f);
}

void lblClusterSize_Click() {
    ui::Label& label = frmPurgeConfirmation.lblFileSystem;
    label.Visible = !label.Visible;
}

/// The remarks stand in the frame of the drive, which grows by their lines.
std::vector<ui::Placed> Table(int intRemarkLines) {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    constexpr int intLeft = 240, intWidth = 6780, intHeight = 300;
    const int intRemarks = intRemarkLines * 255;
    const int intBelow = 4830 + intRemarks + (intRemarkLines > 0 ? 60 : 0);
    f.Height = intBelow + 675;
    std::vector<ui::Placed> table = {{&f.lblWhat, "lblWhat", intLeft, 165, intWidth, 270},
                                     {&f.lblMessage, "lblMessage", intLeft, 465, intWidth, 525}};
    int intTop = 1035;
    for (const auto& [box, strName] : std::initializer_list<std::pair<ui::CheckBox*, const char*>>{
             {&f.chkPurgeSlackOnly, "chkPurgeSlackOnly"},
             {&f.chkDoNotDeletePurgedFiles, "chkDoNotDeletePurgedFiles"},
             {&f.chkOverwriteNames, "chkOverwriteNames"},
             {&f.chkVerifyPurge, "chkVerifyPurge"},
             {&f.chkOKToPurgeReadOnlyFiles, "chkOKToPurgeReadOnlyFiles"},
             {&f.chkOKToPurgeSystemFiles, "chkOKToPurgeSystemFiles"},
             {&f.chkOKToPurgeSensitiveFiles, "chkOKToPurgeSensitiveFiles"},
             {&f.chkFolderNamesOnly, "chkFolderNamesOnly"},
             {&f.chkDeleteEmptyFolders, "chkDeleteEmptyFolders"}}) {
        table.push_back({box, strName, intLeft, intTop, intWidth, intHeight});
        intTop += 315;
    }
    table.insert(table.end(),
                 {{&f.fraClusterSize, "fraClusterSize", intLeft, 3960, intWidth, intBelow - 4005},
                  {&f.lblClusterSize, "lblClusterSize", 180, 360, 1380, 270},
                  {&f.cboClusterSize, "cboClusterSize", 1620, 300, 1440, 345},
                  {&f.lblFileSystem, "lblFileSystem", 3300, 360, 3300, 270},
                  {&f.lblRemarks, "lblRemarks", 180, 765, intWidth - 360, intRemarks},
                  {&f.cmdDoPurge, "cmdDoPurge", 3000, intBelow + 90, 2400, 405},
                  {&f.cmdCancel, "cmdCancel", 5520, intBelow + 90, 1500, 405}});
    return table;
}

void ShowRemarks(const std::string& strRemarks) {
    constexpr std::size_t lngCharactersInLine = 72; // at least, in the label's width
    frmPurgeConfirmation.lblRemarks.Caption = strRemarks;
    frmPurgeConfirmation.lblRemarks.Visible = !strRemarks.empty();
    ui::Place(Table(
        static_cast<int>((strRemarks.size() + lngCharactersInLine - 1) / lngCharactersInLine)));
}

void LayOut() {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    f.Name = "frmPurgeConfirmation";
    f.Caption = "Purge options";
    f.lblWhat.Bold = f.lblWhat.Ellipsis = true;
    f.Width = 7260;
    ui::PutInto(f.fraClusterSize,
                {&f.lblClusterSize, &f.cboClusterSize, &f.lblFileSystem, &f.lblRemarks});
    ui::Bind(f, Table(0));

    ui::PutWords({
        {&f.chkPurgeSlackOnly, "Purge only the slack area behind the end of the files", 's',
         chkPurgeSlackOnly_Click},
        {&f.chkDoNotDeletePurgedFiles, "Do not delete the purged files", 'n', GiveFocusToCancel},
        {&f.chkOverwriteNames, "Overwrite file names and dates", 'O', GiveFocusToCancel},
        {&f.chkVerifyPurge, "Verify by reading back", 'b', GiveFocusToCancel},
        {&f.chkOKToPurgeReadOnlyFiles, "OK to purge read-only files", 'r', GiveFocusToCancel},
        {&f.chkOKToPurgeSystemFiles, "OK to purge system files", 'm', GiveFocusToCancel},
        {&f.chkOKToPurgeSensitiveFiles, "OK to purge sensitive files (programs and their parts)",
         'v', GiveFocusToCancel},
        {&f.chkFolderNamesOnly, "Show folder names only when files are listed", 'f',
         GiveFocusToCancel},
        {&f.chkDeleteEmptyFolders, "Delete folders that are empty after the purge", 'd',
         GiveFocusToCancel},
        {&f.lblClusterSize, "Cluster size:", 'c', lblClusterSize_Click},
        {&f.cmdDoPurge, "Yes, purge these files", 'Y', cmdDoPurge_Click},
        {&f.cmdCancel, "Cancel", 0, cmdCancel_Click},
    });
    f.lblClusterSize.ToolTip = "Click to see the file system of the drive";
    f.cmdCancel.Cancel = true;

    f.cboClusterSize.Click = GiveFocusToCancel;
    f.lblFileSystem.Click = [] { frmPurgeConfirmation.lblFileSystem.Visible = false; };
    f.Close = cmdCancel_Click;
    f.Activate = frmPurgeConfirmation_Activate;
}

} // namespace

void InitializePurgeOptions() {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    LayOut();
    for (const OptionBox& option : PurgeOptionBoxes()) {
        option.Box->Value = 0;
        option.Box->Enabled = true;
    }
    for (const OptionBox& option : FurtherOptions())
        option.Box->Value = 0;
    f.intDoNotDeleteBefore = 0;
    f.blnAccepted = false;
    purgeOptions = {};
    blnPurgeSlackOnly = blnDoNotDeletePurgedFiles = blnOKToPurgeReadOnlyFiles = false;
    blnOKToPurgeSystemFiles = blnOKToPurgeSensitiveFiles = false;
    blnFolderNamesOnly = blnDeleteEmptyFolders = false;
    ForgetClusterSizes();
    f.cboClusterSize.Items = {{"512 bytes", 512}, {"1 KB", 1024},  {"2 KB", 2048},
                              {"4 KB", 4096},     {"8 KB", 8192},  {"16 KB", 16384},
                              {"32 KB", 32768},   {"64 KB", 65536}};
}

std::array<OptionBox, 7> PurgeOptionBoxes() {
    FrmPurgeConfirmation& f = frmPurgeConfirmation;
    return {{{"slack-only", &f.chkPurgeSlackOnly},
             {"keep", &f.chkDoNotDeletePurgedFiles},
             {"read-only", &f.chkOKToPurgeReadOnlyFiles},
             {"system", &f.chkOKToPurgeSystemFiles},
             {"sensitive", &f.chkOKToPurgeSensitiveFiles},
             {"folder-names-only", &f.chkFolderNamesOnly},
             {"remove-empty-folders", &f.chkDeleteEmptyFolders}}};
}

std::array<OptionBox, 2> FurtherOptions() {
    return {{{"verify", &frmPurgeConfirmation.chkVerifyPurge},
             {"names", &frmPurgeConfirmation.chkOverwriteNames}}};
}

bool AskPurgeOptions(const std::string& folder, bool blnSingleFile, bool blnFolders,
                     const std::string& strWhat) {
    frmPurgeConfirmation.lblWhat.Caption = strWhat;
    strFolderShown = folder;
    blnSingleFileShown = blnSingleFile;
    blnFoldersShown = blnFolders;
    // Before the dialog is there: messages may be pumped while the drive is asked.
    SettleVolume(folder);
    (void)GetClusterSize(folder);
    platform::VolumeFacts volume;
    strFileSystemShown =
        !MountedRootOf(folder).empty() || Failed(GetVolumeFacts(DriveShown() + ":\\", volume))
            ? ""
            : volume.FileSystem;
    ShowRemarks(DriveRemarksOn({folder}));
    ui::ShowModal(frmPurgeConfirmation);
    return frmPurgeConfirmation.blnAccepted;
}
