#include "support/fault_vfs.h"

#include <sqlite3.h>

#include <atomic>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace {

constexpr const char* kName = "mint-fault";
std::atomic<qint64> failAt{std::numeric_limits<qint64>::max()};
std::atomic<qint64> counted{0};
std::atomic<int> failure{SQLITE_IOERR_WRITE};

/// Our file, followed in memory by the file of the system underneath.
sqlite3_file* real(sqlite3_file* file) {
    return file + 1;
}
sqlite3_vfs* below(sqlite3_vfs* vfs) {
    return static_cast<sqlite3_vfs*>(vfs->pAppData);
}

/// Hands a call on to the file, or to the file system, underneath.
template <auto Method, typename... Args>
int onFile(sqlite3_file* file, Args... args) {
    return (real(file)->pMethods->*Method)(real(file), args...);
}
template <auto Method, typename... Args>
int onMachine(sqlite3_vfs* vfs, Args... args) {
    return (below(vfs)->*Method)(below(vfs), args...);
}

int write(sqlite3_file* file, const void* data, int amount, sqlite3_int64 offset) {
    if (++counted >= failAt) return failure;
    return onFile<&sqlite3_io_methods::xWrite>(file, data, amount, offset);
}

sqlite3_io_methods makeMethods() {
    using M = sqlite3_io_methods;
    M m{};
    m.iVersion = 1;
    m.xClose = onFile<&M::xClose>;
    m.xRead = onFile<&M::xRead>;
    m.xWrite = write;
    m.xTruncate = onFile<&M::xTruncate>;
    m.xSync = onFile<&M::xSync>;
    m.xFileSize = onFile<&M::xFileSize>;
    m.xLock = onFile<&M::xLock>;
    m.xUnlock = onFile<&M::xUnlock>;
    m.xCheckReservedLock = onFile<&M::xCheckReservedLock>;
    m.xFileControl = onFile<&M::xFileControl>;
    m.xSectorSize = onFile<&M::xSectorSize>;
    m.xDeviceCharacteristics = onFile<&M::xDeviceCharacteristics>;
    return m;
}

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    static const sqlite3_io_methods methods = makeMethods();
    std::memset(real(file), 0, static_cast<std::size_t>(below(vfs)->szOsFile));
    const int code = below(vfs)->xOpen(below(vfs), name, real(file), flags, outFlags);
    file->pMethods = real(file)->pMethods ? &methods : nullptr;
    return code;
}

/// The file system of the machine: the first that is no cipher.
sqlite3_vfs* machineVfs() {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    while (std::strncmp(vfs->zName, "multipleciphers", 15) == 0) vfs = vfs->pNext;
    return vfs;
}

sqlite3_vfs makeVfs(sqlite3_vfs* machine) {
    using V = sqlite3_vfs;
    V vfs = *machine;
    vfs.iVersion = 1;
    vfs.szOsFile = static_cast<int>(sizeof(sqlite3_file)) + machine->szOsFile;
    vfs.pNext = nullptr;
    vfs.zName = kName;
    vfs.pAppData = machine;
    vfs.xOpen = openFile;
    vfs.xDelete = onMachine<&V::xDelete>;
    vfs.xAccess = onMachine<&V::xAccess>;
    vfs.xFullPathname = onMachine<&V::xFullPathname>;
    vfs.xRandomness = onMachine<&V::xRandomness>;
    vfs.xSleep = onMachine<&V::xSleep>;
    vfs.xCurrentTime = onMachine<&V::xCurrentTime>;
    vfs.xGetLastError = onMachine<&V::xGetLastError>;
    return vfs;
}

}  // namespace

void FaultVfs::install() {
    static const bool installed = [] {
        sqlite3_initialize();
        static sqlite3_vfs vfs = makeVfs(machineVfs());
        return sqlite3_vfs_register(&vfs, 0) == SQLITE_OK && sqlite3mc_vfs_create(kName, 1) == SQLITE_OK;
    }();
    if (!installed) throw std::runtime_error("no faulty file system");
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
