#pragma once
#include <QtGlobal>

/// Makes the storage fail on purpose, under the encryption: production code runs unchanged on it.
/// Opened connections keep the file system they were opened with, so install() comes before the first open.
class FaultVfs {
  public:
    enum class Kind { IoError, DiskFull };

    /// Becomes the default file system of the storage engine. Once a process; a second call does nothing.
    static void install();
    enum class Operation { Write, Read, Sync, Truncate };
    /// From now on the n-th operation (from 1, over all files) fails, and every later one until disarm(). A
    /// full disk is a matter of writes.
    static void arm(Operation operation, qint64 n, Kind kind = Kind::IoError);
    /// The n-th removal of a file (from 1) fails, or is done and told as failed all the same (a folder that
    /// can't be synced), or is so and the last one that is done.
    enum class Removal { Fails, IsDone, IsLast };
    static void armRemoval(qint64 n, Removal kind);
    /// Operations of that kind since the last arm(), the failed ones included.
    static qint64 counted();
    static void disarm();
};
