#include "support/fault_vfs.h"

#include <sqlite3.h>

#include <atomic>
#include <cstring>
#include <limits>

namespace {

constexpr const char* kName = "mint-fault";
std::atomic<qint64> failAt{std::numeric_limits<qint64>::max()};
std::atomic<qint64> counted{0};
std::atomic<int> failure{SQLITE_IOERR_WRITE};

/// Our file, followed in memory by the file of the system underneath.
struct FaultFile {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file) {
    return reinterpret_cast<FaultFile*>(file)->real();
}
const sqlite3_io_methods* io(sqlite3_file* file) {
    return real(file)->pMethods;
}
sqlite3_vfs* below(sqlite3_vfs* vfs) {
    return static_cast<sqlite3_vfs*>(vfs->pAppData);
}

int write(sqlite3_file* file, const void* data, int amount, sqlite3_int64 offset) {
    if (++counted >= failAt) return failure;
    return io(file)->xWrite(real(file), data, amount, offset);
}

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    static const sqlite3_io_methods methods = [] {
        sqlite3_io_methods m{};
        m.iVersion = 1;
        m.xClose = [](sqlite3_file* f) { return io(f)->xClose(real(f)); };
        m.xRead = [](sqlite3_file* f, void* d, int n, sqlite3_int64 o) {
            return io(f)->xRead(real(f), d, n, o);
        };
        m.xWrite = write;
        m.xTruncate = [](sqlite3_file* f, sqlite3_int64 n) { return io(f)->xTruncate(real(f), n); };
        m.xSync = [](sqlite3_file* f, int flag) { return io(f)->xSync(real(f), flag); };
        m.xFileSize = [](sqlite3_file* f, sqlite3_int64* n) { return io(f)->xFileSize(real(f), n); };
        m.xLock = [](sqlite3_file* f, int level) { return io(f)->xLock(real(f), level); };
        m.xUnlock = [](sqlite3_file* f, int level) { return io(f)->xUnlock(real(f), level); };
        m.xCheckReservedLock = [](sqlite3_file* f, int* out) {
            return io(f)->xCheckReservedLock(real(f), out);
        };
        m.xFileControl = [](sqlite3_file* f, int op, void* arg) {
            return io(f)->xFileControl(real(f), op, arg);
        };
        m.xSectorSize = [](sqlite3_file* f) { return io(f)->xSectorSize(real(f)); };
        m.xDeviceCharacteristics = [](sqlite3_file* f) { return io(f)->xDeviceCharacteristics(real(f)); };
        return m;
    }();
    auto* fault = reinterpret_cast<FaultFile*>(file);
    std::memset(fault->real(), 0, static_cast<std::size_t>(below(vfs)->szOsFile));
    const int code = below(vfs)->xOpen(below(vfs), name, fault->real(), flags, outFlags);
    file->pMethods = fault->real()->pMethods ? &methods : nullptr;
    return code;
}

/// The file system of the machine: the first that is no cipher.
sqlite3_vfs* machineVfs() {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    while (vfs && std::strncmp(vfs->zName, "multipleciphers", 15) == 0) vfs = vfs->pNext;
    return vfs;
}

sqlite3_vfs makeVfs(sqlite3_vfs* machine) {
    sqlite3_vfs vfs = *machine;
    vfs.iVersion = 1;
    vfs.szOsFile = static_cast<int>(sizeof(FaultFile)) + machine->szOsFile;
    vfs.pNext = nullptr;
    vfs.zName = kName;
    vfs.pAppData = machine;
    vfs.xOpen = openFile;
    vfs.xDelete = [](sqlite3_vfs* v, const char* n, int sync) {
        return below(v)->xDelete(below(v), n, sync);
    };
    vfs.xAccess = [](sqlite3_vfs* v, const char* n, int flags, int* out) {
        return below(v)->xAccess(below(v), n, flags, out);
    };
    vfs.xFullPathname = [](sqlite3_vfs* v, const char* n, int size, char* out) {
        return below(v)->xFullPathname(below(v), n, size, out);
    };
    vfs.xRandomness = [](sqlite3_vfs* v, int size, char* out) {
        return below(v)->xRandomness(below(v), size, out);
    };
    vfs.xSleep = [](sqlite3_vfs* v, int us) { return below(v)->xSleep(below(v), us); };
    vfs.xCurrentTime = [](sqlite3_vfs* v, double* out) { return below(v)->xCurrentTime(below(v), out); };
    vfs.xGetLastError = [](sqlite3_vfs* v, int size, char* out) {
        return below(v)->xGetLastError(below(v), size, out);
    };
    return vfs;
}

}  // namespace

void FaultVfs::install() {
    static const bool installed = [] {
        sqlite3_initialize();
        static sqlite3_vfs vfs = makeVfs(machineVfs());
        return sqlite3_vfs_register(&vfs, 0) == SQLITE_OK && sqlite3mc_vfs_create(kName, 1) == SQLITE_OK;
    }();
    Q_ASSERT(installed);
    Q_UNUSED(installed);
}

void FaultVfs::armWrite(qint64 n, Kind kind) {
    counted = 0;
    failure = kind == Kind::DiskFull ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    failAt = n;
}

qint64 FaultVfs::writes() {
    return counted;
}

void FaultVfs::disarm() {
    failAt = std::numeric_limits<qint64>::max();
}
