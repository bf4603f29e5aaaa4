// Reading whole small files, and replacing them in one step.
#include "settings/TextFiles.h"

#include "platform/Files.h"
#include "support/Utf8.h"

using platform::Failed;
using platform::Fault;

namespace {

Fault ReadUpTo(platform::File file, std::size_t lngMax, std::string& text) {
    std::string strRead;
    std::string strPiece(65536, '\0');
    for (;;) {
        std::size_t lngRead = 0;
        const Fault fault = platform::ReadBytes(file, strPiece.data(), strPiece.size(), lngRead);
        if (Failed(fault))
            return fault;
        if (lngRead == 0)
            break;
        strRead.append(strPiece, 0, lngRead);
        if (strRead.size() > lngMax)
            return Fault::NotSupported;
    }
    text = std::move(strRead);
    return Fault::None;
}

/// Makes a file of a name that nobody uses.
Fault MakeTemporaryFile(const std::string& path, std::string& strTemporary, platform::File& file) {
    Fault fault = Fault::AlreadyExists;
    for (int i = 1; i <= 99 && fault == Fault::AlreadyExists; ++i) {
        strTemporary = path + ".new" + std::to_string(i);
        fault = platform::OpenFile(strTemporary, platform::Access::CreateNew, file);
    }
    return fault;
}

} // namespace

bool ReadTextFile(const std::string& path, std::string& text, std::size_t lngMax) {
    platform::File file;
    if (path.empty() || Failed(platform::OpenFile(path, platform::Access::Read, file)))
        return false;
    std::string strRead;
    const Fault fault = ReadUpTo(file, lngMax, strRead);
    static_cast<void>(platform::CloseFile(file)); // nothing was written: no loss
    if (Failed(fault))
        return false;
    text = WithoutMark(std::move(strRead));
    return true;
}

bool WriteTextFile(const std::string& path, const std::string& text) {
    return !path.empty() &&
           !Failed(WriteLongTextFile(path, [&](const auto& put) { return put(text); }));
}

Fault WriteLongTextFile(
    const std::string& path,
    const std::function<bool(const std::function<bool(const std::string&)>&)>& write,
    ui::Effort flush) {
    platform::File file;
    std::string strTemporary;
    Fault fault = MakeTemporaryFile(path, strTemporary, file);
    if (Failed(fault))
        return fault;
    static_cast<void>(write([&](const std::string& piece) {
        fault = platform::WriteBytes(file, piece.data(), piece.size());
        return !Failed(fault);
    }));
    if (!Failed(fault)) {
        const auto flushOnce = [&] {
            fault = platform::FlushBytes(file);
            return false;
        };
        ui::RunSteps(flush, flushOnce, [] { return true; });
    }
    const Fault faultOfClose = platform::CloseFile(file);
    if (!Failed(fault))
        fault = faultOfClose;
    if (!Failed(fault))
        fault = platform::RenameReplacing(strTemporary, path);
    if (Failed(fault))
        static_cast<void>(platform::RemoveFile(strTemporary));
    return fault;
}
