#pragma once

#include <sqlite3.h>

#include <cstring>

/// The engine's way to the disk, in which one write, truncation, synchronisation or deletion fails, and from
/// then on every other one too if the program is to be as good as killed. Nothing is really synchronised:
/// that is for power cuts, and takes most of the time. For one at a time, in one thread.
class FailingDisk {
  public:
    enum class Then { GoOn, StayDead };

    FailingDisk() {
        real = sqlite3_vfs_find(nullptr);
        vfs = *real;
        vfs.zName = "failing disk";
        vfs.szOsFile = int(sizeof(File)) + real->szOsFile;
        vfs.xOpen = open;
        vfs.xDelete = [](sqlite3_vfs* /*self*/, const char* name, int synchronise) {
            return fails() ? SQLITE_IOERR_DELETE : real->xDelete(real, name, synchronise);
        };
        sqlite3_vfs_register(&vfs, 1);
    }
    ~FailingDisk() {
        sqlite3_vfs_register(real, 1);
        sqlite3_vfs_unregister(&vfs);
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    /// Lets the operation of a number from here on fail, from 1; 0 for none.
    static void failAt(int number, Then then) {
        done = 0;
        wanted = number;
        after = then;
    }
    /// How many operations there were since.
    static int operations() { return done; }

  private:
    struct File {
        sqlite3_file base;
        sqlite3_file* inner() { return reinterpret_cast<sqlite3_file*>(this + 1); }
    };

    static sqlite3_file* innerOf(sqlite3_file* file) { return reinterpret_cast<File*>(file)->inner(); }

    static bool fails() {
        ++done;
        return wanted > 0 && (done == wanted || (done > wanted && after == Then::StayDead));
    }

    static sqlite3_io_methods allMethods() {
        sqlite3_io_methods own{};
        own.iVersion = 1;
        own.xClose = [](sqlite3_file* file) { return innerOf(file)->pMethods->xClose(innerOf(file)); };
        own.xRead = [](sqlite3_file* file, void* to, int size, sqlite3_int64 at) {
            return innerOf(file)->pMethods->xRead(innerOf(file), to, size, at);
        };
        own.xWrite = [](sqlite3_file* file, const void* from, int size, sqlite3_int64 at) {
            return fails() ? SQLITE_FULL : innerOf(file)->pMethods->xWrite(innerOf(file), from, size, at);
        };
        own.xTruncate = [](sqlite3_file* file, sqlite3_int64 size) {
            return fails() ? SQLITE_IOERR_TRUNCATE : innerOf(file)->pMethods->xTruncate(innerOf(file), size);
        };
        own.xSync = [](sqlite3_file* /*file*/, int /*flags*/) {
            return fails() ? SQLITE_IOERR_FSYNC : SQLITE_OK;
        };
        own.xFileSize = [](sqlite3_file* file, sqlite3_int64* size) {
            return innerOf(file)->pMethods->xFileSize(innerOf(file), size);
        };
        own.xLock = [](sqlite3_file* file, int kind) {
            return innerOf(file)->pMethods->xLock(innerOf(file), kind);
        };
        own.xUnlock = [](sqlite3_file* file, int kind) {
            return innerOf(file)->pMethods->xUnlock(innerOf(file), kind);
        };
        own.xCheckReservedLock = [](sqlite3_file* file, int* held) {
            return innerOf(file)->pMethods->xCheckReservedLock(innerOf(file), held);
        };
        own.xFileControl = [](sqlite3_file* file, int what, void* value) {
            return innerOf(file)->pMethods->xFileControl(innerOf(file), what, value);
        };
        own.xSectorSize = [](sqlite3_file* file) {
            return innerOf(file)->pMethods->xSectorSize(innerOf(file));
        };
        own.xDeviceCharacteristics = [](sqlite3_file* file) {
            return innerOf(file)->pMethods->xDeviceCharacteristics(innerOf(file));
        };
        return own;
    }

    static int open(sqlite3_vfs* /*self*/, const char* name, sqlite3_file* file, int flags, int* outFlags) {
        static const sqlite3_io_methods methods = allMethods();
        auto* own = reinterpret_cast<File*>(file);
        std::memset(own->inner(), 0, static_cast<std::size_t>(real->szOsFile));
        const int code = real->xOpen(real, name, own->inner(), flags, outFlags);
        own->base.pMethods = own->inner()->pMethods ? &methods : nullptr;
        return code;
    }

    static inline sqlite3_vfs* real = nullptr;
    sqlite3_vfs vfs{};
    static inline int done = 0;
    static inline int wanted = 0;
    static inline Then after = Then::GoOn;
};
