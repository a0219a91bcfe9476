#include "personnel/code_references.h"

#include <gtest/gtest.h>

#include <QFile>
#include <map>
#include <optional>
#include <set>

#include "company/key.h"
#include "personnel/code_change.h"
#include "schema/catalog.h"
#include "support/company_fixture.h"
#include "support/store_probe.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;
using namespace support;
using schema::File;

/// What the name of a column tells: which code it holds, in the order of Referent behind the employee. Apart
/// from the map, so that each watches the other.
const QStringList kEntries =
    u"社員区分 所属大 役職 職種 コース 所属小 異動事由 住宅区分 最終学歴 採用区分 資格・免許 続柄グループ "
    u"続柄 "
    "出身地 自由1 自由2 自由3 自由4 自由5 配分区分 配分基準"_s.split(u' ');
std::optional<Referent> namedBy(const QString& column) {
    if (column.contains(u"社員Code") || column.contains(u"評価者")) return Referent::Syain;
    for (int i = 0; i < kEntries.size(); ++i)
        if (column.contains(kEntries[i])) return Referent(i + 1);
    return {};
}

/// The columns that hold a code of that kind by their name: short texts. The names of entries are longer, the
/// judgments of automatic input are marks, and the code itself stands in its own table.
struct Found {
    Referent referent;
    const schema::Table* table;
    QString column;
};
std::vector<Found> columnsByName() {
    std::vector<Found> found;
    for (const schema::Table& table : schema::catalog())
        for (const schema::Column& column : table.columns) {
            const bool code = column.type.kind == store::TypeKind::Text && column.type.width <= 6;
            const bool own = table.name == u"履歴書テーブル" && column.name == u"社員Code";
            if (!code || own || column.name.endsWith(u"係数")) continue;
            if (const auto referent = namedBy(column.name)) found.push_back({*referent, &table, column.name});
        }
    return found;
}

/// A code that stands nowhere else, so that each place where it is found was put there by the test.
CodeKey key(Referent referent, QChar mark) {
    const QString code = QString(QChar(u'a' + int(referent))) + mark;
    if (referent == Referent::Syain) return {code.repeated(3), {}};
    const bool ofTwo = referent == Referent::SyozokuSyo || referent == Referent::HaibunKijun;
    return {code, ofTwo ? u"zz"_s : QString()};
}
QString parentColumn(const QString& column) {
    return QString(column).replace(u"小"_s, u"大"_s).replace(u"基準"_s, u"区分"_s);
}
constexpr QChar kOld = u'<';
constexpr QChar kNew = u'>';

class CodeReferences : public ::testing::Test {
  protected:
    /// A row with the code in each column of that kind, in every file.
    void use(Referent referent, const CodeKey& code) {
        for (const Found& place : columnsByName()) {
            if (place.referent != referent) continue;
            store::Connection& cn = connectionTo(place.table->file);
            if (place.table->lifetime == schema::Lifetime::Scratch && !cn.hasTable(place.table->name))
                for (const QString& sql : schema::createStatements(*place.table)) cn.execute(sql);
            if (!code.parent.isEmpty()) {
                cn.execute(u"insert into %1(%2,%3) values(?,?)"_s.arg(place.table->name, place.column,
                                                                      parentColumn(place.column)),
                           {code.code, code.parent});
            } else {
                cn.execute(u"insert into %1(%2) values(?)"_s.arg(place.table->name, place.column),
                           {code.code});
            }
            ++used_[referent];
        }
    }
    store::Connection& connectionTo(File file) {
        if (file == File::Kihon || file == File::Syouyo) return *cn_;
        auto& secondary = secondaries_[file];
        if (!secondary)
            secondary = std::make_unique<store::Connection>(folder_.file(file), company::sharedKey());
        return *secondary;
    }
    CompanyDatabases company() { return {*cn_, folder_.dataDir(), folder_.company()}; }

    CompanyFolder folder_;
    std::unique_ptr<store::Connection> cn_;
    std::map<File, std::unique_ptr<store::Connection>> secondaries_;
    std::map<Referent, qsizetype> used_;
};

TEST_F(CodeReferences, TheMapHoldsEveryColumnThatNamesSomebodyOrAnEntry) {
    std::set<QString> byName, mapped;
    for (const Found& found : columnsByName())
        byName.insert(u"%1.%2 %3"_s.arg(found.table->name, found.column).arg(int(found.referent)));
    for (const Reference& reference : codeReferences()) {
        const QString column = reference.table->columns[size_t(reference.column)].name;
        mapped.insert(u"%1.%2 %3"_s.arg(reference.table->name, column).arg(int(reference.refersTo)));
    }
    EXPECT_EQ(byName, mapped);
}

/// After a rename no table of any file holds the old code, after a removal none holds it at all; what people
/// use is refused before, and the same section code under another department is another section.
TEST_F(CodeReferences, ACodeIsCarriedThroughEveryFileAndGoesFromEveryFile) {
    folder_.makeEmpty(u"甲社"_s, {true, true});
    cn_ = folder_.open();
    std::vector<Referent> all;
    for (int i = 0; i < domain::kReferents; ++i) all.push_back(Referent(i));
    for (const Referent referent : all) use(referent, key(referent, kOld));
    secondaries_.clear();
    const QString section = key(Referent::SyozokuSyo, kOld).code;
    cn_->execute(u"insert into 異動テーブル(所属大,所属小,コメント) values('ww',?,'よその所属')"_s,
                 {section});

    cn_->executeScript(u"BEGIN"_s);
    for (const Referent referent : all)
        renameCode(company(), referent, key(referent, kOld), key(referent, kNew));
    cn_->executeScript(u"COMMIT"_s);
    QByteArray found = folder_.fingerprint();
    for (const Referent referent : all) {
        const qsizetype strangers = referent == Referent::SyozokuSyo ? 1 : 0;
        EXPECT_EQ(found.count(key(referent, kOld).code.toUtf8()), strangers) << int(referent);
        EXPECT_EQ(found.count(key(referent, kNew).code.toUtf8()), used_[referent]) << int(referent);
        EXPECT_GT(used_[referent], 0) << int(referent);
        for (const CodeUse& use : codeUsage(*cn_, referent, key(referent, kNew))) {
            EXPECT_NE(referent, Referent::Syain);
            EXPECT_EQ(use.rows, 1) << qPrintable(use.label);
        }
    }
    // People and runs let go of the codes; only then they are removed.
    for (const Reference& reference : codeReferences()) {
        if (reference.onRemoval != Reference::OnRemoval::Refused) continue;
        const CodeKey held = key(reference.refersTo, kNew);
        EXPECT_THROW(removeCode(company(), reference.refersTo, held), store::Error);
        cn_->execute(u"delete from %1 where %2 = ?"_s.arg(
                         reference.table->name, reference.table->columns[size_t(reference.column)].name),
                     {held.code});
    }
    cn_->executeScript(u"BEGIN"_s);
    for (const Referent referent : all) removeCode(company(), referent, key(referent, kNew));
    cn_->executeScript(u"COMMIT"_s);
    found = folder_.fingerprint();
    for (const Referent referent : all)
        EXPECT_EQ(found.count(key(referent, kNew).code.toUtf8()), 0) << int(referent);
}

/// What was assigned, entered and paid forbids the removal of a criterion, its set-up goes with it; the same
/// code under another 配分区分 is another criterion.
TEST_F(CodeReferences, RunsHoldACriterionAndItsSetUpGoesWithIt) {
    folder_.makeEmpty(u"甲社"_s);
    cn_ = folder_.open();
    const CodeKey gone{u"07"_s, u"02"_s}, stays{u"07"_s, u"03"_s}, moved{u"08"_s, u"04"_s};
    for (const CodeKey& criterion : {gone, stays}) use(Referent::HaibunKijun, criterion);
    const auto rowsOf = [&](const CodeKey& criterion) {
        qint64 rows = 0;
        for (const Found& place : columnsByName())
            if (place.referent == Referent::HaibunKijun)
                rows += cn_->query(u"select count(*) from %1 where %2 = ? and %3 = ?"_s.arg(
                                       place.table->name, place.column, parentColumn(place.column)),
                                   {criterion.code, criterion.parent})
                            .value(0)
                            .toInteger();
        return rows;
    };
    const qint64 all = rowsOf(stays);
    ASSERT_EQ(all, 31);
    QStringList holders;
    for (const CodeUse& held : codeUsage(*cn_, Referent::HaibunKijun, gone)) holders << held.table;
    EXPECT_EQ(holders,
              u"S配分基準対応社員 S実行個人別計算 S実行個人別計算決定 S実行総額配分 S実行総額配分決定 "
              "S実行予算 Sshikyuukeisuu SshikyuukeisuuHA S配分基準グループＹＮ"_s.split(u' '));
    const QByteArray before = dump(*cn_);
    EXPECT_THROW(removeCode(company(), Referent::HaibunKijun, gone), store::Error);
    EXPECT_EQ(firstDifference(before, dump(*cn_)), "");
    for (const QString& holder : holders)
        cn_->execute(u"delete from %1 where 配分区分 = ?"_s.arg(holder), {gone.parent});
    removeCode(company(), Referent::HaibunKijun, gone);
    EXPECT_EQ(rowsOf(gone), 0);
    EXPECT_EQ(rowsOf(stays), all);
    renameCode(company(), Referent::HaibunKijun, stays, moved);
    EXPECT_EQ(rowsOf(stays), 0);
    EXPECT_EQ(rowsOf(moved), all);

    cn_->execute(u"insert into S配分基準(配分区分,Code) values('05','01')"_s);
    const auto held = codeUsage(*cn_, Referent::HaibunKubun, {u"05"_s, {}});
    ASSERT_EQ(held.size(), 1u);
    EXPECT_EQ(held.front().table, u"S配分基準"_s);
    renameEntry(*cn_, Referent::HaibunKijun, {u"01"_s, u"05"_s}, {u"09"_s, u"05"_s});
    EXPECT_TRUE(entryStands(*cn_, Referent::HaibunKijun, {u"09"_s, u"05"_s}));
    EXPECT_FALSE(entryStands(*cn_, Referent::HaibunKijun, {u"01"_s, u"05"_s}));
}

/// A step on a file of its own stands when the main transaction is taken back; a missing file is passed over;
/// copies of the name follow the code.
TEST_F(CodeReferences, SecondaryFilesStandByThemselves) {
    folder_.makeEmpty(u"甲社"_s, {true, true});
    cn_ = folder_.open();
    const CodeKey from = key(Referent::Syain, kOld), to = key(Referent::Syain, kNew);
    use(Referent::Syain, from);
    secondaries_.clear();
    cn_->executeScript(u"BEGIN"_s);
    renameCode(company(), Referent::Syain, from, to, u"改名　花子"_s);
    cn_->executeScript(u"ROLLBACK"_s);
    store::Connection chingin(folder_.file(File::Chingin), company::sharedKey());
    for (const QString& table : {u"C改定テーブル"_s, u"C改定シミュレーションテーブル"_s}) {
        const auto copy = chingin.query(u"select 社員Code, 氏名 from "_s + table);
        EXPECT_EQ(copy.value(0).toText() + copy.value(1).toText(), to.code + u"改名　花子"_s);
    }
    EXPECT_EQ(employeeHistory(*cn_, from.code).size(), 9u);  // four of people, five of runs
    // A removal leaves the raise to the last, as the companion does.
    chingin.execute(u"create table 順(表)"_s);
    for (const schema::Table& table : schema::catalog())
        if (table.file == File::Chingin)
            chingin.execute(
                u"create trigger 順%1 after delete on %1 begin insert into 順 values('%1'); end"_s.arg(
                    table.name));
    removeCode(company(), Referent::Syain, to);
    const QStringList visited =
        support::texts(chingin.query(u"select 表 from 順 order by rowid"_s)).split(u' ');
    EXPECT_EQ(visited.size(), 12);
    EXPECT_EQ(visited.mid(10), (QStringList{u"C改定ベア新賃金体系基本給"_s, u"C改定ベア新賃金体系手当"_s}));
    EXPECT_TRUE(employeeHistory(*cn_, to.code).empty());

    folder_.makeEmpty(u"乙社"_s);
    cn_ = folder_.open();
    cn_->execute(u"insert into 異動テーブル(社員Code) values(?)"_s, {from.code});
    removeCode(company(), Referent::Syain, from);
    EXPECT_TRUE(employeeHistory(*cn_, from.code).empty());
    EXPECT_FALSE(QFile::exists(folder_.file(File::Chingin)));
}

/// A change that ends in the middle is found again, and each way of settling it leads to one of the two
/// states, however often it is begun.
TEST_F(CodeReferences, WhatWasCutOffGoesToItsEndOrBack) {
    const struct {
        Referent referent;
        bool removal, finish;
    } cases[] = {{Referent::Syain, false, true},      {Referent::Syain, false, false},
                 {Referent::SyozokuSyo, false, true}, {Referent::SyozokuSyo, false, false},
                 {Referent::Syain, true, true},       {Referent::Syain, true, false}};
    // By the connections that stand: a new one for each look would take most of the test's time.
    const auto all = [&] {
        return dump(*cn_) + dump(connectionTo(File::Chingin)) + dump(connectionTo(File::Hyouka));
    };
    int companies = 0;
    for (const auto& [referent, removal, finish] : cases) {
        SCOPED_TRACE(int(referent) * 100 + removal * 10 + finish);
        secondaries_.clear();
        folder_.makeEmpty(u"会社%1"_s.arg(++companies), {true, true});
        cn_ = folder_.open();
        const CodeKey from = key(referent, kOld), to = key(referent, kNew);
        use(referent, from);
        for (const QString& copy : {u"C改定テーブル"_s, u"C改定シミュレーションテーブル"_s})
            connectionTo(File::Chingin).execute(u"update %1 set 氏名 = '元　花子'"_s.arg(copy));
        if (referent == Referent::Syain)
            cn_->execute(u"insert into 履歴書テーブル(社員Code,氏名) values(?,'元　花子')"_s, {from.code});
        else
            cn_->execute(u"insert into 所属小マスタ(所属大,Code) values(?,?)"_s, {from.parent, from.code});
        const QByteArray before = all();
        if (companies == 1) {  // Nothing has happened yet: the note goes without a word.
            announceRename(company(), referent, from, to);
            EXPECT_FALSE(cutOffChange(company()));
            EXPECT_EQ(firstDifference(before, all()), "");
        }

        if (removal)
            announceRemoval(company(), referent, from);
        else
            announceRename(company(), referent, from, to);
        cn_->executeScript(u"BEGIN"_s);
        if (removal)
            removeCode(company(), referent, from);
        else
            renameCode(company(), referent, from, to, u"改名　花子"_s);
        cn_->executeScript(u"ROLLBACK"_s);
        const auto change = cutOffChange(company());
        ASSERT_TRUE(change);
        EXPECT_EQ(change->changed.size(), 2);
        EXPECT_EQ(change->unchanged.size(), 2);
        EXPECT_EQ(change->changed.front(), folder_.company() + u"賃金db.mdb"_s);
        EXPECT_TRUE(change->from == from && change->removal == removal && change->clear);
        if (!finish) {
            takeBackChange(company(), *change);
            EXPECT_FALSE(cutOffChange(company()));
            if (!removal) {
                EXPECT_EQ(firstDifference(before, all()), "");
            }
            continue;
        }
        finishChange(company(), *change);
        EXPECT_FALSE(cutOffChange(company()));
        const QByteArray after = all();
        EXPECT_EQ(after.count(from.code.toUtf8()), 0);
        EXPECT_EQ(after.count(to.code.toUtf8()), removal ? 0 : before.count(from.code.toUtf8()));
    }
}

}  // namespace
}  // namespace personnel
