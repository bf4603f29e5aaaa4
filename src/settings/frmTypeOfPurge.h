// The dialog "What type of purge should be used?": purge type and passes.
#pragma once

#include "ui/Controls.h"

#include <cstdint>
#include <string>

struct FrmTypeOfPurge : ui::Form {
    ui::OptionButton optPurgeType[3];
    ui::ComboBox cboNumberOfPasses[3];
    ui::Label lblPurgeType[3];
    ui::Label lblDOD, lblNumberOfTimes;
    ui::Button cmdAccept, cmdCancel;

    std::int16_t intMinNumPasses = 0;
    std::int16_t intMaxNumPasses = 0;
    std::int16_t intPurgeTypeAtActivation = 0;
    /// True when the last showing ended with "Accept".
    bool blnAccepted = false;
};
extern FrmTypeOfPurge frmTypeOfPurge;

/// Fills the lists and sets the defaults; called once at start.
void Initialization();
/// 0 random bytes, 1 alternate bit patterns, 2 both.
std::int16_t GetPurgeType();
std::int16_t GetNumberOfPasses();
std::int16_t GetNumOverwritesPerPass();
std::int16_t GetNumOverwrites();
/// "alternate bit patterns plus random bytes 3 times", for the report.
std::string PurgeTypeNumPasses(std::int16_t intPurgeType, std::int16_t intNumberOfPasses);
/// "Random bytes, 6 times (= 6 overwrites)", for the main window.
std::string TypeOfPurgeSummary();
