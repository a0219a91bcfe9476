#pragma once
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "company/key.h"
#include "durability/company_states.h"
#include "personnel/code_change.h"
#include "schema/files.h"
#include "support/company_fixture.h"

namespace durability {

/// A company that stands on side 0 of a command, and how both sides look.
struct BrokenRunTest : testing::TestWithParam<int> {
    /// What the main connection shows, or, where the command goes on to the companions, each of kFiles.
    using Files = std::vector<QByteArray>;
    static constexpr schema::File kFiles[] = {schema::File::Kihon, schema::File::Syouyo,
                                              schema::File::Chingin, schema::File::Hyouka};
    static constexpr std::size_t kOwn = 2;  ///< those behind them are the companions'

    void learnBothSides() {
        folder.makeSample();
        if (command.reachesCompanions)
            for (const schema::File file : kFiles)
                watchers.push_back(
                    std::make_unique<store::Connection>(folder.file(file), company::sharedKey()));
        auto cn = folder.open();
        for (int each : {0, 1, 0}) {
            command.runTowards(*cn, each);
            state[each] = look(*cn);
        }
        for (std::size_t file = 0; file < state[0].size(); ++file)
            ASSERT_TRUE(state[0][file] != state[1][file]) << file;
    }
    Files look(store::Connection& cn) {
        if (watchers.empty()) return {support::dump(cn)};
        Files files;
        for (const auto& watcher : watchers) files.push_back(support::dump(*watcher));
        return files;
    }
    /// Learns where a broken run left the company: its side, and whether it waits for an answer. Then what
    /// the user is told about the companions' files is true, and the answer brings all to that side.
    void settle(store::Connection& cn, bool finish) {
        const auto change = personnel::cutOffChange(databasesOf(cn));
        pending = change.has_value();
        if (change) {
            const int from = change->from.code == kRenamed[1];
            const Files now = look(cn);
            for (std::size_t file = kOwn; file < now.size(); ++file) {
                const bool changed =
                    change->changed.contains(schema::fileName(folder.company(), kFiles[file]));
                ASSERT_TRUE(now[file] == state[changed ? 1 - from : from][file]) << "file " << file;
            }
            if (finish)
                personnel::finishChange(databasesOf(cn), *change);
            else
                personnel::takeBackChange(databasesOf(cn), *change);
            ++settled[finish];
            ASSERT_FALSE(personnel::cutOffChange(databasesOf(cn)));
            side = finish ? 1 - from : from;
        }
        const Files now = look(cn);
        if (!change) side = now.back() == state[1].back();
        // What a removal took from a companion's file does not come back.
        const bool gone = change && change->removal && !finish;
        for (std::size_t file = 0; file < now.size(); ++file)
            // Booleans: a failing comparison of whole dumps would print them.
            ASSERT_TRUE(now[file] == state[side][file] ||
                        (gone && file >= kOwn && now[file] == state[1][file]))
                << "file " << file << " beside side " << side << '\n'
                << support::firstDifference(state[side][file], now[file]).constData();
        if (gone) command.runTowards(cn, 0);
    }

    const Command& command = kCommands[GetParam()];
    support::CompanyFolder folder;
    std::vector<std::unique_ptr<store::Connection>> watchers;
    Files state[2];
    int side = 0;
    bool pending = false;
    int settled[2] = {};  ///< changes taken back, and brought to their end
};

}  // namespace durability
