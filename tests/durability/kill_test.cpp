#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include "durability/broken_run.h"

namespace {

constexpr int kKills = 23;  // for each command

struct KillTest : durability::BrokenRunTest {
    void workUntilKilled(int towards, int microseconds) {
        QProcess child;
        child.start(
            QStringLiteral(DURABILITY_CHILD),
            {folder.dataDir(), folder.company(), QString::number(GetParam()), QString::number(towards)});
        ASSERT_TRUE(child.waitForReadyRead(30000)) << child.readAllStandardError().constData();
        QThread::usleep(static_cast<unsigned long>(microseconds));
        child.kill();
        child.waitForFinished();
        ASSERT_EQ(child.exitStatus(), QProcess::CrashExit) << "the child ended by itself";
    }
};

}  // namespace

// Every third time a change that was cut off is left to the next run, which goes on with it or takes it back
// by itself and may be killed in that.
TEST_P(KillTest, LeavesEveryFileBeforeOrAfter) {
    ASSERT_NO_FATAL_FAILURE(learnBothSides());
    // Microseconds in which the command runs, some times where it goes back, however busy the machine is.
    auto cn = folder.open();
    QElapsedTimer clock;
    clock.start();
    command.runTowards(*cn, 1);
    const int span = static_cast<int>(clock.nsecsElapsed() / 1000 * (command.goesBack ? 3 : 1));
    QRandomGenerator random(20261210);
    int seen[2] = {};
    side = 1;
    for (int kill = 0; kill < kKills; ++kill) {
        SCOPED_TRACE(kill);
        if (!command.goesBack && side == 1) command.runTowards(*cn, side = 0);
        cn.reset();
        ASSERT_NO_FATAL_FAILURE(workUntilKilled(1 - side, static_cast<int>(random.bounded(span))));
        cn = folder.open();
        if (kill % 3 == 2 && personnel::cutOffChange(durability::databasesOf(*cn))) continue;
        ASSERT_NO_FATAL_FAILURE(settle(*cn, settled[0] > settled[1]));
        ++seen[side];
    }
    EXPECT_GT(std::min(seen[0], seen[1]), 0);
    if (command.reachesCompanions) {
        EXPECT_GT(std::min(settled[0], settled[1]), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, KillTest, testing::Range(0, durability::kCommandCount));
