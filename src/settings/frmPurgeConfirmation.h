// The dialog with the last confirmation before a purge, and the purge options.
#pragma once

#include "drives/ClusterSizes.h"
#include "engine/PurgeJob.h"
#include "ui/Controls.h"

#include <array>
#include <cstdint>
#include <string>

struct FrmPurgeConfirmation : ui::Form {
    ui::CheckBox chkPurgeSlackOnly, chkDoNotDeletePurgedFiles, chkOKToPurgeReadOnlyFiles,
        chkOKToPurgeSystemFiles, chkOKToPurgeSensitiveFiles, chkFolderNamesOnly,
        chkDeleteEmptyFolders, chkVerifyPurge, chkOverwriteNames;
    ui::Frame fraClusterSize;
    ui::ComboBox cboClusterSize;
    ui::Label lblClusterSize, lblFileSystem, lblWhat, lblMessage, lblRemarks;
    ui::Button cmdDoPurge, cmdCancel;

    /// chkDoNotDeletePurgedFiles as it was before slack-only forced it.
    std::int16_t intDoNotDeleteBefore = 0;
    /// True after cmdDoPurge, false after cmdCancel or closing.
    bool blnAccepted = false;
};
extern FrmPurgeConfirmation frmPurgeConfirmation;

/// The options in force: the boxes as they were at the last acceptance.
inline bool blnPurgeSlackOnly = false;
inline bool blnDoNotDeletePurgedFiles = false;
inline bool blnOKToPurgeReadOnlyFiles = false;
inline bool blnOKToPurgeSystemFiles = false;
inline bool blnOKToPurgeSensitiveFiles = false;
inline bool blnFolderNamesOnly = false;
inline bool blnDeleteEmptyFolders = false;
inline PurgeOptions purgeOptions;

struct OptionBox {
    const char* strName; ///< as options of a command line are called
    ui::CheckBox* Box;
};
/// The seven check boxes in the order of the flags above, which is that of a setup file.
std::array<OptionBox, 7> PurgeOptionBoxes();
/// The boxes that came later. A setup file has a line with the name of each that is on.
std::array<OptionBox, 2> FurtherOptions();
/// Boxes, flags and the cluster-size cache as at start-up.
void InitializePurgeOptions();
/// Shows the dialog for a folder's drive, with what will be purged ("5 files in C:\docs\, 1.20
/// MB"); true when the user goes on. With a single file the
/// accept caption is in the singular; without folders the empty-folder box is hidden and cleared.
bool AskPurgeOptions(const std::string& folder, bool blnSingleFile, bool blnFolders,
                     const std::string& strWhat = "");
