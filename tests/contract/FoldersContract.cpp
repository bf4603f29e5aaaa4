// What every platform back end must do with folders.
#include "contract/ContractWorld.h"
#include "platform/Places.h"
#include "platform/System.h"

using namespace platform;
using namespace contract;

TEST_F(Contract, EnumerationTellsFilesAndFolders) {
    EXPECT_TRUE(Entries(folder).empty());
    ASSERT_EQ(MakeFolder(In("sub")), Fault::None);
    ASSERT_EQ(Put(In("sub\\deeper"), "not listed"), Fault::None);
    ASSERT_EQ(Put(In("five"), "12345"), Fault::None);
    for (int i = 0; i < 300; ++i)
        ASSERT_EQ(Put(In("file" + std::to_string(i)), ""), Fault::None);
    auto entries = Entries(folder);
    EXPECT_EQ(entries.size(), 302u);
    EXPECT_TRUE(entries["sub"].IsFolder);
    EXPECT_FALSE(entries["sub"].IsLink || entries["five"].IsFolder);
    EXPECT_EQ(entries["five"].Length, 5u);
    int visited = 0;
    EXPECT_EQ(EnumerateFolder(folder, [&](const FolderEntry&) { return ++visited < 7; }),
              Fault::None);
    EXPECT_EQ(visited, 7);
    const auto remove = [&](const FolderEntry& entry) { // while they are enumerated
        EXPECT_EQ(entry.IsFolder ? Fault::None : RemoveFile(In(entry.Name)), Fault::None);
        return true;
    };
    EXPECT_EQ(EnumerateFolder(folder, remove), Fault::None);
    EXPECT_EQ(Entries(folder).size(), 1u);
    EXPECT_EQ(EnumerateFolder(In("no"), remove), Fault::NotFound);
}

TEST_F(Contract, MakingAndRemovingFolders) {
    EXPECT_EQ(MakeFolder(In("no\\sub")), Fault::NotFound);
    ASSERT_EQ(MakeFolder(In("sub")), Fault::None);
    EXPECT_EQ(MakeFolder(In("sub")), Fault::AlreadyExists);
    ASSERT_EQ(Put(In("sub\\a"), "x"), Fault::None);
    EXPECT_EQ(RemoveFolder(In("sub")), Fault::NotEmpty);
    EXPECT_EQ(Content(In("sub\\a")), "x");
    ASSERT_EQ(RemoveFile(In("sub\\a")), Fault::None);
    EXPECT_EQ(RemoveFolder(In("sub\\")), Fault::None);
    EXPECT_FALSE(FolderExists(In("sub")));
    EXPECT_EQ(RemoveFolder(In("sub")), Fault::NotFound);
}

TEST_F(Contract, ALinkToAFolderIsToldAndRemovedAsALink) {
    ASSERT_EQ(MakeFolder(In("target")), Fault::None);
    ASSERT_EQ(Put(In("target\\kept"), "kept"), Fault::None);
    ASSERT_EQ(MakeFolder(In("sub")), Fault::None);
    if (!MakeFolderLink(In("sub\\link"), In("target")))
        GTEST_SKIP() << "links to folders cannot be made here";
    auto entries = Entries(In("sub"));
    EXPECT_TRUE(entries.size() == 1 && entries["link"].IsFolder && entries["link"].IsLink);
    const FileFacts facts = FactsOf(In("sub\\link"));
    EXPECT_TRUE(facts.IsLink && (facts.Attributes & AttributeReparsePoint) != 0);
    EXPECT_NE(RemoveFile(In("sub\\link")), Fault::None);
    const Fault removal = RemoveFolder(In("sub\\link\\"));
    EXPECT_EQ(Content(In("target\\kept")), "kept");
    if (removal == Fault::NotSupported) {
        // Rather nothing than the target, and so with a target that could be removed.
        EXPECT_EQ(RemoveFile(In("target\\kept")), Fault::None);
        EXPECT_EQ(RemoveFolder(In("sub\\link")), Fault::NotSupported);
        EXPECT_TRUE(FolderExists(In("target")));
        GTEST_SKIP() << "links cannot be removed as links here; the rest was checked";
    }
    EXPECT_EQ(removal, Fault::None);
    EXPECT_TRUE(Entries(In("sub")).empty());
}

TEST_F(Contract, AFolderIsKnownByWhateverPathAndHeld) {
    ASSERT_EQ(MakeFolder(In("sub")), Fault::None);
    ASSERT_EQ(MakeFolder(In("sub\\deep")), Fault::None);
    ASSERT_EQ(Put(In("sub\\ a.txt"), "x"), Fault::None);
    FolderHold hold, again, other;
    FolderIdentity identity;
    ASSERT_EQ(HoldFolder(In("sub\\"), hold), Fault::None);
    ASSERT_TRUE(hold.Handle != 0 && !hold.IsLink && hold.Identity.IsKnown());
    EXPECT_EQ(HoldFolder(In("sub\\deep\\.."), again), Fault::None);
    EXPECT_EQ(ReadFolderIdentity(In("sub"), identity), Fault::None);
    EXPECT_TRUE(hold.Identity == again.Identity && hold.Identity == identity);
    EXPECT_EQ(HoldFolder(In("sub\\deep"), other), Fault::None);
    EXPECT_FALSE(hold.Identity == other.Identity);
    EXPECT_EQ(RemoveFolder(In("sub\\deep")), Fault::SharingViolation);
    LetGo(other);
    LetGo(other); // of what is not held, nothing happens
    EXPECT_EQ(RemoveFolder(In("sub\\deep")), Fault::None) << "the folder above is held";
    EXPECT_EQ(HoldFolder(In("sub\\ a.txt"), other), Fault::NotFound);
    EXPECT_EQ(HoldFolder(In("no"), other), Fault::NotFound);
    EXPECT_EQ(Content(In("sub\\ a.txt")), "x");
    EXPECT_EQ(RemoveFile(In("sub\\ a.txt")), Fault::None) << "in a held folder";
    LetGo(hold);
    LetGo(again);
    EXPECT_EQ(HoldFolder(folder.substr(0, 3), other), Fault::None);
    EXPECT_FALSE(other.IsLink) << "the root of a drive";
    LetGo(other);
    if (MakeFolderLink(In("link"), In("sub"))) {
        EXPECT_EQ(HoldFolder(In("link"), other), Fault::None);
        EXPECT_TRUE(other.IsLink && other.Handle == 0);
    }
}

TEST_F(Contract, PathsResolveToWhatIsOnTheDisk) {
    ASSERT_EQ(MakeFolder(In("Sub")), Fault::None);
    ASSERT_EQ(Put(In("Sub\\ a.txt"), "x"), Fault::None);
    std::string real, root;
    EXPECT_EQ(ReadRealPath(In("x\\..\\Sub\\.\\ a.txt"), real), Fault::None);
    EXPECT_TRUE(real.ends_with("\\Sub\\ a.txt")) << real;
    EXPECT_EQ(FullPath(In("x\\..\\Sub\\ a.txt")).substr(folder.size()), "\\Sub\\ a.txt");
    EXPECT_TRUE(FullPath(In("Sub\\b. ")).ends_with("\\Sub\\b. ")) << "another name than b";
    EXPECT_EQ(ReadRealPath(In("no"), real), Fault::NotFound);
    EXPECT_EQ(ReadVolumeRoot(In("Sub\\ a.txt"), root), Fault::None);
    EXPECT_EQ(root, folder.substr(0, 3));
    EXPECT_FALSE(FolderTellsCase(In("Sub")));
    EXPECT_TRUE(SameButForCase("a\xC3\xA9.TXT", "A\xC3\x89.txt"));
    EXPECT_FALSE(SameButForCase("k", "\xE2\x84\xAA")) << "the sign of the kelvin is no k";
}
