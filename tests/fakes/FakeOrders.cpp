// The faults ordered by tests. Independent of the fake drives, because it is also linked with other
// file back ends.
#include "fakes/FakePlatform.h"

#include <mutex>

namespace fake {

using platform::Fault;

namespace {
std::recursive_mutex mutex; ///< calls may come from several threads; a hook may make others
std::unordered_map<std::string, std::int64_t> made; ///< by name; "" counts all
struct {
    std::int64_t Left = 0; ///< remaining calls before the fault
    Fault What = Fault::None;
    std::string Call, Failed;
} order;
std::vector<std::pair<std::string, std::function<Fault(const std::string&)>>> hooks;
} // namespace

void ResetOrders() {
    const std::scoped_lock lock(mutex);
    hooks.clear();
    made.clear();
    order = {};
}

Fault Begin(const char* call, const std::string& path) {
    const std::scoped_lock lock(mutex);
    ++made[""];
    ++made[call];
    for (std::size_t i = 0; i < hooks.size(); ++i) {
        const auto [which, hook] = hooks[i]; // a copy: the hook may add others
        if (const Fault fault = which.empty() || which == call ? hook(path) : Fault::None;
            Failed(fault))
            return fault;
    }
    if (order.Left == 0 || !(order.Call.empty() || order.Call == call) || --order.Left > 0)
        return Fault::None;
    order.Failed = call;
    return order.What;
}

void FailNth(std::int64_t n, Fault fault, const std::string& call) {
    const std::scoped_lock lock(mutex);
    order = {n, fault, call, ""};
}

std::string FailedCall() {
    const std::scoped_lock lock(mutex);
    return order.Failed;
}

bool HasFailed() {
    const std::scoped_lock lock(mutex);
    order.Left = 0;
    return !order.Failed.empty();
}

std::int64_t CallsMade(const std::string& call) {
    const std::scoped_lock lock(mutex);
    return made[call];
}

void OnCall(const std::string& call, std::function<Fault(const std::string&)> hook) {
    const std::scoped_lock lock(mutex);
    hooks.emplace_back(call, std::move(hook));
}

void Watch(const std::string& call, std::function<void(const std::string&)> hook) {
    OnCall(call, [=](const std::string& path) {
        hook(path);
        return Fault::None;
    });
}

void FailAlways(const std::string& call, const std::string& end, Fault fault,
                std::function<bool()> when) {
    OnCall(call, [=](const std::string& path) {
        return path.ends_with(end) && (!when || when()) ? fault : Fault::None;
    });
}

} // namespace fake
