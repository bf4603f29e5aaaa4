// Short work with the files of a drive, and whether it may be done on the interface thread.
#pragma once

#include "platform/Folders.h"
#include "ui/Interface.h"

#include <functional>
#include <string>

/// ui::RunSteps for work with files of the drive of `path`. Brief steps run on this thread only if
/// the drive has proved quick; the first steps after a pause run on the I/O thread. All steps do so
/// for good on a drive that was ever slow. Must not be called inside a step.
void RunStepsOnDrive(const std::string& path, ui::Effort effort, const std::function<bool()>& step,
                     const std::function<bool()>& poll);
/// One brief step: a query about a drive, or a change of a small file. If it runs on the I/O
/// thread, messages are pumped meanwhile.
void WorkOnDrive(const std::string& path, const std::function<void()>& work);
/// Whether work on the drive would now go to the I/O thread, so that messages are pumped.
bool MayKeepWaiting(const std::string& path);
/// platform::EnumerateFolder, on the I/O thread if the drive may be slow. `visit` is always called
/// on this thread and may pump messages. `whileWaiting` is called repeatedly while no entries come.
platform::Fault EnumerateOnDrive(const std::string& folder,
                                 const std::function<bool(const platform::FolderEntry&)>& visit,
                                 const std::function<void()>& whileWaiting);
/// Forgets all measurements: every drive has to prove quick again.
void ForgetDriveSpeeds();
