// The dialog "What type of purge should be used?": purge type and passes.
#pragma once

#include "engine/PurgeTypes.h"
#include "ui/Controls.h"

#include <cstdint>
#include <string>

struct FrmTypeOfPurge : ui::Form {
    ui::OptionButton optPurgeType[intNumPurgeTypes];
    ui::ComboBox cboNumberOfPasses[intNumPurgeTypes];
    ui::Label lblPurgeType[intNumPurgeTypes];
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
/// The chosen row of purgeTypes.
std::int16_t GetPurgeType();
/// Chooses one of its rows. Each row keeps its number of passes.
void SetPurgeType(std::int16_t intPurgeType);
std::int16_t GetNumberOfPasses();
std::int16_t GetNumOverwritesPerPass();
std::int16_t GetNumOverwrites();
/// "alternate bit patterns plus random bytes 3 times", for the report.
std::string PurgeTypeNumPasses(std::int16_t intPurgeType, std::int16_t intNumberOfPasses);
/// "Random bytes, 6 times (= 6 overwrites)", for the main window.
std::string TypeOfPurgeSummary();
