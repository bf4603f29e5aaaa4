// Remarks on limits of a drive that the user should know before a purge.
#include "drives/DriveNature.h"

#include "drives/ClusterSizes.h"
#include "drives/DriveWork.h"
#include "platform/Drives.h"
#include "support/Paths.h"

namespace {

/// Drives that write to other cells than those addressed. A stick is recognised by being removable:
/// what it reports about seek penalty is unreliable.
std::string KindRemark(const std::string& strDrive, platform::DriveType type,
                       const platform::DriveNature& nature) {
    const bool blnFloppy = strDrive.ends_with('A') || strDrive.ends_with('B');
    if (type == platform::DriveType::Removable && !blnFloppy)
        return strDrive + " is a removable drive: a stick or memory card may keep older copies of "
                          "the data that are overwritten, and one pass is as good as many.";
    if (nature.SolidState.value_or(false))
        return strDrive + " is a solid-state drive: overwriting in place may miss older copies of "
                          "the data, and one pass is as good as many.";
    return {};
}

/// The most important of the remaining remarks.
std::string OtherRemark(const std::string& strDrive, bool blnKind,
                        const platform::DriveNature& nature) {
    if (nature.Compressed.value_or(false))
        return "Windows compresses what is written to " + strDrive +
               ", and may write it to another place than that of the old data.";
    if (nature.Protected.value_or(false))
        return "Restore points that Windows keeps of " + strDrive +
               " may hold earlier versions of files.";
    if (blnKind && nature.Encrypted.value_or(false))
        return "As BitLocker encrypts it, they cannot be read without the key.";
    // Sticks are left out: hardly any of them supports TRIM.
    if (nature.SolidState.value_or(false) && !nature.Trims.value_or(true))
        return "TRIM is off: it does not erase by itself what was deleted.";
    return {};
}

} // namespace

std::string DriveRemarks(char chrDrive) {
    const std::string strRoot = std::string(1, chrDrive) + ":\\";
    auto type = platform::DriveType::Unknown;
    platform::DriveNature nature;
    WorkOnDrive(strRoot, [&] {
        type = platform::TypeOfDrive(strRoot);
        // A server tells nothing about its disks, and its answer may take long.
        if (type != platform::DriveType::Fixed && type != platform::DriveType::Removable)
            return;
        if (Failed(platform::ReadDriveNature(strRoot, nature)))
            type = platform::DriveType::Unknown;
    });
    if (type != platform::DriveType::Fixed && type != platform::DriveType::Removable)
        return {};
    const std::string strDrive = std::string("Drive ") + chrDrive;
    const std::string strKind = KindRemark(strDrive, type, nature);
    const std::string strOther = OtherRemark(strDrive, !strKind.empty(), nature);
    return strKind + (strKind.empty() || strOther.empty() ? "" : " ") + strOther;
}

std::string DriveRemarksOn(const std::vector<std::string>& paths) {
    std::string strDone, strRemarks;
    for (const std::string& strPath : paths) {
        const char chrDrive = DriveLetterOf(strPath);
        if (!chrDrive || strDone.find(chrDrive) != std::string::npos)
            continue;
        SettleVolume(strPath);
        if (!MountedRootOf(strPath).empty())
            continue;
        strDone += chrDrive;
        const std::string strRemark = DriveRemarks(chrDrive);
        strRemarks += (strRemarks.empty() || strRemark.empty() ? "" : "\r\n") + strRemark;
    }
    return strRemarks;
}
