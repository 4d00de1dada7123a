#pragma once

#include <csignal>
#include <cstdlib>

#include <sys/resource.h>
#include <unistd.h>

/// Drops superuser rights, which override file permissions, during its lifetime.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        constexpr uid_t nobody = 65534;
        dropped = geteuid() == 0 && seteuid(nobody) == 0;
    }
    ~OrdinaryUser() {
        if (dropped && seteuid(0) != 0)
            std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    bool dropped = false;
};

/// Prevents any file from growing beyond a size during its lifetime, as a full disk does.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit before{};
};
