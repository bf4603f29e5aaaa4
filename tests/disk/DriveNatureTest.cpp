// What a person is told of a drive.
#include "drives/DriveNature.h"
#include "fakes/ProgramTest.h"

using DriveNatureTest = ProgramTest;
using platform::DriveType;

TEST_F(DriveNatureTest, RemarksOnDrives) {
    const std::string ssd = "Drive D is a solid-state drive: overwriting in place may miss older "
                            "copies of the data, and one pass is as good as many.";
    const std::string stick =
        "Drive D is a removable drive: a stick or memory card may keep older copies of the data "
        "that are overwritten, and one pass is as good as many.";
    const std::string off = " TRIM is off: it does not erase by itself what was deleted.";
    const std::string locked = " As BitLocker encrypts it, they cannot be read without the key.";
    const std::string compressed = "Windows compresses what is written to Drive D, and may write "
                                   "it to another place than that of the old data.";
    const std::string kept =
        "Restore points that Windows keeps of Drive D may hold earlier versions of files.";
    // Solid-state, trims, compressed, encrypted, protected.
    const std::tuple<DriveType, platform::DriveNature, std::string> cases[] = {
        {DriveType::Fixed, {}, ""},
        {DriveType::Fixed, {false, false, false, true, false}, ""}, // nothing that matters
        {DriveType::Fixed, {true, {}, {}, {}, {}}, ssd},
        {DriveType::Fixed, {true, false, false, false, false}, ssd + off},
        {DriveType::Fixed, {true, false, false, true, false}, ssd + locked},
        {DriveType::Fixed, {true, true, true, true, true}, ssd + " " + compressed},
        {DriveType::Fixed, {false, {}, false, {}, true}, kept},
        {DriveType::Removable, {false, false, {}, {}, {}}, stick},
        {DriveType::Remote, {true, {}, true, {}, true}, ""},
    };
    fake::AddDrive('D', 1 << 20);
    fake::Watch("ReadDriveNature", // it may have to spin up
                [](const std::string&) { EXPECT_TRUE(fake::user.InLongStep); });
    for (const auto& [type, nature, remarks] : cases) {
        fake::drives['D'].Type = type;
        fake::drives['D'].Nature = nature;
        EXPECT_EQ(remarks, DriveRemarks('D'));
    }
    fake::drives['D'].Type = DriveType::Removable;
    fake::drives['D'].MediaPresent = false;
    EXPECT_EQ("", DriveRemarks('D'));
    fake::AddDrive('A', 1 << 20, 512, DriveType::Removable); // a floppy disk is none of these
    EXPECT_EQ("", DriveRemarks('A'));
    EXPECT_EQ("", DriveRemarks('Z'));
}
