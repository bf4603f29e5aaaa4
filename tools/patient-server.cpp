// Preloaded into Wine's server, see start_server in common.sh. The server kills a program that is
// still there a second after its end, and the program's exit code goes with it: the shell sees 137.
// On a busy machine a second is too short. Here such a program has a minute to go by itself.
#include <cerrno>
#include <chrono>
#include <csignal>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace {

int RealKill(pid_t process, int signal) {
    return static_cast<int>(syscall(SYS_kill, process, signal));
}

void KillInAMinute(pid_t process) {
    for (int i = 0; i < 600 && (RealKill(process, 0) == 0 || errno != ESRCH); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    RealKill(process, SIGKILL); // nobody, if it has gone
}

} // namespace

extern "C" int kill(pid_t process, int signal) noexcept {
    if (signal != SIGKILL || process <= 0)
        return RealKill(process, signal);
    // The server's own signals go to its own thread.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread(KillInAMinute, process).detach();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return RealKill(process, 0);
}
