// The drive chooser.
#include "selection/frmDrives.h"

#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "platform/Drives.h"
#include "selection/Selection.h"
#include "settings/frmPurgeConfirmation.h"
#include "ui/Interface.h"

FrmDrives frmDrives;

namespace {

FrmDrives& frm = frmDrives;

std::string TypeText(platform::DriveType type) {
    switch (type) {
    case platform::DriveType::Removable:
        return "removable disk";
    case platform::DriveType::Fixed:
        return "local disk";
    case platform::DriveType::Remote:
        return "network drive";
    case platform::DriveType::CdRom:
        return "CD-ROM";
    case platform::DriveType::RamDisk:
        return "RAM disk";
    default:
        return "drive of unknown type";
    }
}

/// "C:  Windows, local disk, 12.30 GB free of 100.00 GB".
std::string DriveText(char letter) {
    const std::string root = std::string(1, letter) + ":\\";
    std::string text = root.substr(0, 2) + "  ";
    const platform::DriveType type = platform::TypeOfDrive(root);
    // Network drives are not queried: a server that does not answer would delay the list by half a
    // minute, and its drives cannot be purged anyway.
    if (type == platform::DriveType::Remote)
        return text + TypeText(type);
    platform::VolumeFacts facts;
    // A volume without a label, or a drive without a medium, shows only its type.
    if (!platform::Failed(GetVolumeFacts(root, facts)) && !facts.Label.empty())
        text += facts.Label + ", ";
    text += TypeText(type);
    std::uint64_t freeBytes = 0, totalBytes = 0;
    auto fault = platform::Fault::None;
    WorkOnDrive(root, [&] { fault = platform::ReadDriveSpace(root, freeBytes, totalBytes); });
    if (fault == platform::Fault::NotReady)
        return text + ", no medium";
    if (!platform::Failed(fault))
        text += ", " + ByteSizeText(static_cast<double>(freeBytes), 2) + " free of " +
                ByteSizeText(static_cast<double>(totalBytes), 2);
    return text;
}

bool HasChoice() {
    return frm.lstDrives.ListIndex >= 0 &&
           frm.lstDrives.ListIndex < static_cast<int>(frm.lstDrives.Items.size());
}

void lstDrives_Click() {
    frm.cmdOK.Enabled = HasChoice();
}

/// Shows an option as it was last accepted, or a setup has it.
void Offer(ui::CheckBox& box, bool blnOffered, const ui::CheckBox& option, bool blnInForce) {
    box.Visible = blnOffered;
    box.Value = blnInForce || option.Value == 1;
}

void Accept(const ui::CheckBox& box, ui::CheckBox& option, bool& blnInForce) {
    if (!box.Visible)
        return;
    option.Value = box.Value;
    blnInForce = box.Value == 1;
}

/// The options stand between the list and the buttons.
std::vector<ui::Placed> Table(int intOptions) {
    const int intBelow = 3030 + 330 * intOptions;
    frm.Height = intBelow + 570;
    return {{&frm.lblMessage, "lblMessage", 120, 120, 6360, 285},
            {&frm.lstDrives, "lstDrives", 120, 465, 6360, 2475},
            {&frm.chkVerifyPurge, "chkVerifyPurge", 120, 3060, 6360, 300},
            {&frm.chkOverwriteNames, "chkOverwriteNames", 120, 3390, 6360, 300},
            {&frm.cmdOK, "cmdOK", 3360, intBelow + 75, 1500, 375},
            {&frm.cmdCancel, "cmdCancel", 4980, intBelow + 75, 1500, 375}};
}

void cmdOK_Click() {
    if (!HasChoice())
        return;
    const auto index = static_cast<std::size_t>(frm.lstDrives.ListIndex);
    frm.chrDrive = static_cast<char>(frm.lstDrives.Items[index].Data);
    Accept(frm.chkVerifyPurge, frmPurgeConfirmation.chkVerifyPurge, purgeOptions.Verify);
    Accept(frm.chkOverwriteNames, frmPurgeConfirmation.chkOverwriteNames,
           purgeOptions.OverwriteNames);
    ui::Hide(frm);
}

void cmdCancel_Click() {
    frm.chrDrive = 0;
    ui::Hide(frm);
}

} // namespace

void LoadDrivesForm() {
    frm.Name = "frmDrives";
    frm.Width = 6600;

    ui::PutWords({{&frm.lblMessage, "Choose the drive:"},
                  {&frm.chkVerifyPurge, "Verify by reading back", 'b'},
                  {&frm.chkOverwriteNames, "Overwrite file names and dates", 'O'},
                  {&frm.cmdOK, "OK", 0, cmdOK_Click},
                  {&frm.cmdCancel, "Cancel", 0, cmdCancel_Click}});
    frm.cmdOK.Default = frm.cmdCancel.Cancel = true;

    ui::Bind(frm, Table(0));

    frm.Activate = [] { ui::SetFocus(frm.lstDrives); };
    frm.Close = cmdCancel_Click;
    frm.lstDrives.Click = lstDrives_Click;
    frm.lstDrives.DoubleClick = cmdOK_Click;
}

// With several drives, none is preselected, so that Enter alone cannot choose one.
char ChooseDrive(const std::string& strTitle, const std::string& strLetters, DriveOptions options) {
    frm.Caption = strTitle;
    Offer(frm.chkVerifyPurge, options != DriveOptions::None, frmPurgeConfirmation.chkVerifyPurge,
          purgeOptions.Verify);
    Offer(frm.chkOverwriteNames, options == DriveOptions::ForFiles,
          frmPurgeConfirmation.chkOverwriteNames, purgeOptions.OverwriteNames);
    ui::Place(Table(static_cast<int>(options)));
    frm.lstDrives.Items.clear();
    for (const char letter : strLetters)
        frm.lstDrives.Items.push_back({DriveText(letter), letter, false});
    frm.lstDrives.ListIndex = strLetters.size() == 1 ? 0 : -1;
    frm.cmdOK.Enabled = HasChoice();
    frm.chrDrive = 0;
    ui::ShowModal(frm);
    return frm.chrDrive;
}
