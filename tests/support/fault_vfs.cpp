#include "support/fault_vfs.h"

#include <sqlite3.h>

#include <atomic>
#include <cstring>
#include <limits>
#include <map>
#include <stdexcept>

namespace {

constexpr const char* kName = "mint-fault";
std::atomic<qint64> failAt{std::numeric_limits<qint64>::max()};
std::atomic<qint64> count{0};
std::atomic<int> failure{SQLITE_IOERR_WRITE};
std::atomic<FaultVfs::Operation> armed{};
std::atomic<qint64> removalsLeft{0};
std::atomic<FaultVfs::Removal> removal{};

/// The file system of the machine, and how it works on any file.
sqlite3_vfs* machine = nullptr;
sqlite3_io_methods machineMethods;

bool fails(FaultVfs::Operation operation) {
    return operation == armed && ++count >= failAt;
}

int write(sqlite3_file* file, const void* data, int amount, sqlite3_int64 offset) {
    if (fails(FaultVfs::Operation::Write)) return failure;
    return machineMethods.xWrite(file, data, amount, offset);
}

int read(sqlite3_file* file, void* data, int amount, sqlite3_int64 offset) {
    if (fails(FaultVfs::Operation::Read)) return SQLITE_IOERR_READ;
    return machineMethods.xRead(file, data, amount, offset);
}

int sync(sqlite3_file* file, int flags) {
    if (fails(FaultVfs::Operation::Sync)) return SQLITE_IOERR_FSYNC;
    return machineMethods.xSync(file, flags);
}

int truncate(sqlite3_file* file, sqlite3_int64 size) {
    if (fails(FaultVfs::Operation::Truncate)) return SQLITE_IOERR_TRUNCATE;
    return machineMethods.xTruncate(file, size);
}

/// A file of the machine, of which only these are ours, whatever its way of locking.
int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    static std::map<const sqlite3_io_methods*, sqlite3_io_methods> ours;
    const int code = machine->xOpen(machine, name, file, flags, outFlags);
    if (!file->pMethods) return code;
    machineMethods = *file->pMethods;
    sqlite3_io_methods& methods = ours.try_emplace(file->pMethods, *file->pMethods).first->second;
    methods.xWrite = write;
    methods.xRead = read;
    methods.xSync = sync;
    methods.xTruncate = truncate;
    file->pMethods = &methods;
    return code;
}

int removeFile(sqlite3_vfs*, const char* name, int syncFolder) {
    using Removal = FaultVfs::Removal;
    if (removalsLeft == 0 || (removalsLeft > 0 && --removalsLeft > 0))
        return machine->xDelete(machine, name, syncFolder);
    const Removal now = removal;
    if (now == Removal::IsLast) {
        removal = Removal::Fails;
        removalsLeft = -1;  // all from now on
    }
    if (now == Removal::Fails) return SQLITE_IOERR_DELETE;
    const int code = machine->xDelete(machine, name, syncFolder);
    return code == SQLITE_OK ? SQLITE_IOERR_DIR_FSYNC : code;
}

}  // namespace

void FaultVfs::install() {
    static const bool installed = [] {
        sqlite3_initialize();
        machine = sqlite3_vfs_find(nullptr);  // the first that is no cipher
        while (std::strncmp(machine->zName, "multipleciphers", 15) == 0) machine = machine->pNext;
        static sqlite3_vfs vfs = *machine;
        vfs.pNext = nullptr;
        vfs.zName = kName;
        vfs.xOpen = openFile;
        vfs.xDelete = removeFile;
        return sqlite3_vfs_register(&vfs, 0) == SQLITE_OK && sqlite3mc_vfs_create(kName, 1) == SQLITE_OK;
    }();
    if (!installed) throw std::runtime_error("no faulty file system");
}

void FaultVfs::arm(Operation operation, qint64 n, Kind kind) {
    count = 0;
    armed = operation;
    failure = kind == Kind::DiskFull ? SQLITE_FULL : SQLITE_IOERR_WRITE;
    failAt = n;
}

void FaultVfs::armRemoval(qint64 n, Removal kind) {
    removal = kind;
    removalsLeft = n;
}

qint64 FaultVfs::counted() {
    return count;
}

void FaultVfs::disarm() {
    failAt = std::numeric_limits<qint64>::max();
    removalsLeft = 0;
}
