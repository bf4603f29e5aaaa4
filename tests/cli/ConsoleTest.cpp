// The console program over the fakes: whole command lines, what they ask, tell and come to.
#include "ui/console/Console.h"
#include "cli/CommandLine.h"
#include "cli/Questions.h"
#include "cli/RunCommand.h"
#include "fakes/FakePlatform.h"
#include "report/ReportText.h"
#include "report/run/Run.h"
#include "report/run/RunRecords.h"
#include "report/run/RunReport.h"
#include "support/StrProc.h"

#include <deque>
#include <gtest/gtest.h>

using Arguments = std::vector<std::string>;
using platform::Fault;

static struct {
    std::string Out, Error, Input;
    std::deque<std::string> Typed;
    bool IsThere = false, OutGone = false;
    int Interrupts = 0;
    std::uint64_t Clock = 1;
} terminal;

namespace ui::console {
int Interrupts() {
    return terminal.Interrupts;
}
bool IsTerminal(Stream stream) {
    return terminal.IsThere && stream != Stream::Out;
}
void Write(Stream stream, const std::string& text) {
    (stream == Stream::Out ? terminal.Out : terminal.Error) += text;
    if (stream == Stream::Out && terminal.OutGone && terminal.Interrupts == 0)
        terminal.Interrupts = 1;
}
bool ReadLine(std::string& line) {
    if (terminal.Typed.empty())
        return false;
    line = terminal.Typed.front();
    terminal.Typed.pop_front();
    return true;
}
bool ReadInput(std::string& text, std::size_t most) {
    text = terminal.Input;
    return text.size() <= most;
}
std::uint64_t Clock() {
    return terminal.Clock += 30; // every yield pumps
}
void Sleep(int milliseconds) {
    terminal.Clock += static_cast<std::uint64_t>(milliseconds);
    fake::Advance(milliseconds);
}
} // namespace ui::console
void ui::RunSteps(Effort, const std::function<bool()>& step, const std::function<bool()>& poll) {
    for (bool goesOn = true; goesOn && step(); goesOn = !poll || poll())
        DoEvents();
}

namespace {

constexpr std::uint64_t MiB = 1048576;
const std::string strSetup = "1.0\r\n0\r\n0\r\nC:\\d\\\r\nC:\\d\\\r\n0\r\n2\r\n1\r\n1\r\n0\r\n0\r\n"
                             "0\r\n0\r\n0\r\n";

struct ConsoleTest : testing::Test {
    void SetUp() override { Begin(); }
    /// A fresh machine: a folder C:\d, and a small drive D:.
    static void Begin() {
        fake::Reset();
        terminal = {};
        for (const char* file : {"nullwright.exe", "nwaux6.dll"})
            fake::PutFile(fake::programFolder + "\\" + file, "MZ");
        fake::PutFile(fake::programFolder + "\\nullwright.dat",
                      "2\tNullwright\n23\tNullwright\n310\tx\n320\tx\n321\tx\n330\thttps://x/"
                      "\n331\thttps://x/\n");
        for (const char* name : {"a.txt", "b.txt", "lib.dll", "sub\\c.txt"})
            fake::PutFile(std::string("C:\\d\\") + name, "secret");
        fake::AddDrive('D', 60 * MiB);
        fake::PutFile("D:\\docs\\letter.txt", "somebody's");
        fake::PutFile("D:\\top.txt", "top");
        fake::journal.clear();
    }
    static int Run(const Arguments& arguments) {
        ClearReportText();
        ui::console::PrintRest(); // nothing of it is printed yet
        currentRun = {};
        ForgetRecords();
        terminal.Out.clear();
        terminal.Error.clear();
        const int code = RunCommand(arguments);
        EXPECT_EQ(0, fake::OpenHandles());
        return code;
    }
    static bool Told(const std::string& text) {
        return (terminal.Out + terminal.Error).find(text) != std::string::npos;
    }
    static std::string Left(const std::string& folder = "C:\\d") {
        std::string text;
        for (const std::string& path : fake::FilesBelow(folder))
            text += path.substr(folder.size() + 1) + " ";
        return text;
    }
};

TEST_F(ConsoleTest, WrongUsageTouchesNothing) {
    const std::string notUtf8 = "C:\\d\\\xFF";
    const std::pair<Arguments, const char*> cases[] = {
        {{}, "No command."},
        {{"wipe", "C:\\d"}, "There is no command wipe."},
        {{"purge", "-y"}, "purge PATH..."},
        {{"purge", "C:\\d"}, "--yes"},
        {{"purge", "C:\\d", "-y", "--frobnicate"}, "no option --frobnicate"},
        {{"purge", "C:\\d", "-y", "--exclude", "x"}, "--exclude is no option of purge"},
        {{"list", "C:\\d", "--yes"}, "--yes is no option of list"},
        {{"purge", "C:\\d", "-y", "--passes"}, "--passes needs a value"},
        {{"purge", "C:\\d", "-y", "-n", "10"}, "1 to 9"},
        {{"purge", "C:\\d", "-y", "--type=patterns", "-n", "8"}, "1 to 7"},
        {{"purge", "C:\\d", "-y", "--type", "zeros"}, "not zeros"},
        {{"purge", "C:\\d", "-y", "--keep=1"}, "--keep takes no value"},
        {{"purge", "C:\\d", "-y", "--files", "x\\*.*"}, "without a folder"},
        {{"speed", "D:", "--verify"}, "--verify is no option of speed"},
        {{"purge", "C:\\d", "-y", "-o", "C:\\none\\r.txt"}, "no folder for the report"},
        {{"purge", "C:\\d", "C:\\none", "-y"}, "C:\\none was not found"},
        {{"purge", "C:\\d", "-y", "--", "--keep"}, "--keep was not found"},
        {{"purge", "\\\\server\\share", "-y"}, "not on a drive with a letter"},
        {{"purge", "-y", "--from", "C:\\none"}, "cannot be read"},
        {{"purge", "-y", "--from", "-"}, "not UTF-8"},
        {{"purge", "-y", "--from", "C:\\utf16"}, "control characters"}, // each letter a path
        {{"purge", "-y", "--from", "C:\\empty"}, "names no path"},
        {{"purge", "D:", "-y"}, "\"D:\" is no path"}, // it would be some current folder
        {{"purge", "C:\\d\\*.txt", "C:\\d\\lib.dll", "-y"}, "a pattern, which stands alone"},
        {{"run", "C:\\none.nws", "-y", "--files", "*.*"}, "not found"},
        {{"run", "C:\\d\\a.txt", "-y"}, "--files"},
        {{"run", "C:\\d\\a.txt", "-y", "-f", "*.*"}, "Error when attempting to load setup"},
        {{"free-space", "Documents", "-y"}, "no drive"},
        {{"free-space", "Q:", "-y"}, "There is no drive Q:"},
        {{"free-space", "C:", "-y"}, "drive of Windows: it stays; with --system"},
        {{"disk", "D:", "-y", "-x", "doc"}, "no top-level folder doc to"},
        {{"disk", "D:", "-y", "-x", "docs\\old"}, "top-level folder"},
        {{"disk", "D:", "-y", "-x", ".."}, "no top-level folder .. to"},
        {{"purge", "C:\\d", "-y", "-o", "--keep"}, "-o needs a value"}, // and --keep is not lost
        {{"purge", "C:\\d", "-y", "-o", "C:\\r\" --keep"}, "no \\ may stand at the end"},
        {{"purge", "C:\\d", "-y", "-o", "C:\\d\\sub"}, "or it is no file"},
        {{"purge", "C:\\d\\a.txt:s", "-y"}, "a part of one"},
        {{"purge", "-y", "--from", "C:\\pattern"}, "or patterns"},
        {{"disk", "D:"}, "--yes"},
        {{"help", "wipe"}, "There is no command wipe."}};
    terminal.Input = notUtf8;
    fake::PutFile("C:\\utf16", std::string("C\0:\0\\\0\r\0\n\0", 10));
    fake::PutFile("C:\\empty", "\r\n\r\n");
    fake::PutFile("C:\\pattern", "C:\\d\\?.txt\r\n"); // what PowerShell makes of an umlaut
    for (const auto& [arguments, part] : cases) {
        EXPECT_EQ(2, Run(arguments)) << part;
        EXPECT_TRUE(Told(part)) << part << ": " << terminal.Error;
        EXPECT_TRUE(terminal.Out.empty()) << part << ": " << terminal.Out;
        EXPECT_TRUE(fake::journal.empty()) << part << ": " << fake::JournalText();
    }
}

TEST_F(ConsoleTest, PurgesAndNamesWhatFailed) {
    EXPECT_EQ(0, Run({"list", "C:\\d", "-r"}));
    EXPECT_TRUE(Told("C:\\d\\sub\\c.txt (6 bytes)") && Told("Number of files: 4")) << terminal.Out;
    EXPECT_TRUE(fake::journal.empty());

    fake::FailAlways("OpenFile", "b.txt", Fault::AccessDenied);
    EXPECT_EQ(1, Run({"purge", "c:\\d", "--yes", "-r", "-n", "1"}));
    EXPECT_EQ("b.txt lib.dll ", Left());
    EXPECT_TRUE(Told("C:\\d\\a.txt (6 bytes) purged\r\nC:\\d\\b.txt (6 bytes) purging: unable") &&
                Told("C:\\d\\lib.dll: dll files are not purged."))
        << terminal.Out;
    EXPECT_TRUE(terminal.Out.ends_with("\r\n") && terminal.Error.empty()) << terminal.Error;

    Begin(); // a line that changes while the file is at work is told when it is final
    fake::PutBigFile("C:\\d\\big", 65 * MiB);
    EXPECT_EQ(0, Run({"purge", "C:\\d\\big", "-y", "-n", "2"}));
    EXPECT_TRUE(Told("\\big (68,157,440 bytes) purged\r\n") && !Told("purging")) << terminal.Out;

    Begin();
    EXPECT_EQ(0, Run({"purge", "C:\\d\\a.txt", "-y", "--keep"}));
    EXPECT_EQ("a.txt b.txt lib.dll sub\\c.txt ", Left());
    EXPECT_NE("secret", fake::ContentOf("C:\\d\\a.txt"));

    Begin(); // what else is asked for, by options and by a setup
    EXPECT_EQ(0, Run({"purge", "C:\\d\\a.txt", "-y", "-n", "1", "--verify", "--names"}));
    EXPECT_TRUE(Told("a.txt (6 bytes) purged and verified\r\n")) << terminal.Out;
    EXPECT_NE(std::string::npos, fake::JournalText().find("rename C:\\d")) << fake::JournalText();
    fake::FailAlways("RenameNew", "b.txt", Fault::AccessDenied); // purged, but its name was to go
    EXPECT_EQ(1, Run({"purge", "C:\\d\\b.txt", "-y", "-n", "1", "--names"})) << terminal.Out;
    fake::PutFile("C:\\d\\b.txt", "secret");
    fake::PutFile("C:\\s.nws", strSetup + "verify=1\r\n");
    EXPECT_EQ(0, Run({"run", "C:\\s.nws", "-y", "-f", "b.*"}));
    EXPECT_TRUE(Told("b.txt (6 bytes) slack area purged and verified\r\n")) << terminal.Out;

    // Files by a file specification, beside a chosen one; more than the window's report holds.
    Begin();
    for (int i = 0; i < 600; ++i)
        fake::PutFile("C:\\d\\" + std::string(100, 'x') + std::to_string(i) + ".txt");
    EXPECT_EQ(0, Run({"purge", "C:\\d", "C:\\d\\lib.dll", "-y", "-n", "1", "-f", "*.txt",
                      "--sensitive"}));
    EXPECT_EQ("sub\\c.txt ", Left());
    EXPECT_TRUE(Told("x599.txt (1 bytes) purged"));

    Begin(); // several items, from the command line and from a file; each file once
    terminal.Input = "\xEF\xBB\xBF"
                     "C:\\d\\a.txt\r\nC:\\d\\sub\r\n";
    EXPECT_EQ(0, Run({"purge", "-y", "-n", "1", "C:\\d\\a.txt", "C:\\d\\lib.dll", "--from=-",
                      "--sensitive", "-o", "C:\\report.txt"}));
    EXPECT_EQ("b.txt ", Left());
    EXPECT_TRUE(Told("Purging 3 chosen items (2 files, 1 folder)")) << terminal.Out;
    EXPECT_NE(std::string::npos, fake::ContentOf("C:\\report.txt").find("a.txt (6 bytes) purged"));
    fake::FailAlways("OpenFile", "b.txt", Fault::AccessDenied);
    EXPECT_EQ(1, Run({"purge", "-y", "C:\\d", "-q"}));
    EXPECT_TRUE(terminal.Out.empty() && Told("C:\\d\\b.txt: unable to open")) << terminal.Error;
    EXPECT_EQ(1, Run({"purge", "-y", "C:\\d", "--json", "-o", "C:\\r.json"}));
    EXPECT_TRUE(terminal.Out.starts_with(R"({"path":"C:\\d\\b.txt","bytes":6,"result":"failed")"));
    EXPECT_EQ(2, std::count(terminal.Out.begin(), terminal.Out.end(), '\n')) << terminal.Out;
    EXPECT_EQ(terminal.Out, fake::ContentOf("C:\\r.json"));
    // Nothing to do is a run, too: the report must not be that of the last one.
    EXPECT_EQ(0, Run({"purge", "C:\\d", "-f", "*.zzz", "-y", "-n", "2", "-j", "-o", "C:\\r.json"}));
    EXPECT_EQ(terminal.Out, fake::ContentOf("C:\\r.json"));
    EXPECT_TRUE(Told(R"("purged":0,"files":0,"failed":0)"));
}

// What the guards leave, an option sets free; other names and links stay whatever is said.
TEST_F(ConsoleTest, AnswersThatDestroyLess) {
    fake::PutName("C:\\other.txt", "C:\\d\\a.txt");
    fake::PutFile("C:\\d\\hidden.sys2", "x", platform::AttributeSystem);
    fake::PutFile("C:\\d\\fixed", "x", platform::AttributeReadOnly);
    EXPECT_EQ(1, Run({"purge", "C:\\d", "-y", "-n", "1"}));
    EXPECT_EQ("a.txt lib.dll sub\\c.txt hidden.sys2 fixed ", Left());
    EXPECT_EQ(1, Run({"purge", "C:\\d", "-y", "-n", "1", "--read-only", "--system", "--sensitive",
                      "-r", "--remove-empty-folders"}));
    EXPECT_EQ("a.txt ", Left());
    EXPECT_FALSE(platform::FolderExists("C:\\d\\sub"));
    EXPECT_EQ(1, Run({"purge", fake::programFolder, "-y"}));
    EXPECT_TRUE(Told("never purged")) << terminal.Error;
    EXPECT_TRUE(platform::FileExists(fake::programFolder + "\\nwaux6.dll"));
}

TEST_F(ConsoleTest, AsksAtATerminal) {
    terminal.IsThere = true;
    terminal.Typed = {"what?", "n"};
    EXPECT_EQ(3, Run({"purge", "C:\\d\\a.txt"}));
    EXPECT_TRUE(Told("want to purge the file C:\\d\\a.txt") && Told("1 Yes, 2 No (Enter: Yes): "));
    EXPECT_EQ(3, Run({"purge", "C:\\d\\a.txt"})); // the end of the input is no consent
    EXPECT_EQ("a.txt b.txt lib.dll sub\\c.txt ", Left());
    // Enter takes the default; the form is asked by its buttons; Cancel ends the run.
    terminal.Typed = {"", "don't", "3"};
    EXPECT_EQ(3, Run({"purge", "C:\\d", "-n", "1"}));
    EXPECT_TRUE(Told("anti-virus")) << terminal.Error;
    // Enter to everything: also to whether folders are to be kept, of which none is named.
    terminal.Typed.assign(20, "");
    EXPECT_EQ(2, Run({"disk", "D:", "-n", "1"}));
    EXPECT_TRUE(Told("each with --exclude")) << terminal.Error;
    EXPECT_EQ("docs\\letter.txt top.txt ", Left("D:"));
}

TEST_F(ConsoleTest, SetupsAndStops) {
    fake::PutFile("C:\\s.nws", strSetup);
    EXPECT_EQ(0, Run({"run", "C:\\s.nws", "-y", "--files", "*.txt"}));
    EXPECT_TRUE(Told("Purging the slack area of files C:\\d\\*.txt \r\nusing random bytes twice"));
    EXPECT_EQ("secret", fake::ContentOf("C:\\d\\a.txt"));

    // Ctrl+C stops after the pass; who does not read the output stops it, too.
    fake::Watch("RemoveFile", [](const std::string&) { terminal.Interrupts = 1; });
    EXPECT_EQ(3, Run({"purge", "C:\\d", "-y", "-n", "1"}));
    EXPECT_EQ("b.txt lib.dll sub\\c.txt ", Left());
    EXPECT_TRUE(Told("Purge operation was stopped."));
    Begin();
    terminal.OutGone = true;
    for (int i = 0; i < 100; ++i)
        fake::PutFile("C:\\d\\" + std::to_string(i));
    EXPECT_EQ(3, Run({"purge", "C:\\d", "-y", "-n", "1"}));
    EXPECT_LT(50u, fake::FilesBelow("C:\\d").size());

    Begin(); // the second Ctrl+C does not wait for the end of a pass
    fake::PutBigFile("D:\\big", 40 * MiB);
    fake::Watch("WriteBytes",
                [](const std::string& path) { terminal.Interrupts += path == "D:\\big"; });
    EXPECT_EQ(3, Run({"purge", "D:\\big", "-y", "-n", "1"}));
    ASSERT_NE(nullptr, fake::At("D:\\big"));
    EXPECT_EQ(40 * MiB, fake::At("D:\\big")->Data.Length());
    EXPECT_EQ("x", fake::At("D:\\big")->Data.Read(39 * MiB, 1));
}

TEST_F(ConsoleTest, Drives) {
    EXPECT_EQ(0, Run({"speed", "d:"})) << terminal.Error;
    EXPECT_TRUE(Told("The purge speed is approximately")) << terminal.Out;
    EXPECT_EQ(0, Run({"free-space", "D:", "-y", "-n", "1"})) << terminal.Error;
    EXPECT_TRUE(Told("The free space has been purged.")) << terminal.Out;
    EXPECT_EQ(terminal.Out.find("has been purged"), terminal.Out.rfind("has been purged"));
    EXPECT_EQ("docs\\letter.txt top.txt ", Left("D:"));
    EXPECT_EQ(0,
              Run({"disk", "D:", "-y", "-n", "1", "-x", "DOCS", "--verify", "-o", "C:\\r.json"}));
    EXPECT_NE(std::string::npos, fake::ContentOf("C:\\r.json").find("\"verified\":true"));
    EXPECT_EQ(std::string::npos, fake::JournalText().find("rename D:\\top"));
    EXPECT_EQ("docs\\letter.txt ", Left("D:"));
    EXPECT_TRUE(Told("The disk has been purged (except for excluded files).")) << terminal.Out;

    fake::PutFile("D:\\top.txt", "top");
    fake::PutFile("D:\\WINDOWS\\system.ini", "x");
    EXPECT_EQ(2, Run({"disk", "D:", "-y", "-n", "1"})) << terminal.Out;
    EXPECT_EQ(0, Run({"disk", "D:", "-y", "-n", "1", "--system", "--exclude=."}));
    EXPECT_EQ("top.txt ", Left("D:"));

    for (int interrupts : {1, 2}) {
        Begin();
        fake::Watch("WriteBytes", [=](const std::string&) { terminal.Interrupts = interrupts; });
        EXPECT_EQ(3, Run({"free-space", "D:", "-y", "-n", "1"})) << terminal.Out;
        EXPECT_EQ("docs\\letter.txt top.txt ", Left("D:"));
        EXPECT_EQ(2u, fake::drives['D'].Root->Children.size());
    }
    // Ctrl+C once, before the work and between its steps: with nobody there it is not forgotten.
    const std::pair<const char*, Arguments> early[] = {
        {"ReadFolderIdentity", {"purge", "C:\\d", "-r", "-y", "-n", "1"}},
        {"ReadDriveSpace", {"free-space", "D:", "-y", "-n", "1"}},
        {"WriteBytes", {"disk", "D:", "-y", "-n", "1"}}}; // its test of the speed
    for (const auto& [call, arguments] : early) {
        Begin();
        fake::Watch(call, [](const std::string&) { terminal.Interrupts = 1; });
        EXPECT_EQ(3, Run(arguments)) << call << terminal.Out;
        EXPECT_EQ(1, terminal.Interrupts) << call;
        EXPECT_NE(std::string::npos, JsonOfRun().find("\"stopped\":true")) << call;
        EXPECT_EQ("docs\\letter.txt top.txt ", Left("D:")) << call;
        EXPECT_NE(nullptr, fake::At("C:\\d\\sub\\c.txt")) << call;
    }
    Begin();
    fake::FailNth(3, Fault::WriteFault, "WriteBytes");
    EXPECT_EQ(4, Run({"free-space", "D:", "-y"})) << terminal.Out;
}

// The table is what the help prints and what is answered; what is not in it destroys nothing.
TEST_F(ConsoleTest, Questions) {
    given = {};
    for (const Question& row : questions) {
        EXPECT_NE(std::string::npos, HelpText("questions").find(row.strMeans)) << row.strAsks;
        EXPECT_EQ(&row, QuestionOf(row.strName)) << row.strAsks;
        if (row.fill == nullptr) {
            EXPECT_EQ(row.strAnswer, AnswerOf(row.strName, false));
            EXPECT_EQ("", AnswerOf(row.strName, true));
        }
    }
    for (const Command& command : commands) // fits 80 columns
        for (const std::string& text :
             LinesOf(HelpText(command.strName) + HelpText("") + HelpText("questions")))
            EXPECT_GE(80u, text.size()) << text;
    EXPECT_EQ(0, Run({"list", "C:\\d", "-q"}));
    EXPECT_EQ(ui::AnswerNo, ui::MsgBox("Destroy all?", ui::Buttons::YesNo, ui::Icon::Question, ""));
    EXPECT_EQ(ui::AnswerCancel,
              ui::MsgBox("Destroy all?", ui::Buttons::OKCancel, ui::Icon::Question, "Purge disk"));
}

} // namespace
