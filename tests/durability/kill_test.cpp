#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include "durability/company_states.h"
#include "support/company_fixture.h"

using durability::Command;

namespace {

constexpr int kKills = 23;  // for each command

struct KillTest : testing::TestWithParam<Command> {
    KillTest() {
        folder.makeSample();
        auto cn = folder.open();
        // Both states, once each, before anything is killed.
        for (int side : {1, 0}) {
            QElapsedTimer clock;
            clock.start();
            durability::runTowards(*cn, GetParam(), side);
            span = static_cast<int>(clock.nsecsElapsed() / 1000 * 3);
            state[side] = support::dump(*cn);
        }
    }
    void workUntilKilled(int side, int microseconds) {
        QProcess child;
        child.start(QStringLiteral(DURABILITY_CHILD),
                    {folder.dataDir(), folder.company(), QString::number(static_cast<int>(GetParam())),
                     QString::number(side)});
        ASSERT_TRUE(child.waitForReadyRead(30000)) << child.readAllStandardError().constData();
        QThread::usleep(static_cast<unsigned long>(microseconds));
        child.kill();
        child.waitForFinished();
        ASSERT_EQ(child.exitStatus(), QProcess::CrashExit) << "the child ended by itself";
    }
    support::CompanyFolder folder;
    QByteArray state[2];
    int span = 0;  ///< microseconds in which a few commands run, however busy the machine is
};

}  // namespace

TEST_P(KillTest, LeavesEveryFileBeforeOrAfter) {
    ASSERT_TRUE(state[0] != state[1]);
    QRandomGenerator random(20261210);
    int seen[2] = {};
    int side = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        ASSERT_NO_FATAL_FAILURE(workUntilKilled(1 - side, static_cast<int>(random.bounded(span))));
        const QByteArray now = support::dump(*folder.open());
        side = now == state[1] ? 1 : 0;
        // Booleans: a failing comparison of whole dumps would print them.
        ASSERT_TRUE(now == state[side])
            << "kill " << kill << "\nbeside 0: " << support::firstDifference(state[0], now).constData()
            << "\nbeside 1: " << support::firstDifference(state[1], now).constData();
        ++seen[side];
    }
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0);
}

INSTANTIATE_TEST_SUITE_P(Commands, KillTest, testing::ValuesIn(durability::kCommands));
