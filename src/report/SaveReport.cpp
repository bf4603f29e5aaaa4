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

bool WantsJson(const std::string& path) {
    const std::string extension = platform::LowerCase(ExtensionOf(path));
    return extension == "json" || extension == "jsonl";
}

} // namespace

void SaveReport() {
    std::string path;
    // All files: a dialog may append the first extension of a filter to a name with the second.
    if (!ui::SaveFileDialog("Save report as text (.txt) or as JSON lines (.json)",
                            "All files (*.*)", "*.*", strBrowsePath, path))
        return;
    if (ExtensionOf(path).empty())
        path += ".txt";
    if (platform::FileExists(path) &&
        ui::MsgBox("Overwrite existing file " + path + "?", ui::Buttons::YesNoCancel,
                   ui::Icon::Question, "File exists") != ui::AnswerYes)
        return;
    const bool json = WantsJson(path);
    // The windows stay alive while a long report is written. No new run may begin: it would take
    // the records away.
    frmReport.cmdSaveReport.Enabled = false;
    EnableMenu(false);
    const platform::Fault fault = WriteLongTextFile(path, [&](const PutText& put) {
        const PutText putAndYield = [&put](const std::string& piece) {
            ui::DoEvents();
            return put(piece);
        };
        return json ? WriteReportAsJson(putAndYield) : WriteReportAsText(putAndYield);
    });
    EnableMenu(true);
    frmReport.cmdSaveReport.Enabled = true;
    if (Failed(fault))
        ui::Complain("The report cannot be saved in " + path + ".\r\n" +
                         platform::FaultText(fault) + ".",
                     "Save report");
    else
        frmReport.lblPausedDone.Caption = "Saved";
}
