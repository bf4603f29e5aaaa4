// The dialog for purge type and passes. Its controls are the one store of the setting.
#include "settings/frmTypeOfPurge.h"

#include "support/Numbers.h"
#include "support/ProgramTexts.h"
#include "ui/Interface.h"

#include <cstddef>

FrmTypeOfPurge frmTypeOfPurge;

namespace {

constexpr std::int16_t intNumTypes = 3;
/// A file is never overwritten more often than this, whatever the lists may come to offer.
constexpr std::int16_t intMaxOverwrites = 32;
/// From this number on the question is asked more insistently.
constexpr std::int16_t intManyOverwrites = 25;

constexpr std::int16_t intMaxPassesOfType[intNumTypes] = {9, 7, 5};
constexpr int intDefaultIndexOfType[intNumTypes] = {5, 2, 1};

constexpr const char* strTypeCaptions[intNumTypes] = {
    "1. Random bytes", "2. Alternate bit patterns", "3. Alternate bit patterns plus random bytes"};
constexpr const char* strTypeDescriptions[intNumTypes] = {
    "Overwrite the data once with random bytes.",
    "Overwrite the data four times with bit patterns "
    "10101010, 01010101, 00001010 and 11110101.",
    "Overwrite the data twice with bit patterns 10101010 and 01010101, "
    "then with random bytes, then twice with bit patterns 00001010 and 11110101, "
    "then again with random bytes."};

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
    for (std::int16_t i = 0; i < intNumTypes; ++i)
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
                   ProgramText(TextNumber::AcceptTypeTitle)) != ui::AnswerYes)
        return;
    frmTypeOfPurge.blnAccepted = true;
    ui::Hide(frmTypeOfPurge);
}

/// Restores the type only: pass counts changed meanwhile stay changed, and are meant to.
void cmdCancel_Click() {
    ui::SelectOption(frmTypeOfPurge.optPurgeType,
                     static_cast<std::size_t>(frmTypeOfPurge.intPurgeTypeAtActivation));
    ui::Hide(frmTypeOfPurge);
}

void LayOut() {
    FrmTypeOfPurge& f = frmTypeOfPurge;
    f.Name = "frmTypeOfPurge";
    f.Caption = "What type of purge should be used?";
    f.Width = 7740;
    f.Height = 4920;
    constexpr int intTextLeft = 480, intTextWidth = 7020;
    ui::Bind(f, {{&f.optPurgeType[0], "optPurgeType(0)", 240, 180, 7260, 300},
                 {&f.lblPurgeType[0], "lblPurgeType(0)", intTextLeft, 480, intTextWidth, 270},
                 {&f.optPurgeType[1], "optPurgeType(1)", 240, 870, 7260, 300},
                 {&f.lblPurgeType[1], "lblPurgeType(1)", intTextLeft, 1170, intTextWidth, 510},
                 {&f.optPurgeType[2], "optPurgeType(2)", 240, 1800, 7260, 300},
                 {&f.lblPurgeType[2], "lblPurgeType(2)", intTextLeft, 2100, intTextWidth, 750},
                 {&f.lblDOD, "lblDOD", 240, 2970, 7260, 510},
                 {&f.lblNumberOfTimes, "lblNumberOfTimes", 240, 3705, 2460, 270},
                 {&f.cboNumberOfPasses[0], "cboNumberOfPasses(0)", 2760, 3645, 900, 345},
                 {&f.cboNumberOfPasses[1], "cboNumberOfPasses(1)", 2760, 3645, 900, 345},
                 {&f.cboNumberOfPasses[2], "cboNumberOfPasses(2)", 2760, 3645, 900, 345},
                 {&f.cmdAccept, "cmdAccept", 4380, 4275, 1500, 405},
                 {&f.cmdCancel, "cmdCancel", 6000, 4275, 1500, 405}});
    ui::PutWords({{&f.lblNumberOfTimes, "Number of times ('passes'):", 'N'},
                  {&f.cmdAccept, "Accept", 'A', cmdAccept_Click},
                  {&f.cmdCancel, "Cancel", 0, cmdCancel_Click}});
    f.cmdAccept.Default = f.cmdCancel.Cancel = true;
    for (std::int16_t i = 0; i < intNumTypes; ++i) {
        f.optPurgeType[i].Caption = strTypeCaptions[i];
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
    for (std::int16_t t = 0; t < intNumTypes; ++t) {
        f.cboNumberOfPasses[t].Items.clear();
        f.intMaxNumPasses = intMaxPassesOfType[t];
        for (int k = f.intMinNumPasses; k <= f.intMaxNumPasses; ++k)
            f.cboNumberOfPasses[t].Items.push_back({std::to_string(k)});
    }
    ui::SelectOption(f.optPurgeType, 0);
    for (std::int16_t t = 0; t < intNumTypes; ++t) {
        f.cboNumberOfPasses[t].ListIndex = intDefaultIndexOfType[t];
        f.lblPurgeType[t].Caption = strTypeDescriptions[t];
    }
    f.lblDOD.Caption = "Both the type 2 purge (if done 6 times) and the type 3 purge "
                       "(if done 3 times) meet the U.S. DoD 5220.22-M standard for disk "
                       "sanitization.";
}

std::int16_t GetPurgeType() {
    if (frmTypeOfPurge.optPurgeType[0].Value)
        return 0;
    return frmTypeOfPurge.optPurgeType[1].Value ? 1 : 2;
}

// The lists hold at most nine items, so that neither the sum nor the product below can leave 16
// bits.

std::int16_t GetNumberOfPasses() {
    return static_cast<std::int16_t>(frmTypeOfPurge.cboNumberOfPasses[GetPurgeType()].ListIndex +
                                     frmTypeOfPurge.intMinNumPasses);
}

std::int16_t GetNumOverwritesPerPass() {
    constexpr std::int16_t intOverwritesPerPass[intNumTypes] = {1, 4, 6};
    return intOverwritesPerPass[GetPurgeType()];
}

std::int16_t GetNumOverwrites() {
    return static_cast<std::int16_t>(GetNumberOfPasses() * GetNumOverwritesPerPass());
}

std::string PurgeTypeNumPasses(std::int16_t intPurgeType, std::int16_t intNumberOfPasses) {
    constexpr const char* strNames[intNumTypes] = {"random bytes", "alternate bit patterns",
                                                   "alternate bit patterns plus random bytes"};
    const std::string strName =
        intPurgeType >= 0 && intPurgeType < intNumTypes ? strNames[intPurgeType] : "";
    if (intNumberOfPasses == 1)
        return strName + " once";
    if (intNumberOfPasses == 2)
        return strName + " twice";
    return strName + SignedDigits(intNumberOfPasses) + " times"; // the blank is the sign's place
}

std::string TypeOfPurgeSummary() {
    const std::int16_t n = GetNumOverwrites();
    const std::string strCaption = frmTypeOfPurge.optPurgeType[GetPurgeType()].Caption;
    return (strCaption.size() > 3 ? strCaption.substr(3) : "") + ", " +
           TimesText(GetNumberOfPasses()) + " (= " + std::to_string(n) + " overwrite" +
           (n > 1 ? "s" : "") + ")";
}
