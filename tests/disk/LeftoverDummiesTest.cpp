// What an interrupted run left behind: at the start, and on a stick that is chosen later.
#include "disk/LeftoverDummies.h"
#include "DriveTest.h"

struct LeftoverDummies : DriveTest {
    /// What a crash leaves: a folder of ours with the marker of its purpose and a dummy file.
    static std::string PutLeftover(const std::string& digits, const std::string& mark,
                                   std::uint64_t length) {
        const std::string folder = "D:\\_nw_dummy_" + digits;
        fake::PutFile(folder + "\\nullwright-" + digits + mark, "");
        fake::PutBigFile(folder + "\\_nw_dummy1", length);
        return folder;
    }
};

TEST_F(LeftoverDummies, SayWhatTheyAreAlsoOnAStickThatIsChosenLater) {
    const std::string a = "0123456789abcde1", b = "0123456789abcde2";
    fake::drives['D'].Type = platform::DriveType::Removable;
    const std::string test = PutLeftover(b, ".test", MiB);
    const std::string testText = "A test of the purge speed was interrupted before its dummy files "
                                 "were deleted.  They still take up space, in the folder\r\n" +
                                 test + "\r\n\r\nDo you wish to delete them now?";
    bool& busy = fake::At(test + "\\nullwright-" + b + ".test")->Open;
    busy = true; // another run is at it
    OfferToRemoveLeftoverDummies();
    busy = false;
    // C: has to spin up. F10 then ends the search after the drive that is being looked at.
    fake::AddDrive('E', MiB);
    Paths looked;
    fake::Watch("EnumerateFolder", [&](const std::string& path) {
        if (path == "C:\\")
            fake::Advance(600);
        looked.push_back(path);
    });
    PressF10When([] {
        return frmMain.lblLargePurgeMessage.Caption.starts_with(
            "Looking for dummy files of an earlier run on Drive D ...");
    });
    user.Box("Dummy files found", testText, ui::AnswerNo);
    OfferToRemoveLeftoverDummies();
    EXPECT_EQ((Paths{"C:\\", "D:\\"}), looked);
    EXPECT_EQ("", frmMain.lblLargePurgeMessage.Caption);

    const std::string fill = PutLeftover(a, ".mark", fake::drives['D'].Free());
    const std::string full = "There is no free space on the disk in Drive D.";
    const std::string both =
        full +
        "\r\n\r\nA purge of free space and a test of the purge speed were interrupted before their "
        "dummy files were deleted.  They still fill the disk, in the folders\r\n" +
        test + "\r\n" + fill + "\r\n\r\nDo you wish to delete them now?";
    ChooseDrive("Purge free space on which drive?");
    user.Box("Dummy files found", both, ui::AnswerNo, fake::AsksYesNo);
    user.Box("Purge free space",
             full + "\r\nDummy files of an earlier run fill it, in the folders\r\n" + test +
                 "\r\n" + fill,
             fake::Warns);
    fake::Click(frmMain.cmdLargePurge[2]);
    EXPECT_EQ(2u, Dummies().size());
    // What only looks like ours stays, and so does what is not ours inside. Small files, empty ones
    // with the folder's last digits at the top, go.
    Paths kept{"D:\\docs\\letter.txt", test + "\\_nw_dummy_notes.txt"};
    for (const std::string name :
         {"_nw_dummy\\_nw_dummy1", "_nw_dummy_notes\\x", "_nw_dummy_0123456789abcdef\\_nw_dummy1",
          "_NW00001.DEE", "_NW00001", "_NW00002.DE1"})
        kept.push_back("D:\\" + name);
    for (const std::string& path : Paths{kept.begin() + 1, kept.end()})
        fake::PutFile(path, path == kept.back() ? "somebody's" : "");
    for (const std::string& path : {fill + "\\_NW00001", std::string("D:\\_NW0000A.DE1"),
                                    fill + "\\_NW0000Z" + std::string(200, 'Z')})
        fake::PutFile(path, "");
    ChooseDrive("Purge free space on which drive?");
    user.Box("Dummy files found", both, ui::AnswerYes);
    user.BoxLike("Error", test + "\r\nholds something that is not Nullwright's.  It was");
    user.BoxLike("Purge free space", "Drive D has 119.99 MB free.", ui::AnswerCancel);
    fake::Click(frmMain.cmdLargePurge[2]);
    EXPECT_EQ(kept, fake::FilesBelow("D:\\"));
}
