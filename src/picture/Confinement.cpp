#include "picture/Confinement.h"

#include "picture/Release.h"

#include <cerrno>
#include <csignal>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/resource.h>

namespace tavro {

namespace {

void limit(__rlimit_resource resource, rlim_t most) {
    const rlimit bounds{most, most};
    setrlimit(resource, &bounds);
}

void limitResources() {
    [[maybe_unused]] constexpr rlim_t mostMemory = rlim_t{3} << 30;
    constexpr rlim_t mostSeconds = 30, mostDescriptors = 16;
#ifndef __SANITIZE_ADDRESS__ // which maps more than there is
    limit(RLIMIT_AS, mostMemory);
#endif
    limit(RLIMIT_CPU, mostSeconds);
    limit(RLIMIT_NOFILE, mostDescriptors);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_CORE, 0);
    std::signal(SIGXFSZ, SIG_IGN); // a library's warning into a log file is lost, and no more
}

/// Memory, threads, time, randomness, output and the end. Nothing here takes a path.
constexpr int harmlessCalls[] = {
    SCMP_SYS(brk),          SCMP_SYS(clock_gettime),
    SCMP_SYS(close),
    SCMP_SYS(eventfd2), // each of the toolkit's threads has one
    SCMP_SYS(exit),         SCMP_SYS(exit_group),
    SCMP_SYS(futex),        SCMP_SYS(getpid),
    SCMP_SYS(getrandom),    SCMP_SYS(gettid),
    SCMP_SYS(madvise),      SCMP_SYS(mremap),
    SCMP_SYS(munmap),       SCMP_SYS(restart_syscall),
    SCMP_SYS(rseq),         SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn), SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_yield),  SCMP_SYS(set_robust_list),
    SCMP_SYS(sigaltstack),  SCMP_SYS(sysinfo),
    SCMP_SYS(write),
#ifdef __SANITIZE_ADDRESS__ // the sanitizers look by a pipe whether an address can be read
    SCMP_SYS(pipe),         SCMP_SYS(pipe2),
#endif
};

/// All other calls fail with EPERM, which libraries can bear, and ENOSYS lets the C library make threads in
/// the older way, whose flags a filter can see.
bool filterSystemCalls() {
    const std::unique_ptr<void, Release<&seccomp_release>> filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    bool isComplete = filter && seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0;
    const auto allow = [&](int call, auto... conditions) {
        isComplete = isComplete && seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, sizeof...(conditions),
                                                    conditions...) == 0;
    };
    for (const int call : harmlessCalls)
        allow(call);
    for (const int call : {SCMP_SYS(mmap), SCMP_SYS(mprotect)})
        allow(call, scmp_arg_cmp{2, SCMP_CMP_MASKED_EQ, PROT_EXEC, 0});
    allow(SCMP_SYS(clone), scmp_arg_cmp{0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD});
    isComplete =
        isComplete && seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0;
    return isComplete && seccomp_load(filter.get()) == 0;
}

} // namespace

bool confineThisProcess() {
    limitResources();
    return filterSystemCalls();
}

} // namespace tavro
