// "Save report": asks for a file and writes the report of the last run into it.
#include "report/SaveReport.h"

#include "platform/Files.h"
#include "platform/System.h"
#include "report/frmReport.h"
#include "report/run/RunReport.h"
#include "session/Session.h"
#include "settings/TextFiles.h"
#include "support/MainWindow.h"
#include "support/Paths.h"
#include "ui/Interface.h"

namespace {

bool IsForJson(const std::string& path) {
    const std::string extension = platform::LowerCase(ExtensionOf(path));
    return extension == "json" || extension == "jsonl";
}

} // namespace

platform::Fault WriteReport(const std::string& strPath) {
    const auto write = [&](const PutText& put) {
        const PutText putAndYield = [&put](const std::string& piece) {
            ui::DoEvents();
            return put(piece);
        };
        return IsForJson(strPath) ? WriteReportAsJson(putAndYield) : WriteReportAsText(putAndYield);
    };
    return WriteLongTextFile(strPath, write, ui::Effort::Long);
}

void SaveReport() {
    std::size_t type = 0;
    const auto paths =
        ui::ChoosePaths({ui::Choose::NewFile,
                         "Save report",
                         strBrowsePath,
                         {{"Text (*.txt)", "*.txt"}, {"JSON lines (*.json)", "*.json"}}},
                        &type);
    if (paths.empty())
        return;
    std::string path = paths.front();
    if (!IsForJson(path) && platform::LowerCase(ExtensionOf(path)) != "txt")
        path += type == 1 ? ".json" : ".txt";
    if (platform::FileExists(path) &&
        ui::MsgBox("Overwrite existing file " + path + "?", ui::Buttons::YesNoCancel,
                   ui::Icon::Question, "File exists", "overwrite") != ui::AnswerYes)
        return;
    // The windows stay alive while a long report is written. No new run may begin: it would take
    // the records away.
    const CommandsInReach before = TakeCommandsAway();
    const platform::Fault fault = WriteReport(path);
    GiveCommandsBack(before);
    blnStop = false; // F10 has stopped nothing here, and must not stop the next command
    if (Failed(fault))
        ui::Complain("The report cannot be saved in " + path + ".\r\n" +
                         platform::FaultText(fault) + ".",
                     "Save report");
    else
        frmReport.lblPausedDone.Caption = "Saved";
}
