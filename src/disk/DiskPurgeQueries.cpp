// The boxes of the disk purge: estimate, plan, exclusions and the last questions.
#include "disk/DiskPurgeQueries.h"

#include "disk/DiskPurge.h"
#include "disk/DriveChoice.h"
#include "disk/DummyPlan.h"
#include "disk/FillDisk.h"
#include "disk/FreeSpacePurge.h"
#include "disk/SpeedTest.h"
#include "disk/SystemFolders.h"
#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "platform/Folders.h"
#include "report/BatchDriver.h"
#include "report/run/ListWalk.h"
#include "report/run/TimeEstimates.h"
#include "selection/frmSubfolders.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/frmTypeOfPurge.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/SizeText.h"
#include "support/StrProc.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

const char* const strTitle = "Purge disk";
constexpr int intSpeedTests = 4;

bool Continue(const std::string& strText, const std::string& strQuestion) {
    return AskToContinue(
        strText + "\r\n\r\nClick 'OK' to continue or 'Cancel' to terminate this operation.",
        strTitle, strQuestion);
}

int AskYesNoCancel(const std::string& strText, const std::string& strQuestion, int intDefault = 1) {
    return ui::MsgBox(strText, ui::Buttons::YesNoCancel, ui::Icon::Question, strTitle, strQuestion,
                      intDefault);
}

std::string TimeText(double dblSeconds) {
    return dblSeconds < 60 ? "less than a minute"
                           : EstimateDurationText(static_cast<double>(RoundHalfEven(dblSeconds)));
}

/// First the free space and the files separately, then the table for the whole disk.
std::string EstimateText(char chrDrive, float sngSpeed, std::int64_t lngFiles, double dblBytes) {
    const auto intOverwrites = OverwritesToEstimate();
    const std::string strRoot = std::string(1, chrDrive) + ":\\";
    const bool blnMeasured = IsSmallFileMeasured(strRoot);
    PlanDummyFiles(chrDrive);
    // The free space is written once by the dummy files and then overwritten by the purge.
    const double dblFreeSeconds = SecondsToFill(chrDrive) * (1 + intOverwrites);
    std::string strText = "Estimated time to purge the free space (" +
                          ByteSizeText(dblSpaceInFreeClusters, 2) +
                          "): " + TimeText(dblFreeSeconds) + "\r\n";
    if (lngFiles > 0 && dblBytes > 0) {
        const double dblMB = dblBytes / dblBytesPerMB;
        const double dblFactor = AdjustmentFactor(strRoot, dblMB / static_cast<double>(lngFiles));
        strText +=
            "Estimated time to purge " +
            (lngFiles == 1 ? std::string("one file") : GroupedDigits(lngFiles) + " files") + " (" +
            ByteSizeText(dblBytes, 2) + "): " +
            TimeText(AdjustedSeconds(dblMB / sngSpeed * intOverwrites, dblFactor, blnMeasured)) +
            "\r\n";
    }
    const double dblTotal = dblSpaceInFreeClusters + dblBytes;
    const auto lngPieces = lngFiles + intNumDummyFiles;
    if (dblTotal > 0 && lngPieces > 0) {
        std::string strTable;
        InitializeOverwritesForEstimatedPurgeTimes();
        EstimatedTimes(
            sngSpeed, dblTotal,
            AdjustmentFactor(strRoot, dblTotal / dblBytesPerMB / static_cast<double>(lngPieces)),
            blnMeasured, strTable);
        strText += "\r\n" + strTable;
    }
    return strText;
}

bool Unknown(char chrDrive) {
    return Continue("It is not possible to obtain sufficient information about the disk in Drive " +
                        std::string(1, chrDrive) +
                        "\r\nso as to estimate the time required for the disk purge.",
                    "no estimate");
}

std::string SubfoldersText(const DiskPurgeState& state) {
    const bool blnExclusions = !state.excluded.empty();
    const auto lngCount = state.NonExcluded();
    if (lngCount == 0)
        return {};
    if (lngCount == 1)
        return blnExclusions ? "in the single non-excluded subfolder " : "in the single subfolder ";
    if (lngCount == 2)
        return blnExclusions ? "in both non-excluded subfolders " : "in both subfolders ";
    return "in all " + GroupedDigits(lngCount) +
           (blnExclusions ? " NON-EXCLUDED subfolders " : " subfolders ");
}

} // namespace

std::int64_t DiskPurgeState::NonExcluded() const {
    return std::count_if(subfolders.begin(), subfolders.end(),
                         [this](const std::string& strName) { return !IsExcluded(strName); });
}

bool DiskPurgeState::IsExcluded(const std::string& strName) const {
    const std::string strUpper = platform::UpperCase(strName);
    return std::any_of(excluded.begin(), excluded.end(), [&](const std::string& strExcluded) {
        return platform::UpperCase(strExcluded) == strUpper;
    });
}

bool MeasureSpeed(const DiskPurgeState& state, float& sngSpeed) {
    sngSpeed = sngPurgeSpeeds[static_cast<std::size_t>(state.chrDrive - 'A')];
    if (sngSpeed > 0)
        return true;
    if (!Continue("The purge speed for Drive " + std::string(1, state.chrDrive) +
                      " will now be tested so as to get\r\n"
                      "an estimate of the time required for this operation.",
                  "test before disk"))
        return false;
    for (int i = 0; i < intSpeedTests; ++i)
        if (TestPurgeSpeed(state.chrDrive, false, sngSpeed) ||
            FillDisk.Outcome == FillOutcome::Stopped) // the user wants no further test
            break;
    return true;
}

bool ShowDiskEstimate(DiskPurgeState& state, float sngSpeed) {
    double dblFree = 0, dblCapacity = 0;
    if (sngSpeed <= 0 || GetDiskSpaceEx(state.strRoot, dblFree, dblCapacity) != 0 ||
        !ReadFreeSpace(state.chrDrive))
        return Unknown(state.chrDrive);
    SetMainLine(MainLine::LargePurgeMessage, "Checking file sizes ...");
    RepaintMain();
    std::int64_t lngFiles = 0;
    double dblBytes = 0;
    const bool blnSummed = SumFileSizes(state.strRoot, "*.*", lngFiles, dblBytes);
    SetMainLine(MainLine::LargePurgeMessage, blnSummed ? "" : "Checking file sizes was stopped.");
    blnStop = false;
    if (!blnSummed) // the user did not wait for the sum
        return Unknown(state.chrDrive);
    state.dblFileBytes = dblBytes;
    const auto intOverwrites = GetNumOverwrites();
    std::string strText = "The capacity of the disk in Drive " + std::string(1, state.chrDrive) +
                          " is " + ByteSizeText(dblCapacity, 2) + ".\r\n\r\n" +
                          EstimateText(state.chrDrive, sngSpeed, lngFiles, dblBytes);
    while (strText.ends_with("\r\n"))
        strText.resize(strText.size() - 2);
    // SignedDigits supplies the blank before the count.
    if (intOverwrites > 1)
        strText += "\r\n\r\nThe type of purge currently specified involves" +
                   SignedDigits(intOverwrites) +
                   " overwrites.\r\n\r\n"
                   "To decrease the time required, specify a type of purge\r\n"
                   "which involves fewer overwrites.";
    return Continue(strText, "disk estimate");
}

bool ShowPlan(const DiskPurgeState& state) {
    const std::string strStart = "Purging Drive " + std::string(1, state.chrDrive) + " is a ";
    // Deliberate oddity: the blank line inside the first step.
    return Continue(state.subfolders.empty()
                        ? strStart + "2-step process:\r\n"
                                     "1.  The free space is purged.\r\n"
                                     "2.  All files are purged."
                        : strStart +
                              "3-step process:\r\n"
                              "1.  Folders to be EXCLUDED from the purge operation (if any)\r\n\r\n"
                              "are selected.\r\n"
                              "2.  The free space is purged.\r\n"
                              "3.  All files in the top folder (unless excluded)\r\n"
                              "and in all NON-EXCLUDED subfolders are purged.",
                    "disk steps");
}

bool AskAboutTopFiles(DiskPurgeState& state) {
    if (state.lngTopFiles == 0)
        return true;
    // SignedDigits supplies the blank before the count.
    const int intAnswer = AskYesNoCancel(
        "Do you wish to EXCLUDE the" +
            (state.lngTopFiles == 1 ? std::string(" single top-level file in ")
                                    : SignedDigits(state.lngTopFiles) + " top-level files in ") +
            state.strRoot + " from this purge operation?",
        "keep top files");
    state.blnExcludeTopFiles = intAnswer == ui::AnswerYes;
    return intAnswer != ui::AnswerCancel;
}

bool AskAboutTopFolders(DiskPurgeState& state) {
    const std::string strDrive(1, state.chrDrive);
    std::string strLine =
        "ALL top-level folders of Drive " + strDrive + " and all their subfolders will be purged.";
    if (!state.subfolders.empty()) {
        const int intAnswer = AskYesNoCancel("Do you wish to EXCLUDE files in selected top-level "
                                             "folders\r\nfrom this purge operation?",
                                             "keep folders");
        if (intAnswer == ui::AnswerCancel)
            return false;
        std::string strChosen;
        if (intAnswer == ui::AnswerYes) {
            const auto choice = SelectSubfolders(state.strRoot,
                                                 "Select top-level folders on Drive " + strDrive +
                                                     " to be EXCLUDED from this purge.",
                                                 SubfolderUse::Keep, strChosen);
            // Cancelling is not "none": purging everything would destroy what the user wanted to
            // keep.
            if (choice != SubfolderChoice::Chosen && choice != SubfolderChoice::NoneChosen)
                return false;
        }
        state.excluded = LinesOf(strChosen);
        if (state.excluded.size() == 1)
            strLine = "One top-level folder of Drive " + strDrive +
                      " is EXCLUDED from this purge operation.";
        else if (state.excluded.size() > 1)
            strLine = GroupedDigits(static_cast<std::int64_t>(state.excluded.size())) +
                      " top-level folders of Drive " + strDrive + " are EXCLUDED from this purge.";
        SetMainLine(MainLine::Subdirectories2, strLine);
    }
    const bool blnExcluded = state.blnExcludeTopFiles || !state.excluded.empty();
    if (!blnExcluded || state.NonExcluded() > 0 ||
        (state.lngTopFiles > 0 && !state.blnExcludeTopFiles))
        return true;
    ui::Complain("You have excluded all top-level files and all top-level folders\r\n"
                 "from the purge operation.",
                 strTitle);
    return false;
}

bool AskAboutSystemFolders(const DiskPurgeState& state) {
    for (const SystemFolder& folder : systemFolders) {
        const std::string strPath = state.strRoot + folder.strName;
        bool blnThere = false;
        WorkOnDrive(strPath, [&] { blnThere = platform::FolderExists(strPath); });
        if (blnThere && !state.IsExcluded(folder.strName) &&
            AskYesNoCancel("You have not excluded the " + strPath +
                               " folder.\r\nAre you sure that you wish to purge all files in that "
                               "folder?",
                           "folders of Windows") != ui::AnswerYes)
            return false;
    }
    return true;
}

bool AskAboutInterruption() {
    const int intAnswer =
        AskYesNoCancel("\r\nDo you want this operation to continue to completion\r\n"
                       "without further interruption from dialog boxes?",
                       "no interruption", 2);
    blnDisplayDialogBoxesDuringRemainderOfPurgeDrive = intAnswer != ui::AnswerYes;
    return intAnswer != ui::AnswerCancel;
}

bool ShowFilesNext(const DiskPurgeState& state, bool blnPurged, const std::string& strUndone) {
    std::string strFolders = SubfoldersText(state);
    if (!state.blnExcludeTopFiles)
        strFolders = "in the top folder " + (strFolders.empty() ? "" : "and " + strFolders);
    return Continue((blnPurged ? std::string("The free space has been purged.  ")
                               : "No free space has been purged.  ") +
                        (strUndone.empty() ? "" : "\r\n" + strUndone + "\r\n\r\n") +
                        "Now all files\r\n" + strFolders + "will be purged.",
                    "files of disk");
}
