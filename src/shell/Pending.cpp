// Provisional definitions, replaced one by one by the modules of this room.
#include "shell/PurgeCommands.h"
void cmdSingleFile_Click() {}
void cmdSpecifyDirectory_Click(int) {}
void cmdSpecifyFiles_Click() {}
void cmdSubdirectories_Click() {}
void cmdConfirmFiles_Click() {}
void cmdClear_Click() {}
void cmdProcessFiles_Click(int) {}
void FilesDroppedOnMain(const std::vector<std::string>&) {}
void OpenCommandLineFiles() {}
