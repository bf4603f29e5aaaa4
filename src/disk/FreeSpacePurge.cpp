// "Purge free space": plans and announces the dummy files, then writes and purges them.
#include "disk/FreeSpacePurge.h"

#include "disk/DriveChoice.h"
#include "disk/DriveCommand.h"
#include "disk/DriveReport.h"
#include "disk/DummyPlan.h"
#include "disk/FillDisk.h"
#include "disk/FillDiskPurge.h"
#include "disk/LeftoverDummies.h"
#include "disk/RunProgress.h"
#include "disk/SmallRecords.h"
#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "engine/FilePurge.h"
#include "platform/Drives.h"
#include "report/run/Run.h"
#include "report/run/TimeEstimates.h"
#include "selection/frmDrives.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/SizeText.h"
#include "ui/Interface.h"

namespace {

const char* const strPurged = "The free space has been purged.";
const char* const strStopped = "Purging of free space was stopped.";

std::string AnnouncementText(char chrDrive) {
    std::string strText =
        FreeSpaceSizeText(std::string(1, chrDrive), dblSpaceInFreeClusters) + "\r\n\r\n" +
        (intNumDummyFiles == 1 ? std::string("A dummy file will now be written to fill this space.")
                               : GroupedDigits(intNumDummyFiles) +
                                     " dummy files will now be written to fill this space.") +
        "\r\n\r\n";
    const std::string strRecords = OldRecordsText(OldRecordsOn(std::string(1, chrDrive) + ":\\"));
    strText += strRecords + (strRecords.empty() ? "" : "\r\n\r\n");
    const float sngSpeed = sngPurgeSpeeds[static_cast<std::size_t>(chrDrive - 'A')];
    const std::string strFiles = intNumDummyFiles == 1 ? "the dummy file" : "the dummy files";
    if (sngSpeed > 0) {
        const auto intOverwrites = OverwritesToEstimate();
        strText += "Assuming a disk write speed (as measured) of " + FormatNumber(sngSpeed, 2) +
                   " MB/sec\r\nand using an adjustment factor of " +
                   FormatNumber(AdjustmentFactor(std::string(1, chrDrive) + ":\\",
                                                 BytesPerDummy() / dblBytesPerMB),
                                2) +
                   "\r\nthis will take about " + EstimateDurationText(SecondsToFill(chrDrive)) +
                   ".\r\n\r\nPurging " + strFiles + " will then take about " +
                   (intOverwrites == 1 ? std::string("the same time.")
                                       : std::to_string(intOverwrites) + " times as long.");
    } else
        strText += std::string("It is advisable to test the purge speed of Drive ") + chrDrive +
                   " first, so as to get an estimate of the time required.";
    if (driveRequest.How.Options.Verify)
        strText += "\r\n\r\nWhat the purge has written over " + strFiles +
                   " will be read back and compared.";
    return strText + "\r\n\r\nClick 'OK' to continue or 'Cancel' to terminate this operation.";
}

/// What the dummy files could not reach; "" when they reached everything.
std::string UnfilledText() {
    const double dblAll = FillDisk.dblUnfilled + FillDisk.dblKeptBack;
    if (dblAll <= 0)
        return {};
    std::string strText =
        ByteSizeText(dblAll, 2) + " of free space could not be filled and may still hold old data.";
    if (FillDisk.dblKeptBack > 0)
        strText += "\r\nA disk quota or the system itself keeps " +
                   (FillDisk.dblUnfilled > 0 ? ByteSizeText(FillDisk.dblKeptBack, 2) + " of it"
                                             : std::string("it")) +
                   " back.";
    return strText;
}

std::string WrittenText() {
    const std::string strUnfilled = UnfilledText();
    return (FillDisk.lngFilesWritten == 1
                ? std::string("One dummy file has been written.")
                : GroupedDigits(FillDisk.lngFilesWritten) + " dummy files have been written.") +
           "\r\nThis has overwritten " + (strUnfilled.empty() ? "all the " : "") +
           "free space with null bytes.\r\n" + strUnfilled + (strUnfilled.empty() ? "" : "\r\n") +
           "This provides some security but is not very secure.\r\n\r\n"
           "Do you wish to continue with the purge?";
}

FreeSpaceResult FillAndPurge(const std::string& strTitle) {
    WriteDummyFiles();
    if (FillDisk.Outcome != FillOutcome::Done) {
        DeleteDummiesWithMessage(FillDisk.strDummyFolder);
        return FillDisk.Outcome == FillOutcome::Stopped ? FreeSpaceResult::Stopped
                                                        : FreeSpaceResult::Failed;
    }
    if (FillDisk.lngFilesWritten == 0) { // the folder itself may have taken the last clusters
        DeleteDummiesWithMessage(FillDisk.strDummyFolder);
        return FreeSpaceResult::NoSpace;
    }
    if (blnDisplayDialogBoxesDuringRemainderOfPurgeDrive) {
        if (!AskToContinue(WrittenText(), strTitle, "purge dummies")) {
            DeleteDummiesWithMessage(FillDisk.strDummyFolder);
            return FreeSpaceResult::Stopped;
        }
        blnStop = false; // the user's answer supersedes F10 pressed while the box was shown
    }
    SetMainLine(MainLine::LargePurgeMessage,
                (FillDisk.lngFilesWritten == 1
                     ? std::string("One dummy file is being purged.")
                     : GroupedDigits(FillDisk.lngFilesWritten) + " dummy files are being purged.") +
                    "\r\nTo stop the current dummy file purge, press the F10 key twice.");
    RepaintMain();
    (void)PurgeDummyFiles(true, FillDisk.lngFilesWritten, "");
    return blnStop ? FreeSpaceResult::Stopped : FreeSpaceResult::Purged;
}

std::string FreeSpaceResultText(FreeSpaceResult result) {
    if (result == FreeSpaceResult::Failed) // not stopped by the user; a box has told the reason
        return "The free space was not purged.";
    if (result == FreeSpaceResult::Stopped)
        return strStopped;
    const std::string strUnpurged = UnpurgedText(result);
    return std::string(result == FreeSpaceResult::Purged ? strPurged
                                                         : "No dummy file could be written.") +
           (strUnpurged.empty() ? "" : "\r\n" + strUnpurged);
}

void EndWithoutSpace(const std::string& strText, const std::string& strTitle) {
    TellInReport(strText);
    if (blnDisplayDialogBoxesDuringRemainderOfPurgeDrive)
        ui::Complain(strText, strTitle);
}

RunState StateAfter(FreeSpaceResult result) {
    return result == FreeSpaceResult::Stopped  ? RunState::Stopped
           : result == FreeSpaceResult::Failed ? RunState::Failed
                                               : RunState::Done;
}

} // namespace

std::string UnpurgedText(FreeSpaceResult result) {
    const std::int64_t lngUnpurged = FillDisk.lngFilesWritten - FillDisk.lngFilesPurged;
    std::string strText;
    if (result == FreeSpaceResult::Purged && lngUnpurged > 0)
        strText = (lngUnpurged == 1 ? std::string("One dummy file was")
                                    : GroupedDigits(lngUnpurged) + " dummy files were") +
                  " not purged to the end:\r\nthat space was overwritten with null bytes.";
    const std::string strUnfilled = UnfilledText();
    if ((result == FreeSpaceResult::Purged || result == FreeSpaceResult::NoSpace) &&
        !strUnfilled.empty())
        strText += (strText.empty() ? "" : "\r\n") + strUnfilled;
    return strText;
}

FreeSpaceResult PurgeFreeSpaceOf(char chrDrive, const std::string& strTitle) {
    const std::string strDrive(1, chrDrive);
    FillDisk.Outcome = FillOutcome::NothingWritten;
    FillDisk.dblUnfilled = FillDisk.dblKeptBack = 0;
    if (!ReadFreeSpace(chrDrive)) {
        ComplainOfUnknownSpace(chrDrive, strTitle);
        return FreeSpaceResult::Failed;
    }
    const auto BeginReport = [&] {
        BeginDriveReport(strTitle,
                         "Purging the free space of Drive " + strDrive + " (" +
                             ByteSizeText(dblSpaceInFreeClusters, 2) + ")",
                         blnPurgingDrive ? "" : strDrive + ":\\"); // the disk purge has told it
    };
    if (dblSpaceInFreeClusters <= 0) {
        WorkOnDrive(strDrive + ":\\", [&] { ReadUnfilledSpace(strDrive + ":\\"); });
        BeginReport();
        const std::string strUnfilled = UnfilledText();
        currentRun.strSpaceLeft = strUnfilled;
        EndWithoutSpace(NoFreeSpaceText(chrDrive) +
                            (strUnfilled.empty() ? "" : "\r\n" + strUnfilled),
                        strTitle);
        return FreeSpaceResult::NoSpace;
    }
    PlanDummyFiles(chrDrive);
    if (blnDisplayDialogBoxesDuringRemainderOfPurgeDrive &&
        !AskToContinue(AnnouncementText(chrDrive), strTitle, "fill"))
        return FreeSpaceResult::Stopped;

    BeginReport();
    if (!blnPurgingDrive) // the disk purge has already planned more than this
        PlanRunProgress(dblSpaceInFreeClusters * (1 + OverwritesToEstimate()));
    FillDisk.strDriveRoot = strDrive + ":\\";
    FillDisk.intTestQuantity = 0;
    blnPurgingFreeSpace = true;
    ui::HoldEscape(true); // to the end of the command
    const auto result = FillAndPurge(strTitle);
    currentRun.strSpaceLeft = UnpurgedText(result);
    blnPurgingFreeSpace = false;
    SetMainLine(MainLine::Status, "");
    SetMainLine(MainLine::LargePurgeMessage, FreeSpaceResultText(result));
    RepaintMain();
    TellInReport("Dummy files written: " + GroupedDigits(FillDisk.lngFilesWritten) +
                 "\r\nDummy files purged: " + GroupedDigits(FillDisk.lngFilesPurged) + "\r\n" +
                 (currentRun.Request.How.Options.Verify
                      ? "Dummy files verified by reading back from the disk: " +
                            GroupedDigits(FillDisk.lngFilesVerified) + "\r\n"
                      : "") +
                 (result == FreeSpaceResult::NoSpace ? "" : FreeSpaceResultText(result)));
    if (result == FreeSpaceResult::NoSpace)
        EndWithoutSpace(FreeSpaceResultText(result), strTitle);
    return result;
}

void PurgeFreeSpaceCommand() {
    RunDriveCommand([] {
        const std::string strTitle = "Purge free space";
        SetMainLine(MainLine::LargePurgeMessage, "");
        if (!PurgeLibraryReady())
            return RunState::Failed;
        const char chrDrive = ChooseWritableDrive("Purge free space on which drive?", strTitle,
                                                  DriveOptions::ForDummies);
        if (chrDrive == 0 || !AcceptFillingOf(chrDrive, strTitle))
            return RunState::Idle;
        const auto result = PurgeFreeSpaceOf(chrDrive, strTitle);
        if (result == FreeSpaceResult::Purged ||
            (result == FreeSpaceResult::Stopped && FillDisk.Outcome != FillOutcome::NothingWritten))
            ui::MsgBox(FreeSpaceResultText(result), ui::Buttons::OK, ui::Icon::Information,
                       strTitle);
        return StateAfter(result);
    });
}
