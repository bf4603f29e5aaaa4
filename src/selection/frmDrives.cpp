// The drive chooser.
#include "selection/frmDrives.h"

#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "platform/Drives.h"
#include "selection/Selection.h"
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

void cmdOK_Click() {
    if (!HasChoice())
        return;
    const auto index = static_cast<std::size_t>(frm.lstDrives.ListIndex);
    frm.chrDrive = static_cast<char>(frm.lstDrives.Items[index].Data);
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
    frm.Height = 3600;

    ui::PutWords({{&frm.lblMessage, "Choose the drive:"},
                  {&frm.cmdOK, "OK", 0, cmdOK_Click},
                  {&frm.cmdCancel, "Cancel", 0, cmdCancel_Click}});
    frm.cmdOK.Default = frm.cmdCancel.Cancel = true;

    ui::Bind(frm, {
                      {&frm.lblMessage, "lblMessage", 120, 120, 6360, 285},
                      {&frm.lstDrives, "lstDrives", 120, 465, 6360, 2475},
                      {&frm.cmdOK, "cmdOK", 3360, 3105, 1500, 375},
                      {&frm.cmdCancel, "cmdCancel", 4980, 3105, 1500, 375},
                  });

    frm.Activate = [] { ui::SetFocus(frm.lstDrives); };
    frm.Close = cmdCancel_Click;
    frm.lstDrives.Click = lstDrives_Click;
    frm.lstDrives.DoubleClick = cmdOK_Click;
}

// With several drives, none is preselected, so that Enter alone cannot choose one.
char ChooseDrive(const std::string& strTitle, const std::string& strLetters) {
    frm.Caption = strTitle;
    frm.lstDrives.Items.clear();
    for (const char letter : strLetters)
        frm.lstDrives.Items.push_back({DriveText(letter), letter, false});
    frm.lstDrives.ListIndex = strLetters.size() == 1 ? 0 : -1;
    frm.cmdOK.Enabled = HasChoice();
    frm.chrDrive = 0;
    ui::ShowModal(frm);
    return frm.chrDrive;
}
