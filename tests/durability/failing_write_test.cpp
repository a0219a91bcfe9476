#include <gtest/gtest.h>

#include "durability/company_states.h"
#include "support/company_fixture.h"
#include "support/fault_vfs.h"

using durability::Command;

namespace {

struct FailingWriteTest : testing::TestWithParam<Command> {
    FailingWriteTest() {
        FaultVfs::install();
        folder.makeSample();
        auto cn = folder.open();
        durability::runTowards(*cn, GetParam(), 0);
        before = support::dump(*cn);
    }
    support::CompanyFolder folder;
    QByteArray before;
};

}  // namespace

// Fails the first write of the command, then the second, … until the command comes through: whatever fails,
// the files hold what they held, for the program that goes on and for the next that opens them.
TEST_P(FailingWriteTest, EveryWriteMayFail) {
    auto cn = folder.open();
    bool through = false;
    for (qint64 n = 1; !through; ++n) {
        FaultVfs::armWrite(n, n % 2 ? FaultVfs::Kind::IoError : FaultVfs::Kind::DiskFull);
        try {
            durability::runTowards(*cn, GetParam(), 1);
            through = true;
        } catch (const store::Error& error) {
            EXPECT_FALSE(error.text().isEmpty());
        }
        FaultVfs::disarm();
        if (through) {
            EXPECT_GT(n, 20) << "the command wrote less than it should";
            break;
        }
        EXPECT_FALSE(cn->inTransaction());
        ASSERT_TRUE(support::dump(*cn) == before) << "write " << n;
        if (n % 10 == 0) {
            cn.reset();
            cn = folder.open();
            ASSERT_TRUE(support::dump(*cn) == before) << "write " << n << ", opened again";
        }
    }
    EXPECT_TRUE(support::dump(*cn) != before);
}

INSTANTIATE_TEST_SUITE_P(Commands, FailingWriteTest, testing::ValuesIn(durability::kCommands));
