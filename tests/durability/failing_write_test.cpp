#include "durability/broken_run.h"
#include "support/fault_vfs.h"

namespace {

using Operation = FaultVfs::Operation;

constexpr qint64 kMostWrites = 2000;  // more than any command does

struct FailingWriteTest : durability::BrokenRunTest {
    /// One run towards side 1 under the armed fault; whether it came through. What it tells is true, for the
    /// program that goes on and, now and then, for the next that opens the files.
    void run(qint64 n) {
        auto reason = std::optional<store::Error::Reason>();
        try {
            command.runTowards(*cn, 1);
        } catch (const store::Error& error) {
            reason = error.reason();
            EXPECT_FALSE(error.text().isEmpty());
        }
        FaultVfs::disarm();
        through = !reason;
        EXPECT_FALSE(cn->inTransaction());
        if (n % 10 == 0) cn = folder.open();
        ASSERT_NO_FATAL_FAILURE(settle(*cn, n % 2));
        // Nothing is cut off without a word, nothing told as failed that stands, or the other way round.
        if (reason != store::Error::Reason::CommitUnknown) {
            EXPECT_TRUE(pending ? !through : side == through);
        }
        if (side == 1) command.runTowards(*cn, 0);
    }
    std::unique_ptr<store::Connection> cn;
    bool through = false;
};

}  // namespace

// Fails the first write of the command, then the second (every 13th where each try opens many files), …
// until the command comes through: whatever fails, the files hold what they held. Then syncs, truncations and
// reads at growing distances, and each removal of a journal, which is what makes a commit stand.
TEST_P(FailingWriteTest, EveryOperationMayFail) {
    FaultVfs::install();
    ASSERT_NO_FATAL_FAILURE(learnBothSides());
    cn = folder.open();
    qint64 n = 1;
    for (; !through; n += command.reachesCompanions ? 13 : 1) {
        SCOPED_TRACE(n);
        ASSERT_LT(n, kMostWrites) << "the command never comes through";
        FaultVfs::arm(Operation::Write, n, n % 2 ? FaultVfs::Kind::IoError : FaultVfs::Kind::DiskFull);
        ASSERT_NO_FATAL_FAILURE(run(n));
    }
    EXPECT_GT(n, 20) << "the command wrote less than it should";
    for (const Operation operation : {Operation::Sync, Operation::Truncate, Operation::Read}) {
        through = false;
        for (n = 1; !through; n += 1 + n / 4) {
            SCOPED_TRACE(n + 10000 * static_cast<int>(operation));
            ASSERT_LT(n, 50 * kMostWrites) << "the command never comes through";
            FaultVfs::arm(operation, n);
            ASSERT_NO_FATAL_FAILURE(run(n));
        }
    }
    using Removal = FaultVfs::Removal;
    for (const Removal kind : {Removal::Fails, Removal::IsDone, Removal::IsLast})
        for (n = 1; n <= (command.reachesCompanions ? 7 : 3); ++n) {
            SCOPED_TRACE(n + 10 * static_cast<int>(kind));
            FaultVfs::armRemoval(n, kind);
            ASSERT_NO_FATAL_FAILURE(run(n));
        }
    if (command.reachesCompanions) {
        EXPECT_GT(std::min(settled[0], settled[1]), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, FailingWriteTest, testing::Range(0, durability::kCommandCount));
