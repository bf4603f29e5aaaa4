// Real files, purged by the real engine through the Windows back ends and the auxiliary library.
#include "contract/ContractWorld.h"
#include "engine/FileProc.h"
#include "engine/FilePurge.h"
#include "platform/System.h"

#include <algorithm>

using namespace contract;

namespace {

constexpr std::size_t lengths[] = {0,    1,    20,   700,    4095,   4096,
                                   4097, 8192, 9999, 262145, 300000, (5 << 19) + 3};

struct Engine : Contract {
    std::uint32_t reach = 0;
    std::int16_t Purge(const std::string& path, std::int16_t type, std::int16_t passes,
                       bool deleteAfter, bool slackOnly = false) {
        std::int16_t code = 99;
        (void)PurgeFileWithChecks(path, type, passes, deleteAfter, true, true, slackOnly, 0, code,
                                  &reach);
        return code;
    }
    std::string PutMarked(const std::string& name, std::size_t length) {
        std::string text;
        while (text.size() < length)
            text += "secret ";
        text.resize(length);
        platform::File file;
        EXPECT_FALSE(Failed(OpenFile(In(name), platform::Access::Replace, file)));
        EXPECT_FALSE(Failed(WriteBytes(file, text.data(), text.size())));
        EXPECT_FALSE(Failed(CloseFile(file)));
        return text;
    }
    std::string Whole(const std::string& name) {
        std::string bytes(4 << 20, '\0');
        std::size_t read = 0;
        platform::File file;
        EXPECT_FALSE(Failed(OpenFile(In(name), platform::Access::Read, file)));
        EXPECT_FALSE(Failed(ReadBytes(file, bytes.data(), bytes.size(), read)));
        EXPECT_FALSE(Failed(CloseFile(file)));
        return bytes.substr(0, read);
    }
};

} // namespace

TEST_F(Engine, KeptFilesHoldTheLastOverwriteInTheirOwnLength) {
    ASSERT_TRUE(PurgeLibraryReady());
    for (const std::size_t length : lengths)
        for (std::int16_t type = 0; type <= 2; ++type) {
            SCOPED_TRACE(std::to_string(length) + " bytes, type " + std::to_string(type));
            PutMarked("a.bin", length);
            EXPECT_EQ(0, Purge(In("a.bin"), type, 2, false));
            EXPECT_EQ(0u, reach);
            const std::string bytes = Whole("a.bin");
            ASSERT_EQ(length, bytes.size());
            if (type == 1) {
                EXPECT_TRUE(bytes == std::string(length, '\xF5'));
                continue;
            }
            EXPECT_EQ(std::string::npos, bytes.find("secret"));
            if (length >= 4096) { // 16 of each value on average
                EXPECT_LT(std::count(bytes.begin(), bytes.begin() + 4096, bytes[0]), 200);
            }
            for (std::size_t at = 4096; at < length; at += 4096) // every cluster the same block
                ASSERT_EQ(
                    0, bytes.compare(at, 4096, bytes, 0, std::min<std::size_t>(4096, length - at)));
        }
}

TEST_F(Engine, DeletedWhateverProtectsThem) {
    const std::uint32_t bits[] = {0, platform::AttributeReadOnly, platform::AttributeHidden,
                                  platform::AttributeSystem, 7};
    for (const std::uint32_t attributes : bits) {
        const std::string name = "\xC3\xBC\xE6\xBC\xA2 " + std::string(200, 'n') + ".txt";
        PutMarked(name, 5000);
        ASSERT_FALSE(Failed(platform::WriteAttributes(In(name), attributes | 0x20)));
        EXPECT_EQ(0, Purge(In(name), 0, 1, true)) << attributes;
        EXPECT_FALSE(platform::FileExists(In(name)));
    }
    EXPECT_EQ(-2, Purge(In("none"), 0, 1, true));
}

TEST_F(Engine, SlackOnlyChangesNothingInTheFile) {
    for (const std::size_t length : lengths)
        for (std::int16_t type = 0; type <= 2; ++type) {
            const std::string text = PutMarked("a.bin", length);
            EXPECT_EQ(0, Purge(In("a.bin"), type, 1, true, true));
            EXPECT_TRUE(text == Whole("a.bin")) << length;
        }
    // Beyond 4 GiB; the file is sparse here, which makes it cheap.
    PutMarked("big.bin", 10);
    const std::int64_t length = (5LL << 30) + 5;
    ASSERT_EQ(0, ChangeFileSize(In("big.bin"), length));
    EXPECT_EQ(0, Purge(In("big.bin"), 1, 1, false, true));
    EXPECT_EQ(length, GetFileLength(In("big.bin")));
}

TEST_F(Engine, RefusedBeforeAByteIsWritten) {
    const std::string text = PutMarked("a.bin", 6000);
    ASSERT_TRUE(HoldFile(In("a.bin")));
    EXPECT_EQ(-2, Purge(In("a.bin"), 0, 1, true));
    LetGoOfFile();
    EXPECT_TRUE(text == Whole("a.bin"));
    EXPECT_EQ(-8, Purge(In("a.bin"), 3, 1, true));
    EXPECT_TRUE(text == Whole("a.bin"));
}
