// The texts for result codes, and the remarks on data that writing in place does not reach.
#include "report/run/ResultTexts.h"

#include "engine/PurgeJob.h"
#include "platform/System.h"
#include "support/Paths.h"

std::string ResultText(std::int16_t intResultCode, bool blnSlackOnly, const std::string& strPath) {
    // Other codes append nothing: the line of a file whose extension was refused earlier in the run
    // (8) has only the path.
    if (intResultCode < -55 || intResultCode > 7)
        return {};
    switch (intResultCode) {
    case PurgeNoSlack:
        return ": NO slack area.";
    case PurgeSystemRefused:
        return blnSlackOnly ? ": file is a system file, slack area not purged."
                            : ": file is a system file, not purged.";
    case PurgeReadOnlyRefused:
        return std::string(blnSlackOnly ? ": file is a read-only file, slack area not purged."
                                        : ": file is a read-only file, not purged.") +
               "\r\n(Perhaps file is in use by another program.)";
    case PurgeLengthNotRestored:
        return ": error when restoring filesize.";
    case PurgeBadClusterSize:
        return ": invalid cluster size.";
    case PurgeBadType:
        return ": invalid purge type.";
    case PurgeVanished:
        return ": no longer there.";
    case PurgeReplaced:
        return ": not the folder any more that was chosen.";
    case PurgeSeveralNames:
        return ": its data also belong to another name, not purged.";
    case PurgeDiskFull:
        return ": the disk is full.";
    case PurgeFileChanged:
        return blnSlackOnly ? ": file has changed meanwhile, slack area not purged."
                            : ": file has changed meanwhile, not purged.";
    case PurgeNotLocal:
        return blnSlackOnly ? ": not on this drive (cloud or archive), slack area not purged."
                            : ": not on this drive (cloud or archive), not purged.";
    case PurgeNotVerified:
        return blnSlackOnly ? ": verification failed, slack area not purged."
                            : ": verification failed, not purged.";
    case PurgeFlushFailed:
        return ": error when flushing file.";
    case PurgeNotDeleted:
        return ": file overwritten but not deleted.";
    case PurgeWriteFailed:
        return ": error when writing to file.";
    case PurgeCannotOpen:
        return ": unable to open file for writing.";
    case PurgeEmptyPath:
        return ": empty file name.";
    case 1:
        return ": a file in the current application folder, not purged.";
    case 2:
        return ": the page file (swap file), not purged.";
    case 7:
        return ": " + platform::LowerCase(ExtensionOf(strPath)) + " files are not purged.";
    default:
        return blnSlackOnly ? " slack area not purged." : " not purged.";
    }
}

std::string ErrorNumberText(platform::Fault fault) {
    return fault.Error != 0 ? " (error " + std::to_string(fault.Error) + ")" : std::string();
}

std::string OutOfReachText(std::uint32_t lngReach) {
    struct Reason {
        std::uint32_t lngBit;
        const char* strText;
    };
    static constexpr Reason reasons[] = {
        {ReachEncrypted, "encrypted: older copies of its data may remain on the disk"},
        {ReachCompressed, "compressed: its data may remain elsewhere on the disk"},
        {ReachSparse, "sparse: parts of it were not on the disk"},
        {ReachCloudPlaceholder, "cloud file: the copy in the cloud remains"},
        {ReachHardLinks, "has other names, under which the file remains"},
        {ReachOlderCopies, "its file system may keep older copies of its data"},
        {ReachName, "its name or dates may remain on the disk"}};
    std::string text;
    for (const Reason& reason : reasons) {
        if (lngReach & reason.lngBit)
            text += (text.empty() ? " (" : "; ") + std::string(reason.strText);
    }
    return text.empty() ? text : text + ")";
}
