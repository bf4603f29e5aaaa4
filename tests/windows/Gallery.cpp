// A form with each kind of control, modal forms, boxes and dialogs over the real back end: to look
// at, at every resolution, and to try by hand what no test can judge. "gallery modal" and
// "gallery box" open what they say at once, for screenshots; "gallery report" writes a long text.
#include <windows.h>

#include "ui/Interface.h"

#include <string>

namespace {

struct FrmGallery : ui::Form {
    ui::Frame fraMenu, fraOptions, fraBare;
    ui::Button cmdModal, cmdBox, cmdOpen, cmdSave, cmdFolder, cmdRun, cmdStop, cmdToggle, cmdQuit;
    ui::Label lblName, lblPath, lblLong, lblBlack, lblLink, lblKeys, lblMouse;
    ui::TextBox txbName, txbReport;
    ui::ComboBox cboPasses;
    ui::ListBox lstFolders, lstOne;
    ui::CheckBox chkSlack, chkMenu;
    ui::OptionButton optType[3], optBare[2];
    ui::ProgressBar barProgress;
    ui::Timer tmrClock;
};
FrmGallery frmGallery;

struct FrmSmall : ui::Form {
    ui::Label lblText;
    ui::CheckBox chkSure;
    ui::Button cmdAccept, cmdAgain, cmdCancel;
};
FrmSmall frmSmall;
FrmSmall frmInner;

bool blnStop = false;
int intKeys = 0;

void LoadSmall(FrmSmall& form, const char* name, const char* caption, FrmSmall* inner) {
    form.Name = name;
    form.Caption = caption;
    form.Width = 5400;
    form.Height = 2100;
    form.lblText.Caption = "A modal form stands over its owner, which is disabled meanwhile.\r\n"
                           "Jack & Jill: an ampersand is an ampersand.";
    form.chkSure.Caption = "I am sure";
    form.chkSure.Mnemonic = 's';
    form.cmdAccept.Caption = "Accept";
    form.cmdAccept.Mnemonic = 'A';
    form.cmdAccept.Default = true;
    form.cmdAgain.Caption = "Another one";
    form.cmdAgain.Visible = inner != nullptr;
    form.cmdCancel.Caption = "Cancel";
    form.cmdCancel.Cancel = true;
    ui::Bind(form, {{&form.lblText, "lblText", 120, 120, 5160, 750},
                    {&form.chkSure, "chkSure", 120, 990, 5160, 300},
                    {&form.cmdAccept, "cmdAccept", 660, 1605, 1500, 375},
                    {&form.cmdAgain, "cmdAgain", 2220, 1605, 1500, 375},
                    {&form.cmdCancel, "cmdCancel", 3780, 1605, 1500, 375}});
    form.cmdAccept.Click = form.cmdCancel.Click = form.Close = [&form] { ui::Hide(form); };
    if (inner)
        form.cmdAgain.Click = [inner] { ui::ShowModal(*inner); };
}

void RunReport(int lines) {
    frmGallery.fraMenu.Enabled = false;
    blnStop = false;
    int line = 0;
    ui::RunSteps(
        ui::Effort::Long,
        [] {
            Sleep(1);
            return true;
        },
        [&line, lines] {
            for (int i = 0; i < 5; ++i)
                frmGallery.txbReport.Text += "C:\\Temp\\file " + std::to_string(line++) +
                                             ".txt: purged (\xC3\xA4\xE2\x82\xAC)\r\n";
            frmGallery.txbReport.SelStart = frmGallery.txbReport.Text.size();
            frmGallery.barProgress.Fraction = static_cast<double>(line) / lines;
            frmGallery.lblPath.Caption =
                "C:\\A folder with a long name\\and another one in it\\and yet another one\\file " +
                std::to_string(line) + ".txt";
            ui::ShowTaskbarProgress(frmGallery, frmGallery.barProgress.Fraction, false);
            return line < lines && !blnStop;
        });
    ui::ShowTaskbarProgress(frmGallery, -1, false);
    frmGallery.fraMenu.Enabled = true;
}

void AskAll() {
    const int answer = ui::MsgBox("Is this OK?\r\nNo is the default.", ui::Buttons::YesNoCancel,
                                  ui::Icon::Question, "Gallery", 2);
    frmGallery.lblLong.Caption = "The answer was " + std::to_string(answer) + ".";
}

void SetTexts() {
    FrmGallery& f = frmGallery;
    f.fraMenu.Border = f.fraBare.Border = false;
    f.fraOptions.Caption = "Type & passes";
    f.cmdModal.Caption = "Modal form";
    f.cmdModal.Mnemonic = 'M';
    f.cmdModal.Default = true;
    f.cmdBox.Caption = "Message box";
    f.cmdBox.Mnemonic = 'b';
    f.cmdOpen.Caption = "Open";
    f.cmdSave.Caption = "Save";
    f.cmdFolder.Caption = "Folder";
    f.cmdRun.Caption = "Run & report";
    f.cmdRun.Mnemonic = 'R';
    f.cmdRun.ToolTip = "Writes 2,000 lines into the report, on the I/O thread's time";
    f.cmdStop.Caption = "Stop";
    f.cmdStop.Cancel = true;
    f.cmdToggle.Caption = "Toggle";
    f.cmdQuit.Caption = "Quit";
    f.cmdQuit.Mnemonic = 'Q';
    f.lblName.Caption = "Name:";
    f.lblName.Mnemonic = 'N';
    f.lblPath.Caption = "C:\\A folder with a long name\\and another one in it\\and the file.txt";
    f.lblPath.Ellipsis = true;
    f.lblLong.Caption =
        "A long text that has to be wrapped, since it does not fit into one line of "
        "the label. C:\\One\\word\\that\\is\\too\\long\\for\\the\\line.txt";
    f.lblBlack.Caption = "White on black, and\r\ntwo lines.";
    f.lblBlack.BackColor = 0;
    f.lblBlack.ForeColor = 0xFFFFFF;
    f.lblBlack.Bold = true;
    f.lblLink.Caption = "A link to something";
    f.lblLink.Link = true;
    f.txbName.Text = "some text \xE2\x82\xAC";
    f.txbReport.MultiLine = f.txbReport.Locked = f.txbReport.FixedPitch = true;
    for (int i = 1; i <= 9; ++i)
        f.cboPasses.Items.push_back({std::to_string(i)});
    f.cboPasses.ListIndex = 5;
    f.lstFolders.MultiSelect = true;
    for (int i = 1; i <= 30; ++i) {
        f.lstFolders.Items.push_back({"Folder " + std::to_string(i) + " (3 files, 2 subfolders)"});
        f.lstOne.Items.push_back({"Drive " + std::to_string(i)});
    }
    f.lstFolders.Items[1].Selected = true;
    f.lstOne.ListIndex = 2;
    f.chkSlack.Caption = "Slack only, with a caption so long that it needs a second line";
    f.chkMenu.Caption = "Options enabled";
    f.chkMenu.Value = 1;
    for (int i = 0; i < 3; ++i) {
        f.optType[i].Caption = std::to_string(i + 1) + ". Option";
        f.optType[i].Container = &f.fraOptions;
    }
    f.optType[0].Value = true;
    f.cboPasses.Container = &f.fraOptions;
    for (ui::OptionButton& option : f.optBare) {
        option.Caption = "Other group";
        option.Container = &f.fraBare;
    }
    for (ui::Button* button : {&f.cmdModal, &f.cmdBox, &f.cmdOpen, &f.cmdSave, &f.cmdFolder,
                               &f.cmdRun, &f.cmdToggle, &f.cmdQuit}) {
        button->Container = &f.fraMenu;
        button->MouseOver = [button] { ui::SetFocus(*button); };
    }
}

void BindHandlers() {
    FrmGallery& f = frmGallery;
    f.cmdModal.Click = [] { ui::ShowModal(frmSmall); };
    f.cmdBox.Click = AskAll;
    f.cmdOpen.Click = [] {
        ui::OpenFileDialog("Open", "All files (*.*)", "*.*", "C:\\", frmGallery.lblPath.Caption);
    };
    f.cmdSave.Click = [] {
        ui::SaveFileDialog("Save", "Operation files (*.nws)", "*.nws", "C:\\",
                           frmGallery.lblPath.Caption);
    };
    f.cmdFolder.Click = [] {
        frmGallery.lblPath.Caption = ui::BrowseFolderDialog("Folder", "C:\\");
    };
    f.cmdRun.Click = [] { RunReport(2000); };
    f.cmdStop.Click = [] { blnStop = true; };
    f.cmdToggle.Click = [] { frmGallery.lstOne.Visible = !frmGallery.lstOne.Visible; };
    f.cmdQuit.Click = f.Close = [] { ui::EndProgram(); };
    f.chkMenu.Click = [] { frmGallery.fraOptions.Enabled = frmGallery.chkMenu.Value != 0; };
    f.lblLink.Click = [] { frmGallery.lblLong.Caption = "The link was followed."; };
    f.txbName.Change = [] { frmGallery.lblLong.Caption = frmGallery.txbName.Text; };
    f.txbReport.MouseUp = [] {
        frmGallery.lblLong.Caption = std::to_string(frmGallery.txbReport.SelLength) + " selected";
    };
    f.lstFolders.Click = [] {
        int count = 0;
        for (const ui::ListItem& item : frmGallery.lstFolders.Items)
            count += item.Selected;
        frmGallery.lblLong.Caption = std::to_string(count) + " chosen";
    };
    f.cboPasses.Click = [] {
        frmGallery.lblLong.Caption = "Item " + std::to_string(frmGallery.cboPasses.ListIndex);
    };
    f.Resize = [] {
        frmGallery.txbReport.Width = frmGallery.Width - 2100;
        frmGallery.txbReport.Height = frmGallery.Height - frmGallery.txbReport.Top - 120;
    };
    f.FilesDropped = [](const std::vector<std::string>& files) {
        frmGallery.lblPath.Caption = files.front();
    };
    f.tmrClock.Interval = 500;
    f.tmrClock.Tick = [] { frmGallery.lblMouse.Caption = std::to_string(GetTickCount64() / 500); };
    f.Timers = {&f.tmrClock};
    ui::OnKeyReleased([](int key) {
        frmGallery.lblKeys.Caption =
            "Key " + std::to_string(key) + ", " + std::to_string(++intKeys) + " seen";
        blnStop = blnStop || key == VK_F10;
    });
}

void LoadGallery() {
    FrmGallery& f = frmGallery;
    f.Name = "frmGallery";
    f.Caption = "Gallery";
    f.Width = 9600;
    f.Height = 7200;
    f.MinWidth = 7200;
    f.MinHeight = 5400;
    f.Resizable = true;
    f.Position = ui::StartPosition::CenterScreen;
    SetTexts();
    BindHandlers();
    ui::Bind(f, {{&f.fraMenu, "fraMenu", 120, 120, 1740, 6000},
                 {&f.cmdModal, "cmdModal", 0, 0, 1740, 375},
                 {&f.cmdBox, "cmdBox", 0, 420, 1740, 375},
                 {&f.cmdOpen, "cmdOpen", 0, 840, 1740, 375},
                 {&f.cmdSave, "cmdSave", 0, 1260, 1740, 375},
                 {&f.cmdFolder, "cmdFolder", 0, 1680, 1740, 375},
                 {&f.cmdRun, "cmdRun", 0, 2100, 1740, 375},
                 {&f.cmdToggle, "cmdToggle", 0, 2520, 1740, 375},
                 {&f.cmdQuit, "cmdQuit", 0, 2940, 1740, 375},
                 {&f.cmdStop, "cmdStop", 120, 3480, 1740, 375},
                 {&f.lblName, "lblName", 1980, 150, 700, 240},
                 {&f.txbName, "txbName", 2700, 120, 2700, 315},
                 {&f.lblPath, "lblPath", 1980, 540, 3420, 240},
                 {&f.lblLong, "lblLong", 1980, 840, 3420, 900},
                 {&f.lblBlack, "lblBlack", 1980, 1800, 3420, 480},
                 {&f.lblLink, "lblLink", 1980, 2340, 1700, 240},
                 {&f.lblKeys, "lblKeys", 3720, 2340, 1700, 240},
                 {&f.fraOptions, "fraOptions", 5520, 120, 1980, 1620},
                 {&f.optType[0], "optType(0)", 120, 270, 1740, 270},
                 {&f.optType[1], "optType(1)", 120, 570, 1740, 270},
                 {&f.optType[2], "optType(2)", 120, 870, 1740, 270},
                 {&f.cboPasses, "cboPasses", 120, 1185, 1740, 315},
                 {&f.fraBare, "fraBare", 5520, 1800, 1980, 600},
                 {&f.optBare[0], "optBare(0)", 0, 0, 1980, 270},
                 {&f.optBare[1], "optBare(1)", 0, 300, 1980, 270},
                 {&f.lstFolders, "lstFolders", 7620, 120, 1860, 1080},
                 {&f.lstOne, "lstOne", 7620, 1260, 1860, 1080},
                 {&f.chkSlack, "chkSlack", 1980, 2640, 3420, 480},
                 {&f.chkMenu, "chkMenu", 5520, 2640, 1980, 300},
                 {&f.lblMouse, "lblMouse", 7620, 2640, 1860, 240},
                 {&f.barProgress, "barProgress", 1980, 3180, 7500, 240},
                 {&f.txbReport, "txbReport", 1980, 3480, 7500, 3600}});
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR arguments, int) {
    LoadSmall(frmInner, "frmInner", "Inner", nullptr);
    LoadSmall(frmSmall, "frmSmall", "Modal", &frmInner);
    LoadGallery();
    ui::KeepOnScreen(frmGallery);
    ui::Show(frmGallery);
    const std::wstring what = arguments;
    if (what == L"modal")
        frmGallery.cmdModal.Click();
    else if (what == L"box")
        frmGallery.cmdBox.Click();
    else if (what == L"report")
        frmGallery.cmdRun.Click();
    frmGallery.tmrClock.Enabled = true;
    return ui::RunMessageLoop();
}
