// The dialog for purge type and passes. Its controls are the one store of the setting.
#include "settings/frmTypeOfPurge.h"

#include "support/Numbers.h"
#include "support/ProgramTexts.h"
#include "ui/Interface.h"

#include <cstddef>
#include <string>
#include <vector>

FrmTypeOfPurge frmTypeOfPurge;

namespace {

/// From this number on the question is asked more insistently.
constexpr std::int16_t intManyOverwrites = 25;

/// "once", "twice", "3 times".
std::string TimesText(std::int16_t n) {
    if (n == 1)
        return "once";
    if (n == 2)
        return "twice";
    return std::to_string(n) + " times";
}

void ShowPassesListForType() {
    if (!frmTypeOfPurge.Visible)
        return;
    for (std::int16_t i = 0; i < intNumPurgeTypes; ++i)
        frmTypeOfPurge.cboNumberOfPasses[i].Visible = i == GetPurgeType();
    ui::SetFocus(frmTypeOfPurge.cmdAccept);
}

void frmTypeOfPurge_Activate() {
    frmTypeOfPurge.blnAccepted = false;
    frmTypeOfPurge.intPurgeTypeAtActivation = GetPurgeType();
    ShowPassesListForType();
    ui::SetFocus(frmTypeOfPurge.cmdAccept);
}

void cboNumberOfPasses_Click() {
    if (frmTypeOfPurge.Visible)
        ui::SetFocus(frmTypeOfPurge.cmdAccept);
}

void cmdAccept_Click() {
    const std::int16_t n = GetNumOverwrites();
    const std::string strSentence = std::string("In the type of purge specified each file ") +
                                    (n > intMaxOverwrites ? "would" : "will") + " be overwritten " +
                                    TimesText(n) + ".";
    if (n > intMaxOverwrites) {
        ui::Complain(strSentence + "\r\nThis is more than is allowed by this software.",
                     "Too many overwrites");
        return;
    }
    const std::string strQuestion = n < intManyOverwrites
                                        ? "Is this OK?"
                                        : "This is a rather large number of overwrites.  "
                                          "Are you sure you want to do this?";
    if (ui::MsgBox(strSentence + "\r\n" + strQuestion, ui::Buttons::YesNo, ui::Icon::None,
                   ProgramText(TextNumber::AcceptTypeTitle), "type of purge") != ui::AnswerYes)
        return;
    frmTypeOfPurge.blnAccepted = true;
    ui::Hide(frmTypeOfPurge);
}

/// Restores the type only: pass counts changed meanwhile stay changed, and are meant to.
void cmdCancel_Click() {
    SetPurgeType(frmTypeOfPurge.intPurgeTypeAtActivation);
    ui::Hide(frmTypeOfPurge);
}

void LayOut() {
    FrmTypeOfPurge& f = frmTypeOfPurge;
    f.Name = "frmTypeOfPurge";
    f.Caption = "What type of purge should be used?";
    f.Width = 7740;
    constexpr int intLeft = 240, intWidth = 7260;
    constexpr int intTextLeft = 480, intTextWidth = 7020;
    constexpr int intOptionHeight = 300, intLineHeight = 240, intCharactersInLine = 80;
    std::vector<ui::Placed> table;
    const auto place = [&](ui::Control& control, const std::string& name, int left, int top,
                           int width, int height) {
        table.push_back({&control, name, left, top, width, height});
    };
    const auto indexed = [](const char* name, int index) {
        return name + ("(" + std::to_string(index) + ")");
    };
    int intTop = 180;
    for (std::int16_t t = 0; t < intNumPurgeTypes; ++t) {
        const auto intLength = static_cast<int>(std::string(purgeTypes[t].strDescription).size());
        const int intTextHeight = (intLength / intCharactersInLine + 1) * intLineHeight + 30;
        place(f.optPurgeType[t], indexed("optPurgeType", t), intLeft, intTop, intWidth,
              intOptionHeight);
        place(f.lblPurgeType[t], indexed("lblPurgeType", t), intTextLeft, intTop + intOptionHeight,
              intTextWidth, intTextHeight);
        intTop += intOptionHeight + intTextHeight + 120;
    }
    place(f.lblDOD, "lblDOD", intLeft, intTop, intWidth, 510);
    place(f.lblNumberOfTimes, "lblNumberOfTimes", intLeft, intTop + 735, 2460, 270);
    for (std::int16_t t = 0; t < intNumPurgeTypes; ++t)
        place(f.cboNumberOfPasses[t], indexed("cboNumberOfPasses", t), 2760, intTop + 675, 900,
              345);
    place(f.cmdAccept, "cmdAccept", 4380, intTop + 1305, 1500, 405);
    place(f.cmdCancel, "cmdCancel", 6000, intTop + 1305, 1500, 405);
    f.Height = intTop + 1950;
    ui::Bind(f, table);
    ui::PutWords({{&f.lblNumberOfTimes, "Number of times ('passes'):", 'N'},
                  {&f.cmdAccept, "Accept", 'A', cmdAccept_Click},
                  {&f.cmdCancel, "Cancel", 0, cmdCancel_Click}});
    f.cmdAccept.Default = f.cmdCancel.Cancel = true;
    for (std::int16_t i = 0; i < intNumPurgeTypes; ++i) {
        f.optPurgeType[i].Caption = std::to_string(i + 1) + ". " + purgeTypes[i].strCaption;
        f.optPurgeType[i].Mnemonic = static_cast<char>('1' + i);
        f.optPurgeType[i].Bold = true;
        f.optPurgeType[i].Click = ShowPassesListForType;
        f.cboNumberOfPasses[i].Visible = i == 0;
        f.cboNumberOfPasses[i].Click = cboNumberOfPasses_Click;
    }
    f.Close = cmdCancel_Click;
    f.Activate = frmTypeOfPurge_Activate;
}

} // namespace

void Initialization() {
    FrmTypeOfPurge& f = frmTypeOfPurge;
    LayOut();
    f.intMinNumPasses = 1;
    for (std::int16_t t = 0; t < intNumPurgeTypes; ++t) {
        f.cboNumberOfPasses[t].Items.clear();
        f.intMaxNumPasses = purgeTypes[t].intMostPasses;
        for (int k = f.intMinNumPasses; k <= f.intMaxNumPasses; ++k)
            f.cboNumberOfPasses[t].Items.push_back({std::to_string(k)});
    }
    SetPurgeType(0);
    for (std::int16_t t = 0; t < intNumPurgeTypes; ++t) {
        f.cboNumberOfPasses[t].ListIndex = purgeTypes[t].intStandardPasses - f.intMinNumPasses;
        f.lblPurgeType[t].Caption = purgeTypes[t].strDescription;
    }
    f.lblDOD.Caption = "Both the type 2 purge (if done 6 times) and the type 3 purge "
                       "(if done 3 times) meet the U.S. DoD 5220.22-M standard for disk "
                       "sanitization.";
}

std::int16_t GetPurgeType() {
    std::int16_t t = 0;
    while (t < intNumPurgeTypes - 1 && !frmTypeOfPurge.optPurgeType[t].Value)
        ++t;
    return t;
}

void SetPurgeType(std::int16_t intPurgeType) {
    ui::SelectOption(frmTypeOfPurge.optPurgeType, static_cast<std::size_t>(intPurgeType));
}

// The lists hold at most nine items, so that neither the sum nor the product below can leave 16
// bits.

std::int16_t GetNumberOfPasses() {
    return static_cast<std::int16_t>(frmTypeOfPurge.cboNumberOfPasses[GetPurgeType()].ListIndex +
                                     frmTypeOfPurge.intMinNumPasses);
}

std::int16_t GetNumOverwritesPerPass() {
    return static_cast<std::int16_t>(OverwritesOfType(GetPurgeType()).size());
}

std::int16_t GetNumOverwrites() {
    return static_cast<std::int16_t>(GetNumberOfPasses() * GetNumOverwritesPerPass());
}

std::string PurgeTypeNumPasses(std::int16_t intPurgeType, std::int16_t intNumberOfPasses) {
    const std::string strName = IsPurgeType(intPurgeType) ? purgeTypes[intPurgeType].strName : "";
    if (intNumberOfPasses == 1)
        return strName + " once";
    if (intNumberOfPasses == 2)
        return strName + " twice";
    return strName + SignedDigits(intNumberOfPasses) + " times"; // the blank is the sign's place
}

std::string TypeOfPurgeSummary() {
    const std::int16_t n = GetNumOverwrites();
    return std::string(purgeTypes[GetPurgeType()].strCaption) + ", " +
           TimesText(GetNumberOfPasses()) + " (= " + std::to_string(n) + " overwrite" +
           (n > 1 ? "s" : "") + ")";
}
