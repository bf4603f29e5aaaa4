// The start of a run.
#include "report/run/Run.h"

#include "drives/FileSystems.h"
#include "engine/FileOps.h"
#include "engine/GroupPace.h"
#include "engine/HeldFiles.h"
#include "platform/System.h"
#include "report/run/RunRecords.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "support/Check.h"

PurgeHow PurgeHowInForce() {
    return {GetPurgeType(),
            GetNumberOfPasses(),
            blnPurgeSlackOnly,
            blnDoNotDeletePurgedFiles,
            blnOKToPurgeReadOnlyFiles,
            blnOKToPurgeSystemFiles,
            blnOKToPurgeSensitiveFiles,
            blnDeleteEmptyFolders,
            purgeOptions};
}

std::vector<RunItem> ItemsOf(const RunRequest& request) {
    return request.Items.empty()
               ? std::vector<RunItem>{{request.strDirPath, request.strFilespec, {}}}
               : request.Items;
}

std::string WhatIsRun(const RunRequest& request) {
    return request.strItems.empty() ? request.strDirPath + request.strFilespec : request.strItems;
}

void BeginRun(const RunRequest& request) {
    Check(!currentRun.IsUnderWay(), "a run begins when the last one has ended");
    RunRequest wanted = request; // copied first: `request` may belong to the last run
    currentRun = Run{};
    currentRun.Request = wanted;
    currentRun.State = RunState::Running;
    currentRun.strStarted = platform::IsoTimeText();
    ForgetRecords();
    blnStop = false;
    blnPurgeRemainingFiles = false;
    ResetHeldFileWaits();
    ForgetGroupPaces();
    ForgetFileSystems();
    ForgetFolders();
}
