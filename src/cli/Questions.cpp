// The table of questions and their unattended answers: of two answers the one that destroys less,
// unless the command itself or an option says otherwise.
#include "cli/Questions.h"

#include "cli/CommandLine.h"
#include "platform/System.h"
#include "selection/frmDrives.h"
#include "selection/frmSubfolders.h"
#include "settings/frmPurgeConfirmation.h"
#include "ui/Interface.h"

#include <algorithm>
#include <set>

namespace {

bool FillPurgeOptions() {
    const auto check = [](const OptionBox& option) {
        if (!given.Has(option.strName) || !option.Box->Visible)
            return; // what a setup has checked stays so
        option.Box->Value = 1;
        option.Box->Click();
    };
    // In the order of the boxes. The first one keeps the files: its click comes before --keep.
    std::ranges::for_each(PurgeOptionBoxes(), check);
    std::ranges::for_each(FurtherOptions(), check);
    return true;
}

bool FillDrive() {
    const bool blnThere = ui::SelectItem(frmDrives.lstDrives, &ui::ListItem::Data, given.chrDrive);
    frmDrives.lstDrives.Click();
    return blnThere;
}

bool FillExcluded() {
    std::set<std::string> kept;
    for (const std::string& strName : given.options["exclude"])
        kept.insert(platform::UpperCase(strName));
    for (std::size_t i = 0; i < frmSubfolders.strNames.size(); ++i)
        frmSubfolders.lstSubfolders.Items[i].Selected =
            kept.erase(platform::UpperCase(frmSubfolders.strNames[i])) > 0;
    const bool blnAreThere = kept.empty() && !given.options["exclude"].empty();
    if (!blnAreThere)
        ui::Complain("Name the folders to be kept on the command line, each with --exclude.");
    return blnAreThere;
}

constexpr const char* strAsSaid = "as the command line says";
constexpr const char* strDummiesGo = "it ends, and the dummy files are deleted";

} // namespace

const std::vector<Question> questions = {
    {"list names", "whether to list names, too", "Yes", "yes", [] { return true; }},
    {"frmPurgeConfirmation", "the purge options", "cmdDoPurge", strAsSaid, FillPurgeOptions},
    {"purge files", "whether to purge", "Yes", "yes: the files are purged"},
    {"frmAntiVirusQuery", "whether anti-virus software is active", "cmdNo", "no: no advice"},
    {"anti-virus", "to go on though it will interrupt the purge", "Cancel", "no"},
    {"frmPurgeWarning", "what to do about a file that is watched", "cmdStopPurge", "the run ends"},
    {"frmConfirmFiles", "each file, where a setup says so", "cmdNo", "the file stays"},
    {"sensitive file", "programs and their parts", "No", "they stay; --sensitive purges them"},
    {"other names", "files with other names", "No", "they stay"},
    {"frmDrives", "the drive", "cmdOK", strAsSaid, FillDrive},
    {"left dummies", "dummy files left over", "Yes", "they are deleted: Nullwright made them"},
    {"drive of Windows", "the free space of the drive of Windows", "Cancel", "it stays", nullptr,
     "system", "OK", "it is purged"},
    {"fill", "to begin to fill the free space", "OK"},
    {"purge dummies", "to purge what was filled with null bytes", "OK"},
    {"failed dummy", "to go on when a dummy file was not purged", "Yes", "yes; exit code 1"},
    {"cancel filling", "Ctrl+C while free space is filled", "Yes", strDummiesGo},
    {"next dummy", "Ctrl+C in the purge of free space", "Cancel", strDummiesGo},
    {"files after dummies", "Ctrl+C before the files of a disk", "Cancel", "they stay"},
    {"test", "to test the speed of a drive", "Yes"},
    {"test before disk", "to test the speed before a disk purge", "OK"},
    {"disk estimate", "to go on with that estimate of the time", "OK"},
    {"no estimate", "to go on without an estimate", "OK"},
    {"disk steps", "to begin the steps of a disk purge", "OK"},
    {"keep top files", "to keep the files at the top of a disk", "No", "they are purged", nullptr,
     "exclude .", "Yes", "they stay"},
    {"keep folders", "to keep folders of a disk", "No", "all are purged", nullptr, "exclude", "Yes",
     "those that it names stay"},
    {"frmSubfolders", "the folders to be kept", "cmdOK", strAsSaid, FillExcluded},
    {"folders of Windows", "to purge WINDOWS and Program Files, too", "Cancel", "the command ends",
     nullptr, "system", "Yes", "they are purged"},
    {"no interruption", "to purge a disk without further questions", "Yes"},
    {"files of disk", "the files of a disk, after its free space", "Cancel", "they stay"},
    {"report", "to see the report of a disk", "No", "no: it was told as it grew"},
    {"next file", "Ctrl+C while the files of a disk are purged", "Cancel", "it ends"}};

std::string MeaningOf(const Question& row) {
    const std::string strOption = row.strOption;
    return row.strMeans +
           (strOption.empty() ? "" : "; with --" + strOption + " " + row.strOptionMeans);
}

std::string QuestionsText() {
    std::string text = "The answers where nobody is asked: without a terminal, or with --yes.\r\n"
                       "All other questions are answered by what destroys nothing. Without a\r\n"
                       "terminal and without --yes nothing that destroys begins.\r\n";
    for (const Question& row : questions)
        text += std::string("\r\n  ") + row.strAsks + "\r\n    " + MeaningOf(row);
    return text + "\r\n";
}

const Question* QuestionOf(const std::string& strName) {
    const auto found = std::ranges::find(questions, strName, &Question::strName);
    return found == questions.end() ? nullptr : &*found;
}

std::string AnswerOf(const std::string& strName, bool blnAttended) {
    const Question* row = QuestionOf(strName);
    if (row == nullptr)
        return blnAttended ? "" : "none";
    if (row->fill != nullptr)
        return row->fill() ? row->strAnswer : "none";
    return given.Has(row->strOption) ? row->strOptionAnswer : blnAttended ? "" : row->strAnswer;
}
