// What deleted files left outside all clusters: "Purge free space" takes it by small files.
#include "FreeSpaceTest.h"

const std::string secret(fake::recordRoom, 's');

struct SmallRecords : FreeSpaceTest {
    /// 600 records that deleted files left, far apart and in a row, in a table of 2,000.
    static fake::Drive& PutOldRecords(bool tells) {
        fake::Drive& drive = fake::drives['D'];
        drive.FileSystem = "NTFS";
        drive.Records = 2000;
        drive.TellsRecords = tells;
        drive.FreeRecords.clear();
        for (std::uint64_t i = 0; i < 300; ++i)
            drive.FreeRecords[100 + 2 * i] = drive.FreeRecords[1500 + i] = secret;
        return drive;
    }
    static bool AnyLeft(const fake::Drive& drive) {
        return std::any_of(drive.FreeRecords.begin(), drive.FreeRecords.end(), [](const auto& old) {
            return old.second.find("ssss") != std::string::npos;
        });
    }
    static bool IsTaking() { return frmMain.lblStatus.Caption.starts_with("Places of deleted"); }
    void Start() {
        ChooseDrive(strQuestion);
        user.BoxLike(strTitle, "\r\n\r\nSmall files will also take the places in the master file "
                               "table where deleted files have left their names and small "
                               "contents.\r\n\r\nIt is advisable");
    }
};

TEST_F(SmallRecords, AllFreeRecordsAreTakenBeforeTheDiskIsFull) {
    // Whether the system tells how many there are, whether a file lies in one, and in which.
    for (const int told : {0, 1, 2, 3}) {
        Begin(20 * MiB);
        fake::Drive& drive = PutOldRecords((told & 1) != 0);
        if ((told & 2) == 0)
            fake::FailAlways("HasClusters", "", Fault::NotSupported);
        if (told == 0)
            fake::FailAlways("ReadFileNumber", "", Fault::NotSupported);
        Start();
        Written("", [&] {
            EXPECT_EQ(0u, drive.Free());
            EXPECT_EQ(0u, drive.FreeRecords.size());
        });
        user.Box(strTitle, strPurged);
        Click();
        EXPECT_FALSE(AnyLeft(drive)) << told;
        EXPECT_LT(drive.Records, 2000u + ((told & 1) != 0 ? 150 : 700));
        EXPECT_LT(fake::CallsMade("ReadDriveSpace"), 1500);
    }
    // Too little room for the folder of the small files: it takes all there is.
    Begin(20 * MiB);
    PutOldRecords(true);
    LeaveFree(40 * 1024);
    Start();
    user.Box(strTitle, "No dummy file could be written.");
    Click();
    // Small files have clusters here, whatever the file system calls itself: it is left at that.
    Begin(20 * MiB);
    fake::drives['D'].FileSystem = "NTFS";
    Start();
    Written("", [] { EXPECT_EQ(2u, fake::At("D:\\" + Dummies()[0])->Children.size()); });
    user.Box(strTitle, strPurged);
    Click();
}

TEST_F(SmallRecords, NoStopAndNoFaultLeavesOne) {
    for (const int answer : {int{ui::AnswerNo}, int{ui::AnswerYes}}) {
        Begin(20 * MiB);
        fake::Drive& drive = PutOldRecords(true);
        Start();
        PressF10When([&] { return IsTaking() && drive.FreeRecords.size() < 400; });
        user.Box("Cancel?", "Do you wish to cancel this operation?", answer, fake::AsksYesNo);
        if (answer == ui::AnswerNo)
            Written("");
        user.BoxLike(strTitle, answer == ui::AnswerNo ? strPurged : strStopped);
        Click();
        EXPECT_EQ(answer == ui::AnswerYes, AnyLeft(drive));
    }
    for (const std::string system : {"NTFS", "FAT32"}) {
        int n = 0;
        do {
            SCOPED_TRACE(n += 1 + n / 12);
            Begin(MiB);
            fake::Drive& drive = fake::drives['D'];
            drive.FileSystem = system;
            (system == "NTFS" ? drive.Records : drive.Capacity) = system == "NTFS" ? 100 : MiB;
            drive.FreeRecords = {{50, secret}};
            drive.FreeEntries = {"_ld.txt", "_lder.txt"};
            user.AnswerOthers = [](const fake::BoxSeen& box) {
                return box.Buttons == ui::Buttons::YesNo ? int{ui::AnswerYes} : int{ui::AnswerOK};
            };
            ChooseDrive(strQuestion);
            fake::FailNth(n, n % 2 ? Fault::WriteFault : Fault::DiskFull);
            fake::Click(frmMain.cmdLargePurge[2]);
            ExpectRest();
            EXPECT_EQ(1u, drive.Root->Children.size()) << "but docs";
        } while (fake::HasFailed() && !HasFailure());
        EXPECT_GT(n, 100);
    }
    user.Reset();
}

TEST_F(SmallRecords, OnFatTheNamesInTheTopFolder) {
    Begin(20 * MiB);
    fake::Drive& drive = fake::drives['D'];
    drive.FileSystem = "FAT32";
    for (int i = 0; i < 300; ++i)
        drive.FreeEntries.push_back("_ecret" + std::to_string(i));
    ChooseDrive(strQuestion);
    user.BoxLike(strTitle, "\r\n\r\nEmpty files will also take the places in the top folder where "
                           "deleted files have left their names.\r\n\r\nIt is advisable");
    Written("", [&] {
        EXPECT_EQ(300u, drive.FreeEntries.size());
        for (const std::string& name : drive.FreeEntries)
            EXPECT_TRUE(name.starts_with("_NW")) << name;
    });
    user.Box(strTitle, strPurged);
    Click();
}
