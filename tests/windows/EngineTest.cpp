// Real files, purged by the real engine through the Windows back ends and the auxiliary library.
#include "contract/ContractWorld.h"
#include "engine/FileProc.h"
#include "engine/FilePurge.h"

#include <algorithm>

using namespace contract;

namespace {

struct Engine : Contract {
    std::int16_t Purge(const std::string& name, std::int16_t type, bool deleteAfter,
                       bool slackOnly = false) {
        std::int16_t code = 99;
        (void)PurgeFileWithChecks(In(name), type, 1, deleteAfter, true, true, slackOnly, 0, code);
        return code;
    }
    std::string PutMarked(const std::string& name, std::size_t length) {
        std::string text;
        while (text.size() < length)
            text += "secret ";
        text.resize(length);
        EXPECT_EQ(Put(In(name), text), platform::Fault::None);
        return text;
    }
};

} // namespace

TEST_F(Engine, OverwritesWhatIsMeantInTheFilesOwnLength) {
    ASSERT_TRUE(PurgeLibraryReady());
    for (const std::size_t length :
         {0, 1, 20, 700, 4095, 4096, 4097, 8192, 9999, 262145, 300000, (5 << 19) + 3})
        for (std::int16_t type = 0; type <= 2; ++type) {
            SCOPED_TRACE(std::to_string(length) + " bytes, type " + std::to_string(type));
            const std::string text = PutMarked("a.bin", length);
            EXPECT_EQ(0, Purge("a.bin", type, true, true));
            EXPECT_TRUE(text == Content(In("a.bin"))) << "only the slack is meant";
            EXPECT_EQ(0, Purge("a.bin", type, false));
            const std::string bytes = Content(In("a.bin"));
            ASSERT_EQ(length, bytes.size());
            EXPECT_EQ(std::string::npos, bytes.find("secret"));
            if (type == 1) {
                EXPECT_TRUE(bytes == std::string(length, '\xF5'));
            } else if (length >= 4096) { // 16 of each value on average
                EXPECT_LT(std::count(bytes.begin(), bytes.begin() + 4096, bytes[0]), 200);
            }
            EXPECT_EQ(0, Purge("a.bin", type, true));
            EXPECT_FALSE(platform::FileExists(In("a.bin")));
        }
    // Slack beyond 4 GiB; the file is sparse here, which makes it cheap.
    PutMarked("big.bin", 10);
    const std::int64_t length = (5LL << 30) + 5;
    ASSERT_EQ(0, ChangeFileSize(In("big.bin"), length));
    EXPECT_EQ(0, Purge("big.bin", 1, false, true));
    EXPECT_EQ(length, GetFileLength(In("big.bin")));
}

TEST_F(Engine, DeletesWhateverProtectsAFile) {
    const std::string name = "\xC3\xBC\xE6\xBC\xA2 " + std::string(200, 'n') + ".txt";
    for (const std::uint32_t attributes : {0, 1, 2, 4, 7}) { // read-only, hidden, system
        PutMarked(name, 5000);
        ASSERT_FALSE(Failed(platform::WriteAttributes(In(name), attributes | 0x20)));
        EXPECT_EQ(0, Purge(name, 0, true)) << attributes;
        EXPECT_FALSE(platform::FileExists(In(name)));
    }
}

TEST_F(Engine, RefusesBeforeAByteIsWritten) {
    EXPECT_EQ(-2, Purge("none", 0, true));
    const std::string text = PutMarked("a.bin", 6000);
    ASSERT_TRUE(HoldFile(In("a.bin")));
    EXPECT_EQ(-2, Purge("a.bin", 0, true));
    LetGoOfFile();
    EXPECT_EQ(-8, Purge("a.bin", 3, true));
    EXPECT_TRUE(text == Content(In("a.bin")));
}
