// The file-specification dialog: its four kinds, their checks, and the number of matching files.
#include "selection/frmFileSpecification.h"

#include "platform/System.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/StrProc.h"
#include "ui/Interface.h"

FrmFileSpecification frmFileSpecification;

namespace {

FrmFileSpecification& frm = frmFileSpecification;

enum Kind : std::size_t { SingleFile = 0, AllFiles = 1, WithExtension = 2, OfForm = 3 };

/// The time to read the names before the dialog opens. Each key matches them again.
constexpr std::uint64_t intMillisecondsToRead = 300;
constexpr std::size_t lngMaxNames = 20000;

/// The extension as typed, without blanks around it and without a leading "*." or ".".
std::string TypedExtension() {
    std::string extension = Trimmed(frm.txbExtension.Text);
    if (extension.rfind("*.", 0) == 0)
        extension.erase(0, 2);
    else if (extension.rfind('.', 0) == 0)
        extension.erase(0, 1);
    return Trimmed(extension);
}

bool HoldsForbiddenCharacter(const std::string& text) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < 32)
            return true;
    }
    return text.find_first_of("\\/:<>|\"") != std::string::npos;
}

std::size_t ChosenKind() {
    for (std::size_t kind = 0; kind < 4; ++kind) {
        if (frm.optSpecification[kind].Value)
            return kind;
    }
    return SingleFile;
}

ui::TextBox* BoxOf(std::size_t kind) {
    switch (kind) {
    case SingleFile:
        return &frm.txbSingleFile;
    case WithExtension:
        return &frm.txbExtension;
    case OfForm:
        return &frm.txbForm;
    default:
        return nullptr;
    }
}

/// Moves the focus to the text box of a choice and selects its text, so that typing replaces it. A
/// choice without a text box gets the focus itself.
void FocusOn(std::size_t kind) {
    if (ui::TextBox* box = BoxOf(kind)) {
        box->SelStart = 0;
        box->SelLength = box->Text.size();
        ui::SetFocus(*box);
    } else {
        ui::SetFocus(frm.optSpecification[kind]);
    }
}

/// The name as typed, including blanks, because a file name may begin with one. If a whole path of
/// a file in the folder was typed, its name. "" if only blanks were typed. No drive is asked while
/// somebody types: the text of a path then decides, unless `blnFinal`.
std::string TypedName(bool blnFinal) {
    const std::string text = frm.txbSingleFile.Text;
    const std::string folder = Trimmed(FolderPartOf(text));
    const auto isSpelledSo = [&] {
        return platform::LowerCase(FolderWithBackslash(platform::FullPath(folder))) ==
               platform::LowerCase(frm.strFolder);
    };
    if (!folder.empty() && (blnFinal ? IsSameFolder(folder, frm.strFolder) : isSpelledSo()))
        return FileNameOf(text);
    return Trimmed(text).empty() ? "" : text;
}

/// The specification in the fields; `strComplaint` tells why it cannot be accepted.
std::string SpecificationInFields(std::string& strComplaint, bool blnFinal = false) {
    strComplaint.clear();
    std::string filespec;
    switch (ChosenKind()) {
    case SingleFile:
        filespec = TypedName(blnFinal);
        if (filespec.empty())
            strComplaint = "Type the name of the file, or choose it.";
        else if (IsWildcard(filespec))
            strComplaint = "The name of a single file must not contain \"?\" or \"*\".";
        break;
    case AllFiles:
        return "*.*";
    case WithExtension: {
        const std::string extension = TypedExtension();
        filespec = "*." + extension;
        if (extension.empty())
            strComplaint = "Type the extension.";
        else if (extension.find('.') != std::string::npos)
            strComplaint = "Extension must not contain \".\"";
        break;
    }
    default:
        filespec = frm.txbForm.Text;
        if (Trimmed(filespec).empty())
            strComplaint = "Type the form of the file names, as in \"report*.doc\".";
        break;
    }
    if (strComplaint.empty() && HoldsForbiddenCharacter(filespec))
        strComplaint = "A file name cannot contain any of the characters \\ / : < > | \".";
    return filespec;
}

void ShowMatches() {
    std::string complaint;
    const std::string filespec = SpecificationInFields(complaint);
    if (!frm.blnFolderRead) {
        frm.lblMatches.Caption = "The folder cannot be read.";
        return;
    }
    if (!complaint.empty()) {
        frm.lblMatches.Caption.clear();
        return;
    }
    std::int64_t count = 0;
    std::size_t otherCase = 0;
    for (const std::string& name : frm.strNames) {
        const NameMatch match = MatchName(name, filespec);
        count += match == NameMatch::Exact ? 1 : 0;
        otherCase += match == NameMatch::OtherCase ? 1u : 0u;
    }
    if (count == 0 && frm.blnOtherCaseIsMeant && otherCase == 1)
        count = 1;
    if (!frm.blnAllNamesRead)
        frm.lblMatches.Caption =
            "At least " + GroupedDigits(count) + " of the files in this folder match.";
    else if (count == 1)
        frm.lblMatches.Caption = "One file in this folder matches.";
    else
        frm.lblMatches.Caption = NumberInWords(count) + " files in this folder match.";
}

void ReadNames() {
    frm.strNames.clear();
    frm.blnAllNamesRead = true;
    const std::uint64_t start = platform::TickCount();
    auto fault = platform::Fault::None;
    const bool blnSearched = RunSearch("Reading " + frm.strFolder, [&] {
        fault = SearchFolder(frm.strFolder, [start](const platform::FolderEntry& entry) {
            if (frm.strNames.size() >= lngMaxNames ||
                platform::TickCount() - start > intMillisecondsToRead) {
                frm.blnAllNamesRead = false;
                return false;
            }
            if (!entry.IsFolder)
                frm.strNames.push_back(entry.Name);
            return true;
        });
        // Asked now: while the user types, there is no time for a drive.
        frm.blnOtherCaseIsMeant = !platform::Failed(fault) && OtherCaseIsMeant(frm.strFolder, 1);
    });
    frm.blnAllNamesRead = frm.blnAllNamesRead && blnSearched;
    frm.blnFolderRead = !platform::Failed(fault);
}

/// Writes a specification into the fields.
void PutIntoFields(const std::string& filespec) {
    std::size_t kind = SingleFile;
    const std::string extension = ExtensionOf(filespec);
    if (filespec == "*.*")
        kind = AllFiles;
    else if (filespec == "*." + extension && !extension.empty() && !IsWildcard(extension))
        kind = WithExtension;
    else if (IsWildcard(filespec))
        kind = OfForm;
    frm.txbSingleFile.Text = kind == SingleFile ? filespec : "";
    frm.txbExtension.Text = kind == WithExtension ? extension : "";
    frm.txbForm.Text = kind == OfForm ? filespec : "";
    ui::SelectOption(frm.optSpecification, kind);
}

void optSpecification_Click() {
    ShowMatches();
    FocusOn(ChosenKind());
}

/// Typing into a box selects the choice to which the box belongs.
void TextBox_Change(std::size_t kind) {
    if (!BoxOf(kind)->Text.empty())
        ui::SelectOption(frm.optSpecification, kind);
    ShowMatches();
}

void cmdChooseFile_Click() {
    const auto paths = ui::ChoosePaths({ui::Choose::File, "Choose the file", frm.strFolder});
    if (paths.empty())
        return;
    const std::string& path = paths.front();
    if (!IsSameFolder(FolderPartOf(path), frm.strFolder)) {
        ui::Complain("The file must be in the folder " + frm.strFolder + ".");
        return;
    }
    frm.txbSingleFile.Text = FileNameOf(path);
    ui::SelectOption(frm.optSpecification, SingleFile);
    ShowMatches();
    ui::SetFocus(frm.cmdOK);
}

void cmdOK_Click() {
    static bool blnAsking = false; // the buttons work while a slow drive answers
    if (blnAsking)
        return;
    blnAsking = true;
    std::string complaint;
    const std::string filespec = SpecificationInFields(complaint, true);
    blnAsking = false;
    if (!frm.Visible) // cancelled meanwhile
        return;
    if (!complaint.empty()) {
        ui::Complain(complaint);
        FocusOn(ChosenKind());
        return;
    }
    frm.strResult = filespec;
    ui::Hide(frm);
}

void cmdCancel_Click() {
    frm.strResult.clear();
    ui::Hide(frm);
}

void Form_Activate() {
    ShowMatches();
    FocusOn(ChosenKind());
}

} // namespace

void LoadFileSpecificationForm() {
    frm.Name = "frmFileSpecification";
    frm.Caption = "Specify files";
    frm.Width = 7200;
    frm.Height = 3765;

    ui::OptionButton(&option)[4] = frm.optSpecification;
    ui::PutWords(
        {{&option[SingleFile], "A single file:", 'S', optSpecification_Click},
         {&option[AllFiles], "All files", 'A', optSpecification_Click},
         {&option[WithExtension], "All files with the extension:", 'e', optSpecification_Click},
         {&option[OfForm], "All files of the form:", 'f', optSpecification_Click},
         {&frm.cmdChooseFile, "Choose ...", 'C', cmdChooseFile_Click},
         {&frm.lblHint, "(? stands for any one character, * for any number of them.)"},
         {&frm.cmdOK, "OK", 0, cmdOK_Click},
         {&frm.cmdCancel, "Cancel", 0, cmdCancel_Click}});
    frm.cmdOK.Default = frm.cmdCancel.Cancel = true;
    frm.lblFolder.Ellipsis = true;

    ui::Bind(frm, {
                      {&frm.lblFolder, "lblFolder", 120, 120, 6960, 285},
                      {&frm.optSpecification[0], "optSpecification(0)", 120, 525, 2640, 330},
                      {&frm.txbSingleFile, "txbSingleFile", 2880, 540, 2820, 300},
                      {&frm.cmdChooseFile, "cmdChooseFile", 5820, 503, 1260, 375},
                      {&frm.optSpecification[1], "optSpecification(1)", 120, 975, 2640, 330},
                      {&frm.optSpecification[2], "optSpecification(2)", 120, 1425, 2640, 330},
                      {&frm.txbExtension, "txbExtension", 2880, 1440, 1260, 300},
                      {&frm.optSpecification[3], "optSpecification(3)", 120, 1875, 2640, 330},
                      {&frm.txbForm, "txbForm", 2880, 1890, 2820, 300},
                      {&frm.lblHint, "lblHint", 405, 2265, 6675, 285},
                      {&frm.lblMatches, "lblMatches", 120, 2715, 6960, 285},
                      {&frm.cmdOK, "cmdOK", 3960, 3240, 1500, 375},
                      {&frm.cmdCancel, "cmdCancel", 5580, 3240, 1500, 375},
                  });

    frm.Activate = Form_Activate;
    frm.Close = cmdCancel_Click;
    frm.txbSingleFile.Change = [] { TextBox_Change(SingleFile); };
    frm.txbExtension.Change = [] { TextBox_Change(WithExtension); };
    frm.txbForm.Change = [] { TextBox_Change(OfForm); };
}

std::string AskFileSpecification(const std::string& strFolder) {
    frm.strFolder = FolderWithBackslash(strFolder);
    frm.lblFolder.Caption = "Which files in " + frm.strFolder + "?";
    ReadNames();
    PutIntoFields(strFilespec);
    frm.strResult.clear();
    ui::ShowModal(frm);
    return frm.strResult;
}
