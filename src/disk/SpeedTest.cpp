// "Test purge speed": writes and purges the test quantity, measures the time, shows the result.
#include "disk/SpeedTest.h"

#include "disk/DriveChoice.h"
#include "disk/DriveCommand.h"
#include "disk/DriveReport.h"
#include "disk/DummyPlan.h"
#include "disk/FillDisk.h"
#include "disk/FillDiskPurge.h"
#include "disk/FreeSpacePurge.h"
#include "disk/LeftoverDummies.h"
#include "disk/SmallFileTest.h"
#include "drives/DiskProc.h"
#include "engine/FilePurge.h"
#include "platform/System.h"
#include "selection/frmDrives.h"
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

const char* const strTitle = "Test purge speed";
constexpr double dblLeastFreeFloppy = 131072;
constexpr double dblLeastFree = dblBytesPerMB;
constexpr double dblMuchFree = 5368709120;
constexpr double dblSecondsPerDay = 86400;
constexpr double dblLeastSeconds = 0.001;
constexpr int intMillisecondsBeforeTest = 1000; ///< lets the disk become idle

bool Fail(const std::string& strText) {
    TellInReport(strText);
    ui::Complain(strText, strTitle);
    return false;
}

std::string TimeFor(double dblSeconds) {
    return SecondsText(RoundHalfEven(dblSeconds), true);
}

std::string SpeedResultText(bool blnFloppy, float sngSpeed, std::int16_t intOverwrites) {
    const auto intPasses = GetNumberOfPasses();
    const double s = intOverwrites / static_cast<double>(sngSpeed);
    std::string strText =
        "The purge speed is approximately " + SpeedText(sngSpeed) +
        " MB/sec. for a single overwrite.\r\n\r\n"
        "It thus requires, using the type of purge currently specified (" +
        (intPasses == 1 ? std::string("1 pass = ") : std::to_string(intPasses) + " passes = ") +
        (intOverwrites == 1 ? std::string("1 overwrite")
                            : std::to_string(intOverwrites) + " overwrites") +
        "), approximately\r\n";
    if (blnFloppy)
        strText += TimeFor(1.44 * s) + " to purge a full floppy disk.";
    else
        strText += TimeFor(10 * s) + " to purge 10 MB, " + TimeFor(100 * s) +
                   " to purge 100 MB,\r\n" + TimeFor(1024 * s) + " to purge 1 GB, " +
                   TimeFor(10240 * s) + " to purge 10 GB,\r\nand " + TimeFor(102400 * s) +
                   " to purge 100 GB.";
    if (intOverwrites > 1)
        strText += "\r\n\r\nTo decrease the time required change the type of purge so as to "
                   "decrease the number of overwrites.";
    return strText;
}

double SecondsSince(double t0) {
    const double dt = platform::SecondsSinceMidnight() - t0;
    return dt < 0 ? dt + dblSecondsPerDay : dt;
}

/// Writes and purges the test quantity. Returns the seconds taken, or a negative number. Small
/// files are purged in between; `dblSmallFile` are the seconds for one overwrite of one of these, 0
/// when that could not be measured.
double TimedWriteAndPurge(double& dblSmallFile) {
    double t0 = platform::SecondsSinceMidnight();
    WriteDummyFiles();
    const double dblWriting = SecondsSince(t0);
    const bool blnWritten =
        FillDisk.Outcome == FillOutcome::Done && FillDisk.dblBytesInFinishedFiles > 0;
    if (blnWritten) {
        dblSmallFile = SecondsForSmallFile(FillDisk.strDummyFolder);
        t0 = platform::SecondsSinceMidnight();
        blnPurgingFreeSpace = true; // else F10 would only take effect after all passes
        (void)PurgeDummyFiles(false, FillDisk.lngFilesWritten, "");
        blnPurgingFreeSpace = false;
    } else
        (void)DeleteDummyFiles(FillDisk.strDummyFolder);
    if (!blnWritten || FillDisk.lngFilesPurged != FillDisk.lngFilesWritten) {
        if (blnWritten && blnStop)
            FillDisk.Outcome = FillOutcome::Stopped;
        return -1;
    }
    const double dt = dblWriting + SecondsSince(t0);
    return dt <= dblLeastSeconds ? dblLeastSeconds : dt;
}

} // namespace

std::string SpeedText(float sngSpeed) {
    return FormatNumber(sngSpeed, sngSpeed < 1 ? 3 : 2);
}

bool TestPurgeSpeed(char chrDrive, bool blnShowResult, float& sngSpeed) {
    const std::string strDrive(1, chrDrive);
    const bool blnFloppy = IsFloppyLetter(chrDrive);
    double dblFree = 0, dblTotal = 0;
    FillDisk.Outcome = FillOutcome::NothingWritten;
    if (GetDiskSpaceEx(strDrive + ":\\", dblFree, dblTotal) != 0 || !ReadFreeSpace(chrDrive)) {
        ComplainOfUnknownSpace(chrDrive, strTitle);
        return false;
    }
    if (dblFree < (blnFloppy ? dblLeastFreeFloppy : dblLeastFree))
        return Fail((dblFree <= 0 ? NoFreeSpaceText(chrDrive)
                                  : "Drive " + strDrive + " has only " + FormatNumber(dblFree, 0) +
                                        " bytes free.") +
                    (blnFloppy ? "\r\nAt least 128 KB of free space is required for this test."
                               : "\r\nAt least 1 MB of free space is required for this test."));

    BeginDriveReport(strTitle, "Testing the purge speed of Drive " + strDrive);
    SetMainLine(MainLine::LargePurgeMessage, "Testing Drive " + strDrive + " ...");
    FillDisk.strDriveRoot = strDrive + ":\\";
    FillDisk.intTestQuantity = blnFloppy ? 1 : dblFree >= dblMuchFree ? 10 : 5;
    intNumDummyFiles = 1;
    SetMainLine(MainLine::EstimatedTime, "");
    RepaintMain();
    ui::Wait(intMillisecondsBeforeTest);
    double dblSmallFile = 0;
    const double dblSeconds = TimedWriteAndPurge(dblSmallFile);
    FillDisk.intTestQuantity = 0;
    blnStop = false;
    SetMainLine(MainLine::LargePurgeMessage, "");
    if (FillDisk.Outcome == FillOutcome::Stopped) {
        TellInReport("The test was stopped.");
        return false;
    }
    if (dblSeconds < 0)
        return Fail("An error occurred when purging the dummy files.\r\n"
                    "The test cannot be completed.");

    const auto intOverwrites = GetNumOverwrites();
    const double dblBytes = FillDisk.dblBytesInFinishedFiles;
    const auto intDrive = static_cast<std::size_t>(chrDrive - 'A');
    sngSpeed = static_cast<float>(dblBytes / dblBytesPerMB * intOverwrites / dblSeconds);
    sngPurgeSpeed = sngSpeed;
    currentRun.dblSpeed = sngSpeed;
    sngPurgeSpeeds[intDrive] = sngSpeed;
    dblBytesMeasured[intDrive] = dblBytes;
    dblSecondsMeasured[intDrive] = dblSeconds;
    // What is left beyond the bytes: opening, waiting for the flush, a share of the deletion.
    dblSmallFileSeconds[intDrive] =
        std::max(dblSmallFile - intSmallFileLength / dblBytesPerMB / sngSpeed, 0.0);
    SetMainLine(MainLine::PurgeSpeed,
                SpeedText(sngSpeed) + " MB/sec. (1 overwrite) for Drive " + strDrive + ".");
    RepaintMain();
    TellInReport(ByteSizeText(dblBytes, 2) + " were written and purged: " + SpeedText(sngSpeed) +
                 " MB/sec for one overwrite.");
    if (blnShowResult)
        ui::MsgBox(SpeedResultText(blnFloppy, sngSpeed, intOverwrites), ui::Buttons::OK,
                   ui::Icon::Information, strTitle);
    return true;
}

void TestPurgeSpeedCommand() {
    RunDriveCommand([] {
        if (!PurgeLibraryReady())
            return RunState::Failed;
        const std::string strLetters = FindDrives(strTitle);
        if (strLetters.empty())
            return RunState::Failed;
        const bool blnOne = strLetters.size() == 1;
        const std::string strQuestion =
            (blnOne ? "This writes a test file to Drive " + strLetters + " and then purges it " +
                          "to test the purge speed "
                    : std::string("This writes a test file to a selected drive and then purges it "
                                  "to test the purge speed for that drive ")) +
            "so as to get an approximate estimate of purge time required for other files."
            "\r\n\r\nDo you wish to proceed with this test?";
        if (ui::MsgBox(strQuestion, ui::Buttons::YesNo, ui::Icon::Question, strTitle, "test") !=
            ui::AnswerYes)
            return RunState::Idle;
        const char chrDrive =
            blnOne ? strLetters[0] : ChooseDrive("Test purge speed on which drive?", strLetters);
        float sngSpeed = 0;
        if (chrDrive == 0 || !CheckDriveWritable(chrDrive, strTitle))
            return RunState::Idle;
        OfferToRemoveLeftoversOn(chrDrive);
        return TestPurgeSpeed(chrDrive, true, sngSpeed)   ? RunState::Done
               : FillDisk.Outcome == FillOutcome::Stopped ? RunState::Stopped
                                                          : RunState::Failed;
    });
}
