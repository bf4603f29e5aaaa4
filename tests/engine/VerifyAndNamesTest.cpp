// Reading back what was written, and overwriting names: over a disk that loses writes, and with
// every call failing in turn.
#include "engine/FilePurgeTest.h"

#include <map>
#include <set>

struct VerifyAndNames : FilePurgeTest {
    VerifyAndNames() { verify = rename = true; }
    int Run(bool deleteAfter, bool slackOnly = false, std::int16_t type = 1) {
        return Purge(path, type, 1, deleteAfter, slackOnly);
    }
    void PutFiles(std::uint64_t length) {
        SetUp();
        fake::PutBigFile(path, length, 'M');
        fake::PutFile(stream, std::string(10, 'S'));
    }
};

TEST_F(VerifyAndNames, EveryWriteThatTheDiskLostIsFound) {
    int found = 0, passed = 0;
    for (const std::uint64_t length : {0u, 100u, 5000u, (2u << 20) + 7, 300000u})
        for (const bool slackOnly : {false, true})
            for (const fake::Spoil spoil :
                 {fake::Spoil::Drop, fake::Spoil::Tear, fake::Spoil::Flip}) {
                std::int64_t writes = 0;
                for (int n = 0; n <= writes; ++n) {
                    SCOPED_TRACE(Message() << length << " " << slackOnly << " "
                                           << static_cast<int>(spoil) << " " << n);
                    const auto run = [&](bool deleteAfter) {
                        PutFiles(length);
                        if (length == 300000) { // nothing between the two ranges
                            fake::At(path)->Attributes |= platform::AttributeSparse;
                            fake::At(path)->Allocated = {{0, 65536}, {262144, 300000}};
                        }
                        fake::drives['C'].FileSystem = "FAT32"; // no records: all have slack
                        fake::SpoilNth(n, spoil);
                        return Run(deleteAfter, slackOnly, slackOnly ? 1 : 2);
                    };
                    const int code = run(false);
                    writes = n == 0 ? fake::CallsMade("WriteBytes") : writes;
                    const fake::Node& file = *fake::At(path);
                    EXPECT_EQ(length, file.Data.Length());
                    // What no later write has put right.
                    const auto& wrong =
                        file.OnDisk.empty() ? file.Children[0]->OnDisk : file.OnDisk;
                    ASSERT_EQ(wrong.empty() ? 0 : -19, code);
                    (code == 0 ? passed : found) += 1;
                    EXPECT_TRUE(code != 0 || job.HasReadBack == ReadBack::PastCache);
                    if (spoil == fake::Spoil::Flip && code != 0) {
                        EXPECT_EQ(wrong.begin()->first, job.DifferentAt);
                        EXPECT_EQ(file.OnDisk.empty() ? stream : path, job.DifferentPath);
                    }
                    ASSERT_EQ(code, run(true));
                    EXPECT_EQ(code == 0 && !slackOnly, fake::At(path) == nullptr);
                    EXPECT_EQ("", job.LeftAs);
                }
            }
    EXPECT_TRUE(found > 50 && passed > 100) << found << " " << passed;
}

TEST_F(VerifyAndNames, WhatIsReadAndHow) {
    // On a full disk what had room; where nothing reads past the cache, an ordinary read.
    PutFiles(5000);
    fake::FailNth(8, Fault::DiskFull, "WriteBytes");
    EXPECT_EQ(0, Run(true));
    EXPECT_EQ("WriteBytes", fake::FailedCall());
    EXPECT_EQ(ReadBack::PastCache, job.HasReadBack);
    PutFiles(5000); // random digits, which reach past the cluster
    EXPECT_EQ(0, Run(true, true, 0));
    EXPECT_EQ(ReadBack::PastCache, job.HasReadBack);
    for (const char* call : {"OpenFile", "ReadBytes"}) {
        PutFiles(3 << 20);
        fake::drives['C'].BytesPerSecond = 1 << 20;
        bool read = false;
        fake::FailAlways(call, path, Fault::NotSupported,
                         [&] { return fake::At(path)->Open && !std::exchange(read, true); });
        double share = 0;
        fake::Watch("ReadBytes", [&](const std::string&) { share = PurgeShareDone(); });
        EXPECT_EQ(0, Run(true));
        EXPECT_EQ(ReadBack::Cached, job.HasReadBack);
        EXPECT_TRUE(share > 0.8 && share < 1) << share << ": four overwrites, one reading";
    }
    SetUp();
    fake::AddDrive('D', 1 << 30, 4 << 20).FileSystem = "exFAT"; // digits that need several reads
    fake::PutBigFile("D:\\a", 5000);
    EXPECT_EQ(0, Purge("D:\\a", 0, 1, false, true));
    PutFiles(9000); // and the end is missing
    fake::Watch("ReadBytes", [](const std::string& file) { fake::At(file)->Data.Resize(8200); });
    EXPECT_EQ(-19, Run(true));
    EXPECT_EQ(8200, job.DifferentAt);
    PutFiles(1);
    fake::FailNth(2, Fault::ReadFault, "ReadBytes");
    EXPECT_EQ(-19, Run(true));
    EXPECT_TRUE(job.DifferentAt == 0 && job.DifferentPath == stream &&
                job.Trouble == Fault::ReadFault);
}

TEST_F(VerifyAndNames, NamesMeanNothingAndTakeNobodysPlace) {
    for (const std::string name : {"letter to Ω日😀.txt", "x", ".a"}) {
        SCOPED_TRACE(name);
        SetUp();
        const std::string file = "C:\\f\\" + name;
        fake::PutFile(file, "M");
        fake::PutFile(file + ":s", "S");
        std::string neighbours;
        for (const char c : std::string("abcdefghijklmqrstvwyz0123456789"))
            fake::PutFile(neighbours = std::string("C:\\f\\") + c, "kept");
        const auto before = fake::FilesBelow("C:\\f");
        fake::FailNth(1, Fault::AccessDenied, "FlushFolder"); // as Windows may
        EXPECT_EQ(0, Purge(file, 0, 1, true));
        EXPECT_TRUE(job.Reach == 0 && job.LeftAs.empty());
        std::vector<std::string> names{file};
        std::string done;
        for (const fake::Event& event : fake::journal) {
            if (event.What.starts_with("rename "))
                names.push_back(event.What.substr(7));
            if (event.What != "write" &&
                (event.Path == names.back() || event.Path == names.rbegin()[names.size() > 1]))
                done += event.What.substr(0, event.What.find(' ')) + " ";
        }
        EXPECT_THAT(done, EndsWith("rename dates rename rename remove "));
        ASSERT_EQ(4u, names.size());
        for (std::size_t i = 1; i < 4; ++i) {
            const std::string made = names[i].substr(5);
            EXPECT_EQ(name[0] == 'x' ? 9u : name[0] == '.' ? 2u : 18u, made.size());
            EXPECT_EQ(std::string::npos, made.find('.'));
            if (i == 1 || made.size() > 2) { // two may be alike by chance
                EXPECT_EQ(i == 1, made.find_first_not_of(made[0]) == made.npos) << made;
            }
        }
        auto after = before;
        std::erase(after, file);
        EXPECT_EQ(after, fake::FilesBelow("C:\\f"));
        EXPECT_EQ("kept", fake::ContentOf(neighbours));
    }
    // The other names of the data keep their dates, and a file that is kept all of it.
    fake::PutFile(path, "M");
    fake::PutName("C:\\g\\other", path);
    fake::journal.clear();
    EXPECT_EQ(0, Run(false));
    EXPECT_THAT(fake::JournalText(), Not(HasSubstr("rename")));
    EXPECT_EQ(0, Run(true));
    EXPECT_THAT(fake::JournalText(), Not(HasSubstr("dates")));
    EXPECT_EQ(nullptr, fake::At(path));
}

TEST_F(VerifyAndNames, AnyCallMayFail) {
    // The outcome of clearing attributes, and of the last restoring of the length do not count; nor
    // does overwriting the name, which is told; everything else does.
    const std::string mayPass = "ReadAttributes WriteAttributes ReadClusterFacts ReadVolumeFacts "
                                "HasClusters OpenFile ReadOpenFileFacts ChangeLength CloseFile";
    const std::set<std::string> ofTheName{"RenameNew", "WriteDates", "FlushFolder",
                                          "ReadFileLength"};
    const std::map<std::string, int> codes = {{"AuxiliaryChangeFileSize", -2},
                                              {"ListStreams", -2},
                                              {"WriteBytes", -3},
                                              {"RemoveFile", -4},
                                              {"FlushBytes", -7},
                                              {"ReadBytes", -19}};
    for (int options = 0; options < 16; ++options) {
        verify = (options & 1) != 0, rename = (options & 2) != 0;
        const bool slackOnly = (options & 4) != 0, deletes = (options & 8) != 0;
        std::vector<std::vector<fake::Run>> all;
        int n = 0;
        do {
            SetUp();
            fake::PutFile(path, std::string(600, 'M'),
                          platform::AttributeHidden | platform::AttributeReadOnly);
            fake::PutFile(stream, std::string(9000, 'S'));
            fake::PutFile("C:\\f\\neighbour", "kept");
            fake::FailNth(n, Fault::WriteFault);
            const int code = Run(deletes, slackOnly);
            const std::string call = fake::FailedCall();
            SCOPED_TRACE(call + " as call " + std::to_string(n) + ", " + std::to_string(options));
            const std::vector done{Written(path), Written(stream)};
            all = n == 0 ? done : all;
            EXPECT_EQ("kept", fake::ContentOf("C:\\f\\neighbour"));
            auto files = fake::FilesBelow("C:\\f");
            std::erase(files, "C:\\f\\neighbour");
            EXPECT_EQ(files.empty(), code >= 0 && deletes && !slackOnly);
            const bool untold = mayPass.find(call) != std::string::npos;
            EXPECT_TRUE(code < 0 || (untold && done == all) || call == "HasClusters" ||
                        ofTheName.contains(call));
            if (code >= 0) {
                EXPECT_EQ(verify, job.HasReadBack == ReadBack::PastCache);
                EXPECT_EQ(ofTheName.contains(call), (job.Reach & ReachName) != 0);
            }
            if (files.empty())
                continue;
            ASSERT_EQ(std::vector<std::string>{job.LeftAs.empty() ? path : job.LeftAs}, files);
            EXPECT_EQ(job.LeftAs.empty(), call != "RemoveFile" || !rename) << job.LeftAs;
            const fake::Node& left = *fake::At(files[0]);
            if (code < 0 || !untold) {
                EXPECT_EQ(600u, left.Data.Length());
                EXPECT_EQ(9000u, left.Children[0]->Data.Length());
            }
            EXPECT_TRUE(!slackOnly || left.Data.Read(0, 600) == std::string(600, 'M'));
            EXPECT_TRUE(!codes.contains(call) || codes.at(call) == code) << code;
        } while (n++ == 0 || fake::HasFailed());
        EXPECT_GT(n, 25);
    }
    // Somebody adds to the file after it got its new name.
    verify = rename = true;
    PutFiles(10);
    int added = 0;
    fake::OnCall("RemoveFile", [&](const std::string& file) {
        if (added++ == 0)
            fake::At(file)->Data.Resize(5000);
        return added == 1 ? Fault::SharingViolation : Fault::None;
    });
    EXPECT_EQ(0, Run(true));
    EXPECT_TRUE(added == 2 && fake::FilesBelow("C:\\f").empty()) << added;
}
