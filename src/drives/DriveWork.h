// Short work with the files of a drive, and whether it may be done on the interface thread.
#pragma once

#include "platform/Folders.h"
#include "ui/Interface.h"

#include <functional>
#include <string>

/// ui::RunSteps for work with files of the drive whose letter begins `path`. Brief steps are done
/// on this thread only where the drive has proved quick: the first ones after a while, and for good
/// all steps on a drive that ever kept one waiting, are done on the I/O thread. Not to be called
/// inside a step.
void RunStepsOnDrive(const std::string& path, ui::Effort effort, const std::function<bool()>& step,
                     const std::function<bool()>& poll);
/// One brief step: a question about a drive, or a change of a small file. Where it is done on the
/// I/O thread, messages are pumped meanwhile.
void WorkOnDrive(const std::string& path, const std::function<void()>& work);
/// Whether work on the drive goes to the I/O thread just now, so that messages are pumped
/// meanwhile.
bool MayKeepWaiting(const std::string& path);
/// platform::EnumerateFolder, read on the I/O thread where the drive may keep one waiting; `visit`
/// is called on this thread, where it may pump messages. `whileWaiting` is called every now and
/// then while no entries come.
platform::Fault EnumerateOnDrive(const std::string& folder,
                                 const std::function<bool(const platform::FolderEntry&)>& visit,
                                 const std::function<void()>& whileWaiting);
/// Every drive has to prove itself again.
void ForgetDriveSpeeds();
