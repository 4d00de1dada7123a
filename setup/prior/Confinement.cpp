#include "setup/prior/Confinement.h"

#if defined(__SANITIZE_ADDRESS__)
#define AMONG_SANITIZERS
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define AMONG_SANITIZERS
#endif
#endif
#if defined(BRENNOVAL_SECCOMP) && !defined(AMONG_SANITIZERS)
#define FILTERS_CALLS
#endif

#ifndef _WIN32
#include <sys/resource.h>
#endif
#ifdef FILTERS_CALLS
#include <fcntl.h>
#include <seccomp.h>
#include <sys/prctl.h>

#include <cerrno>
#include <memory>
#endif

namespace {

#ifndef _WIN32
void limit(decltype(RLIMIT_CPU) resource, rlim_t most) {
    const rlimit value{most, most};
    setrlimit(resource, &value);
}
#endif

#ifdef FILTERS_CALLS

/// Calls for reading, memory and an orderly exit.
constexpr int harmless[] = {SCMP_SYS(read),          SCMP_SYS(readv),        SCMP_SYS(pread64),
                            SCMP_SYS(lseek),         SCMP_SYS(write),        SCMP_SYS(writev),
                            SCMP_SYS(close),         SCMP_SYS(fstat),        SCMP_SYS(stat),
                            SCMP_SYS(lstat),         SCMP_SYS(newfstatat),   SCMP_SYS(statx),
                            SCMP_SYS(access),        SCMP_SYS(faccessat),    SCMP_SYS(readlink),
                            SCMP_SYS(fcntl),         SCMP_SYS(mmap),         SCMP_SYS(mremap),
                            SCMP_SYS(munmap),        SCMP_SYS(mprotect),     SCMP_SYS(madvise),
                            SCMP_SYS(brk),           SCMP_SYS(futex),        SCMP_SYS(getrandom),
                            SCMP_SYS(clock_gettime), SCMP_SYS(getpid),       SCMP_SYS(gettid),
                            SCMP_SYS(tgkill),        SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask),
                            SCMP_SYS(rt_sigreturn),  SCMP_SYS(exit),         SCMP_SYS(exit_group)};

/// Allows opening files for reading, and the calls that install a second filter.
bool allowOpening(scmp_filter_ctx filter) {
    constexpr unsigned writing = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;
    constexpr unsigned noNewRights = PR_SET_NO_NEW_PRIVS;
    return seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(open), 1,
                            SCMP_A1(SCMP_CMP_MASKED_EQ, writing, 0)) == 0 &&
           seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(openat), 1,
                            SCMP_A2(SCMP_CMP_MASKED_EQ, writing, 0)) == 0 &&
           seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(prctl), 1, SCMP_A0(SCMP_CMP_EQ, noNewRights)) ==
               0 &&
           seccomp_rule_add(filter, SCMP_ACT_ALLOW, SCMP_SYS(seccomp), 0) == 0;
}

/// From here on refuses all other system calls. A second filter can only refuse more.
void allowHarmless(bool openingToo) {
    const std::unique_ptr<void, decltype(&seccomp_release)> filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)),
                                                                   seccomp_release);
    if (!filter)
        return;
    for (const int call : harmless)
        if (seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0) != 0)
            return;
    if (!openingToo || allowOpening(filter.get()))
        seccomp_load(filter.get());
}

#endif

} // namespace

void confine() {
#ifndef _WIN32
    constexpr rlim_t seconds = 120;
    limit(RLIMIT_CPU, seconds);
    limit(RLIMIT_CORE, 0);
#ifndef AMONG_SANITIZERS
    constexpr rlim_t memory = 512 << 20;
    limit(RLIMIT_AS, memory);
#endif
#endif
#ifdef FILTERS_CALLS
    allowHarmless(true);
#endif
}

void confineToOpenFiles() {
#ifdef FILTERS_CALLS
    allowHarmless(false);
#endif
}
