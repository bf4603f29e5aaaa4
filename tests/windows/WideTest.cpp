// Text and paths at the border to Windows, and the auxiliary library seen from outside.
#include "windows/Environment.h"

#include "platform/Files.h"
#include "platform/System.h"

using platform::Narrow;
using platform::Widen;

TEST(Wide, EveryNameComesBackAsItWas) {
    EXPECT_EQ(Widen("a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80"), L"a\u00E9\u65E5\U0001F600");
    const std::wstring odd[] = {
        {L'a', 0xDC00, L'b'}, {0xDFFF, 0xD83D}, {0xD83D, 0xDE00}, {0xD800, 0xD800, 0xDC00}};
    for (const std::wstring& name : odd)
        EXPECT_EQ(Widen(Narrow(name)), name);
    for (unsigned point = 1; point < 0x10000; ++point) {
        const std::wstring name(1, static_cast<wchar_t>(point));
        ASSERT_EQ(Widen(Narrow(name)), name);
    }
    // Broken UTF-8: no byte is lost silently, none is read beyond the end.
    EXPECT_EQ(Widen("\x80x\xC3"), L"\uFFFDx\uFFFD");
    EXPECT_EQ(Widen("\xF0\x9F\x98"), L"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Widen("\xC0\x80\xFF"), L"\uFFFD\uFFFD\uFFFD");
}

TEST(Wide, PathsReachTheFileSystemAsTheyAre) {
    const auto form = [](const char* path) { return Narrow(platform::WidePath(path)); };
    EXPECT_EQ(form("C:\\a\\b. "), "\\\\?\\C:\\a\\b. ");
    EXPECT_EQ(form("c:/a//b\\"), "\\\\?\\c:\\a\\b");
    EXPECT_EQ(form("C:\\"), "\\\\?\\C:\\");
    EXPECT_EQ(form("C:\\a\\..\\.\\b\\..\\..\\..\\c"), "\\\\?\\C:\\c");
    EXPECT_EQ(form("C:\\a\\..."), "\\\\?\\C:\\a\\...");
    for (const char* same : {"", "a.txt", "C:", "C:a", "\\\\server\\share\\a", "\\\\?\\C:\\a\\"})
        EXPECT_EQ(form(same), same);
    EXPECT_EQ(platform::NarrowPath(L"\\\\?\\C:\\a"), "C:\\a");
}

// Seen from outside, as another program would load it.
TEST(AuxiliaryLibrary, ExportsWhatIsAgreedAndNothingElse) {
    HMODULE library = LoadLibraryW(Widen(platform::ProgramFolder() + "\\nwaux6.dll").c_str());
    ASSERT_NE(library, nullptr);
    for (const char* name : {"_change_filesize", "_change_filesize64", "_flush_file"})
        EXPECT_TRUE(GetProcAddress(library, name)) << name;
    EXPECT_FALSE(GetProcAddress(library, MAKEINTRESOURCEA(4)));
    // The short form; the long one is what the program calls.
    using Change = std::int32_t (*)(const char*, std::int32_t);
    const auto change = reinterpret_cast<Change>(
        reinterpret_cast<void (*)()>(GetProcAddress(library, "_change_filesize")));
    const std::string path = Environment(L"TEMP") + "\\nwaux6-" +
                             std::to_string(GetCurrentProcessId()) + ".tmp"; // ours by its number
    platform::File file;
    ASSERT_EQ(platform::OpenFile(path, platform::Access::CreateNew, file), platform::Fault::None);
    EXPECT_LT(change(path.c_str(), -1), 0) << "open for writing elsewhere";
    ASSERT_EQ(platform::CloseFile(file), platform::Fault::None);
    EXPECT_EQ(change(path.c_str(), 70000), 0);
    EXPECT_EQ(change(path.c_str(), -1), 0);
    EXPECT_LT(change(path.c_str(), -5), 0);
    std::uint64_t length = 0;
    EXPECT_EQ(platform::ReadFileLength(path, length), platform::Fault::None);
    EXPECT_EQ(length, 70000u);
    EXPECT_EQ(platform::RemoveFile(path), platform::Fault::None);
    EXPECT_LT(change(nullptr, -1), 0);
    EXPECT_LT(change("", -1), 0);
}
