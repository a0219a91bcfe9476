#pragma once
#include <QtGlobal>

/// Makes the storage fail on purpose, under the encryption: production code runs unchanged on it.
/// Opened connections keep the file system they were opened with, so install() comes before the first open.
class FaultVfs {
  public:
    enum class Kind { IoError, DiskFull };

    /// Becomes the default file system of the storage engine. Once a process; a second call does nothing.
    static void install();
    /// From now on the n-th write (from 1, over all files) fails, and every later one until disarm().
    static void armWrite(qint64 n, Kind kind);
    /// The n-th removal of a file (from 1) fails, or is done and told as failed all the same (a folder that
    /// can't be synced), or is so and the last one that is done.
    enum class Removal { Fails, IsDone, IsLast };
    static void armRemoval(qint64 n, Removal kind);
    /// Writes since the last armWrite, the failed ones included.
    static qint64 writes();
    static void disarm();
};
