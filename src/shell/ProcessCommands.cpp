// "List files, estimate time" and "Purge files": the checks and questions before a run, and the
// state of the main window during it.
#include "shell/ProcessCommands.h"

#include "engine/FilePurge.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Places.h"
#include "platform/System.h"
#include "report/BatchDriver.h"
#include "report/frmAntiVirusQuery.h"
#include "report/frmReport.h"
#include "report/run/ListWalk.h"
#include "report/run/Run.h"
#include "report/run/RunDriver.h"
#include "report/run/RunSummary.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "shell/ChosenItems.h"
#include "shell/frmMain.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/SizeText.h"
#include "support/StrProc.h"
#include "ui/Interface.h"

namespace {

/// Counting before a purge ends here; the question then only says "more than 1000".
constexpr std::int32_t intCountingLimit = 1001;

constexpr std::size_t intMostItemsInQuestion = 10;

constexpr const char* strListTitle = "List files";

/// The checks common to listing and purging; true when files are specified.
bool SomethingIsSpecified() {
    if (!ItemsAreChosen() && (strDirPath.empty() || strFilespec.empty())) {
        ui::Complain("No files specified.");
        return false;
    }
    return true;
}

constexpr const char* strNeverPurged =
    "Swap files and the files of Nullwright itself are never purged.";

/// The request for a run of either kind.
RunRequest RequestOf(const std::string& strTitle, bool blnPurge, bool blnDisplayNames) {
    RunRequest request;
    request.strTitle = strTitle;
    request.strDirPath = strDirPath;
    request.strFilespec = strFilespec;
    if (ItemsAreChosen()) {
        request.Items = ChosenRunItems(blnSubdirectories);
        request.strItems = ChosenItemsText();
        request.strDirPath = request.Items.front().strFolder; // its drive's speed is the estimate's
        request.strFilespec = "*.*";
    }
    request.blnPurgeFiles = blnPurge;
    request.blnDisplayFolderNames = blnDisplayNames;
    request.blnDisplayFileNames = blnDisplayNames && !blnFolderNamesOnly;
    request.blnSubdirectories = blnSubdirectories;
    return request;
}

/// A command that has nothing to do is done, as a run without files: nobody has been asked yet how
/// to purge. What an earlier run came to stays.
void NoteNothingToDo(const FilesToPurge& found, const std::string& strTitle, bool blnPurge) {
    if (currentRun.State != RunState::Idle)
        return;
    BeginRun(RequestOf(strTitle, blnPurge, true));
    currentRun.Counts.lngNumFoldersUnread = found.lngUnread;
    if (found.lngLeftOut > 0)
        currentRun.Notes = {{0, strNeverPurged, true}};
    currentRun.strHead = DateAndTime() + WhatIsRun(currentRun.Request) + "\r\n";
    currentRun.strSummary = SummaryText();
    currentRun.strEnded = platform::IsoTimeText();
    currentRun.State = RunState::Done;
}

/// Found were no files, but not everything could be read: nobody knows whether there are any.
void SayUnread(const FilesToPurge& found, const std::string& title) {
    ui::Complain(
        "No files were found, but " +
            (found.lngUnread == 1 ? "this folder" : GroupedDigits(found.lngUnread) + " folders") +
            " could not be read" + (found.lngUnread == 1 ? ":" : ", among them") + "\r\n" +
            found.strUnread,
        title);
}

void SayNoFiles(const FilesToPurge& found, const std::string& title) {
    if (found.lngUnread > 0) {
        SayUnread(found, title);
        return;
    }
    if (ItemsAreChosen()) {
        ui::Complain(std::string("There are no files in the chosen items") +
                         (blnSubdirectories ? "\r\nor in any of their subfolders." : "."),
                     title);
        return;
    }
    ui::Complain("There are no files in " + strDirPath +
                     (strFilespec == "*.*" ? "" : " matching " + strFilespec) + ".",
                 title);
}

/// Whether a single file does not exist; tells the user.
bool SingleFileIsMissing(const std::string& title) {
    if (ItemsAreChosen() || blnMultipleFiles || platform::FileExists(strDirPath + strFilespec))
        return false;
    ui::Complain("File " + strDirPath + strFilespec + " not found.", title);
    return true;
}

/// Counts the files to purge, up to a limit (0: none).
FilesToPurge CountChosen(std::int32_t intLimit, bool blnUntilWatched = false) {
    if (!ItemsAreChosen())
        return CountFilesToPurge(strDirPath, strFilespec, intLimit, blnUntilWatched);
    blnStop = false;
    return CountItems(ChosenRunItems(blnSubdirectories), blnSubdirectories, intLimit,
                      blnUntilWatched);
}

/// The folder to whose drive the questions before a run refer.
std::string FolderOfQuestions() {
    return ItemsAreChosen() ? ChosenRunItems(blnSubdirectories).front().strFolder : strDirPath;
}

/// Prepares the report window for a run of either kind.
void PrepareReport(const std::string& caption, bool blnPurge, bool blnDisplayNames) {
    frmReport.Caption = caption;
    currentRun.Request = RequestOf(caption, blnPurge, blnDisplayNames);
    ResetReportWindow();
}

// ---- Listing -----------------------------------------------------------------------------------

void List() {
    const int answer = ui::MsgBox("Display folder names?", ui::Buttons::YesNoCancel,
                                  ui::Icon::Question, strListTitle, "list names");
    if (answer == ui::AnswerCancel)
        return;
    const std::string& title = frmMain.cmdProcessFiles[0].Caption;
    if (SingleFileIsMissing(title))
        return;
    EnableMain(false);
    FilesToPurge found;
    if (!RunSearch("Looking for files", [&] { found = CountChosen(1); })) {
        // F10 during the search of a large tree; the status line tells it
    } else if (found.lngFiles == 0 && found.lngLeftOut == 0) {
        NoteNothingToDo(found, strListTitle, false);
        SayNoFiles(found, title);
    } else {
        const bool blnDisplayNames = answer == ui::AnswerYes;
        std::string caption = "Estimate purge time";
        if (blnDisplayNames && blnFolderNamesOnly)
            caption = "List folders";
        else if (blnDisplayNames)
            caption = strFilespec == "*.*" || ItemsAreChosen() ? "List all files" : "List files";
        PrepareReport(caption, false, blnDisplayNames);
        ui::Show(frmReport);
        ProcessFiles();
    }
    EnableMain(true);
}

// ---- Purging -----------------------------------------------------------------------------------

/// The question before a purge of this many files; −1 stands for more than 1000.
std::string PurgeQuestion(std::int64_t lngCount) {
    std::string text = "Are you sure that you want to purge the slack area of ";
    if (ItemsAreChosen()) {
        text += lngCount == 1  ? "the single file in "
                : lngCount < 0 ? "all files in "
                               : "all " + GroupedDigits(lngCount) + " files in ";
        text += ChosenItemsText();
    } else if (strFilespec == "*.*") {
        if (lngCount == 1)
            text += "the single file in ";
        else if (lngCount == 2)
            text += "both files in ";
        else if (lngCount < 0)
            text += "all files in ";
        else
            text += "all " + GroupedDigits(lngCount) + " files in ";
        text += strDirPath;
    } else {
        // The path appears once, with its pattern, as in the header of the report: "Purging files
        // C:\docs\*.txt". The folder alone would not tell which files are meant.
        if (lngCount > 1)
            text += "the " + GroupedDigits(lngCount) + " files ";
        else
            text += lngCount < 0 ? "the files " : "the file ";
        text += strDirPath + strFilespec;
    }
    if (blnSubdirectories)
        text +=
            std::string("\r\nand all files ") +
            (strFilespec == "*.*" || ItemsAreChosen() ? ""
                                                      : "of the form \"" + strFilespec + "\" ") +
            "in all subfolders?";
    else
        text += " ?"; // Deliberate oddity: a blank before "?".

    text += "\r\nThis will permanently destroy all data in ";
    if (!blnMultipleFiles && lngCount == 1)
        text += "this file.";
    else if (lngCount == 1)
        text += "this file.)"; // the parenthesis is required
    else if (lngCount < 0)
        text += "these (more than 1000) files.";
    else
        text += "these " + platform::LowerCase(NumberInWords(lngCount)) + " files.";
    if (ItemsAreChosen())
        text += "\r\n\r\n" + ChosenItemsList(intMostItemsInQuestion);

    if (!blnPurgeSlackOnly) {
        const std::string slack = "to purge the slack area of";
        text.replace(text.find(slack), slack.size(), "to purge");
    }
    return text;
}

/// "5 files in C:\docs\, 1.20 MB", as the options dialog repeats it.
std::string WhatIsPurged(const FilesToPurge& found) {
    const std::string strWhere = ItemsAreChosen()       ? ChosenItemsText()
                                 : strFilespec == "*.*" ? strDirPath
                                                        : strDirPath + strFilespec;
    if (found.lngFiles < 0)
        return "More than 1,000 files in " + strWhere;
    return GroupedDigits(found.lngFiles) + (found.lngFiles == 1 ? " file in " : " files in ") +
           strWhere + ", " + ByteSizeText(found.dblBytes, 2);
}

/// Everything that is asked before a purge, in its order; true when the user wants it.
bool PurgeIsWanted(FilesToPurge& found, const std::string& title) {
    if (!AskPurgeOptions(FolderOfQuestions(), found.lngFiles == 1, blnSubdirectories,
                         WhatIsPurged(found)))
        return false;
    if (ui::MsgBox(PurgeQuestion(found.lngFiles), ui::Buttons::YesNo, ui::Icon::Question, title,
                   "purge files") != ui::AnswerYes)
        return false;
    if (!blnShowPurgeWarning)
        return true;
    // If the count reached its limit before the first file that anti-virus software watches,
    // continue until such a file or the end of the tree.
    if (!found.blnWatched && found.lngFiles < 0 &&
        !RunSearch("Counting files", [&] { found = CountChosen(0, true); }))
        return false;
    return !found.blnWatched || AntiVirusAdvice(std::string(1, DriveLetterOf(FolderOfQuestions())),
                                                frmMain) != ui::AnswerCancel;
}

void CountAndPurge() {
    const std::string& title = frmMain.cmdProcessFiles[1].Caption;
    if (blnSubdirectories) {
        SetMainLine(MainLine::LargePurgeMessage, "Now counting files ...");
        RepaintMain();
    }
    FilesToPurge found;
    const bool blnInterrupted = !RunSearch("Counting files", [&] { // by F10
        found = CountChosen(intCountingLimit);
    });
    SetMainLine(MainLine::LargePurgeMessage, "");
    if (found.lngFiles == 0 && !blnInterrupted) {
        NoteNothingToDo(found, "Purge files", true);
        if (found.lngUnread > 0)
            SayUnread(found, title);
        else if (found.lngLeftOut > 0)
            ui::Complain(strNeverPurged + std::string("\r\nThere are no other files to be purged."),
                         title);
        else if (blnSubdirectories && !ItemsAreChosen())
            ui::Complain("There are no files in " + strDirPath +
                             "\r\nor in any of its subfolders matching " + strFilespec + ".",
                         title);
        else
            SayNoFiles(found, title);
        return;
    }
    if (blnInterrupted || !PurgeIsWanted(found, title)) {
        ui::MsgBox("No files purged.", ui::Buttons::OK, ui::Icon::None, "Purge cancelled");
        return;
    }
    PrepareReport("Purge files", true, true);
    if (found.lngFiles > 0) { // all were counted, so the run need not count again
        currentRun.Request.lngNumFilesExpected = found.lngFiles;
        currentRun.Request.dblBytesExpected = found.dblBytes;
    }
    ui::Show(frmReport);
    ProcessFiles();
}

void Purge() {
    if (SingleFileIsMissing(frmMain.cmdProcessFiles[1].Caption) || !PurgeLibraryReady())
        return;
    EnableMain(false);
    frmMain.cmdProcessFiles[1].Enabled = false;
    CountAndPurge();
    frmMain.cmdProcessFiles[1].Enabled = true;
    EnableMain(true);
}

} // namespace

void cmdProcessFiles_Click(int intIndex) {
    platform::FolderHold hold;
    const std::string strChosen = strDirPath;
    // The folders of items are checked when the run reaches them.
    if (!SomethingIsSpecified() || (!ItemsAreChosen() && !HoldChosenFolder(hold)))
        return;
    if (strDirPath != strChosen)
        UpdateFilesLabels(); // its path may have been settled only now
    // Hold the folder named in the questions until the run is over.
    if (intIndex == 0)
        List();
    else
        Purge();
    platform::LetGo(hold);
    blnStop = false; // the stop has been reported: reset it
}
