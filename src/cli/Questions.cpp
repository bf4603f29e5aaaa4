// The table of questions and their unattended answers: of two answers the one that destroys less,
// unless the command itself or an option says otherwise.
#include "cli/Questions.h"

#include "platform/System.h"
#include "selection/frmDrives.h"
#include "selection/frmSubfolders.h"
#include "settings/frmPurgeConfirmation.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace {

void Check(ui::CheckBox& box, bool blnChecked) {
    if (!blnChecked || !box.Visible)
        return; // what a setup has checked stays so
    box.Value = 1;
    box.Click();
}

bool FillPurgeOptions(const CommandLine& line) {
    // In the order of the boxes. The first one keeps the files: its click comes before --keep.
    constexpr const char* strOptions[] = {"slack-only", "keep", "read-only",           "system",
                                          "sensitive",  "",     "remove-empty-folders"};
    for (std::size_t i = 0; i < std::size(strOptions); ++i)
        Check(*PurgeOptionBoxes()[i], line.Has(strOptions[i]));
    for (const FurtherOption& option : FurtherOptions())
        Check(*option.Box, line.Has(option.strName));
    return true;
}

bool FillDrive(const CommandLine& line) {
    ui::ListBox& list = frmDrives.lstDrives;
    const auto found = std::find_if(list.Items.begin(), list.Items.end(),
                                    [&](const auto& item) { return item.Data == line.chrDrive; });
    if (found == list.Items.end())
        return false;
    list.ListIndex = static_cast<int>(found - list.Items.begin());
    list.Click();
    return true;
}

bool FillExcluded(const CommandLine& line) {
    std::set<std::string> kept;
    for (const std::string& strName : line.options.at("exclude"))
        kept.insert(platform::UpperCase(strName));
    for (std::size_t i = 0; i < frmSubfolders.strNames.size(); ++i)
        frmSubfolders.lstSubfolders.Items[i].Selected =
            kept.erase(platform::UpperCase(frmSubfolders.strNames[i])) > 0;
    return kept.empty(); // what is not there cannot be kept
}

bool Always(const CommandLine&) {
    return true;
}

constexpr Question questions[] = {
    {"List files", "Display folder names?", "whether to list names, too", "Yes", "yes", "", "", "",
     Always},
    {"frmPurgeConfirmation", "", "the purge options", "cmdDoPurge", "as the command line says", "",
     "", "", FillPurgeOptions},
    {"", "Are you sure that you want to purge", "whether to purge", "Yes",
     "yes: the files are purged"},
    {"frmAntiVirusQuery", "", "whether anti-virus software is active", "cmdNo",
     "no: no advice is given"},
    {"", "anti-virus software will probably interrupt",
     "to go on though it will interrupt the purge", "Cancel", "no"},
    {"frmPurgeWarning", "", "what to do about a file that is watched", "cmdStopPurge",
     "the run ends"},
    {"frmConfirmFiles", "", "each file, where a setup says so", "cmdNo", "the file stays"},
    {"Purge query", "extension to be purged?", "programs and their parts", "No",
     "they stay; with --sensitive they are purged unasked"},
    {"Purge query", "The data of this file also belong to", "files with other names", "No",
     "they stay"},
    {"frmDrives", "", "the drive", "cmdOK", "as the command line says", "", "", "", FillDrive},
    {"Dummy files found", "Do you wish to delete them now?", "dummy files of a broken-off run",
     "Yes", "they are deleted: they hold nothing but what Nullwright wrote"},
    {"", "Windows runs from Drive", "the free space of the drive of Windows", "Cancel", "it stays",
     "system", "OK", "it is purged"},
    {"", "will now be written to fill this space", "to begin to fill the free space", "OK"},
    {"", "Do you wish to continue with the purge?", "to purge what was filled with null bytes",
     "OK"},
    {"", "Do you wish to continue with this operation?",
     "to go on when a dummy file was not purged", "Yes", "yes; exit code 1"},
    {"Cancel?", "Do you wish to cancel this operation?", "Ctrl+C while free space is filled", "Yes",
     "it ends, and the dummy files are deleted"},
    {"", "to continue with the next file\r\nor click 'Cancel'", "Ctrl+C in the purge of free space",
     "Cancel", "it ends, and the dummy files are deleted"},
    {"", "to continue with the files of the disk", "Ctrl+C before the files of a disk", "Cancel",
     "they stay"},
    {"Test purge speed", "Do you wish to proceed with this test?", "to test the speed of a drive",
     "Yes"},
    {"Purge disk", "will now be tested", "to test the speed before a disk purge", "OK"},
    {"Purge disk", "Estimated time to purge", "to go on with that estimate of the time", "OK"},
    {"Purge disk", "not possible to obtain sufficient information", "to go on without an estimate",
     "OK"},
    {"Purge disk", "-step process", "to begin the steps of a disk purge", "OK"},
    {"Purge disk", "Do you wish to EXCLUDE the", "to keep the files at the top of a disk", "No",
     "they are purged", "exclude .", "Yes", "they stay"},
    {"Purge disk", "Do you wish to EXCLUDE files in selected", "to keep folders of a disk", "No",
     "all are purged", "exclude", "Yes", "those that it names stay"},
    {"frmSubfolders", "", "the folders to be kept", "cmdOK", "as the command line says", "", "", "",
     FillExcluded},
    {"Purge disk", "You have not excluded the", "to purge WINDOWS and Program Files, too", "Cancel",
     "the command ends", "system", "Yes", "they are purged"},
    {"Purge disk", "without further interruption from dialog boxes",
     "to purge a disk without further questions", "Yes"},
    {"Purge disk", "Now all files", "the files of a disk, after its free space", "Cancel",
     "they stay"},
    {"", "Do you wish to see the report?", "to see the report of a disk", "No",
     "no: it was told as it grew"},
    {"", "Click 'OK' to continue, or 'Cancel' to terminate this operation.",
     "Ctrl+C while the files of a disk are purged", "Cancel", "it ends"}};

} // namespace

std::span<const Question> Questions() {
    return questions;
}

const Question* QuestionOf(const ui::console::Asked& asked) {
    const auto found = std::find_if(std::begin(questions), std::end(questions), [&](auto& row) {
        return asked.Text.empty()
                   ? row.strWhere == asked.Where
                   : *row.strPart != '\0' && asked.Text.find(row.strPart) != std::string::npos &&
                         (*row.strWhere == '\0' || row.strWhere == asked.Where);
    });
    return found == std::end(questions) ? nullptr : found;
}

std::string AnswerOf(const ui::console::Asked& asked, const CommandLine& line, bool blnAttended) {
    const Question* row = QuestionOf(asked);
    if (row != nullptr && row->fill != nullptr)
        return row->fill(line) ? row->strAnswer : "none";
    if (row != nullptr && line.Has(row->strOption))
        return row->strOptionAnswer;
    return blnAttended ? "" : row == nullptr ? "none" : row->strAnswer;
}
