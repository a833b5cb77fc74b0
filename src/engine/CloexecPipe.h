#pragma once

#include <shared_mutex>

// Pipes whose ends are close-on-exec before any child can see them, and the
// lock that makes that true where the system cannot create them so at once.
namespace CloexecPipe {

// Creates a pipe, both ends close-on-exec. Uses pipe2(O_CLOEXEC) on Linux
// and createPortable() elsewhere (macOS has no pipe2).
bool create(int fds[2]);

// pipe() then FD_CLOEXEC on both ends, while holding the spawn lock
// exclusively, so no child started through a SpawnGuard can inherit an end
// in between. Callable on every platform, so it is tested everywhere.
bool createPortable(int fds[2]);

// Held (shared) around every process start of the runner. Starts run side by
// side; only the portable pipe creation waits for them, and they for it.
class SpawnGuard
{
public:
    SpawnGuard();

private:
    std::shared_lock<std::shared_mutex> m_lock;
};

} // namespace CloexecPipe
