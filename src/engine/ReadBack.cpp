// Reads back what an overwrite has written, past the system's cache where it can be done, and
// compares it. The file stays open for the overwrite meanwhile, so that nobody else can change it.
#include "engine/ReadBack.h"

#include "engine/OverwriteSteps.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr auto lngUnit = static_cast<std::uint64_t>(platform::unbufferedUnit);
constexpr std::uint64_t lngLongestRead = std::uint64_t{1} << 20;

std::int16_t FailAt(Overwrite& work, std::uint64_t position,
                    platform::Fault fault = platform::Fault::None) {
    work.Job.DifferentAt = static_cast<std::int64_t>(position);
    work.Job.DifferentPath = work.Target.Path;
    work.Job.Trouble = fault;
    return PurgeNotVerified;
}

void BeginRange(Overwrite& work) {
    ReadingBack& reading = work.Reading;
    if (reading.RangeIndex < work.Ranges.size())
        reading.Position = work.Ranges[reading.RangeIndex].From / lngUnit * lngUnit;
}

/// For ordinary reads, too, when nothing else is supported.
std::int16_t Open(Overwrite& work) {
    ReadingBack& reading = work.Reading;
    if (reading.File.IsOpen())
        (void)platform::CloseFile(reading.File);
    auto fault = platform::Fault::NotSupported;
    if (!reading.Cached)
        fault = platform::OpenFile(work.Target.Path, platform::Access::ReadPastCache, reading.File);
    if (fault == platform::Fault::NotSupported) {
        reading.Cached = true;
        fault = platform::OpenFile(work.Target.Path, platform::Access::Read, reading.File);
    }
    return Failed(fault) ? FailAt(work, work.Ranges[reading.RangeIndex].From, fault)
                         : std::int16_t{PurgeDone};
}

std::int16_t Begin(Overwrite& work) {
    std::uint64_t longest = 0;
    for (const platform::Range& range : work.Ranges)
        longest = std::max(longest, range.To - range.From / lngUnit * lngUnit);
    const std::uint64_t size =
        std::min(lngLongestRead, (longest + lngUnit - 1) / lngUnit * lngUnit);
    work.Reading.Buffer.resize(size + lngUnit); // so that a part of it lies as the device needs it
    BeginRange(work);
    return Open(work);
}

/// How many bytes agree with what was written there: the same block again and again, from the
/// range's beginning on.
std::uint64_t AgreeingBytes(const Overwrite& work, const char* bytes, std::uint64_t count,
                            std::uint64_t intoRange) {
    const std::string& run = work.Run;
    const auto block = static_cast<std::uint64_t>(work.BlockSize);
    std::uint64_t done = 0;
    while (done < count) {
        const std::uint64_t at = (intoRange + done) % block;
        const std::uint64_t part = std::min<std::uint64_t>(count - done, run.size() - at);
        if (std::memcmp(bytes + done, run.data() + at, part) != 0) {
            const char* const differs =
                std::mismatch(bytes + done, bytes + done + part, run.data() + at).first;
            return static_cast<std::uint64_t>(differs - bytes);
        }
        done += part;
    }
    return done;
}

std::int16_t ReadRun(Overwrite& work) {
    ReadingBack& reading = work.Reading;
    const platform::Range& range = work.Ranges[reading.RangeIndex];
    void* buffer = reading.Buffer.data();
    std::size_t room = reading.Buffer.size();
    std::align(platform::unbufferedUnit, room - lngUnit, buffer, room);
    const std::uint64_t size =
        std::min<std::uint64_t>(reading.Buffer.size() - lngUnit,
                                (range.To - reading.Position + lngUnit - 1) / lngUnit * lngUnit);
    const std::uint64_t from = std::max(reading.Position, range.From);
    std::size_t read = 0;
    platform::Fault fault = platform::SeekTo(reading.File, reading.Position);
    if (!Failed(fault))
        fault = platform::ReadBytes(reading.File, buffer, size, read);
    if (fault == platform::Fault::NotSupported && !reading.Cached) {
        reading.Cached = true;
        return Open(work);
    }
    if (Failed(fault))
        return FailAt(work, from, fault);
    const std::uint64_t wanted = std::min(reading.Position + size, range.To);
    const std::uint64_t end = std::clamp(reading.Position + read, from, wanted);
    const char* const bytes = static_cast<const char*>(buffer) + (from - reading.Position);
    const std::uint64_t agreeing = AgreeingBytes(work, bytes, end - from, from - range.From);
    if (from + agreeing < wanted)
        return FailAt(work, from + agreeing);
    work.BytesRead += static_cast<std::int64_t>(wanted - from);
    reading.Position += size;
    if (reading.Position >= range.To) {
        ++reading.RangeIndex;
        BeginRange(work);
    }
    return PurgeDone;
}

} // namespace

bool StepReadBack(Overwrite& work) {
    if (!work.Reading.File.IsOpen())
        work.Result = Begin(work);
    if (work.Result == PurgeDone)
        work.Result = ReadRun(work);
    if (work.Result != PurgeDone)
        return false;
    if (work.Reading.RangeIndex < work.Ranges.size())
        return true;
    // Of several streams the least that was reached of any.
    const ReadBack reached = work.Reading.Cached ? ReadBack::Cached : ReadBack::PastCache;
    ReadBack& all = work.Job.HasReadBack;
    all = all == ReadBack::None ? reached : std::min(all, reached);
    return false;
}
