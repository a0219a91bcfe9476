// Databases of the former form: what they hold, what of them can't be carried, and files that were damaged.
#include "company/migration.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include "company/company_files.h"
#include "company/jet_file.h"
#include "company/main_connection.h"
#include "schema/catalog.h"
#include "support/company_fixture.h"
#include "support/former_company.h"
#include "support/store_probe.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using Reason = store::Error::Reason;

class Jet : public testing::Test {
  protected:
    Jet() {
        write(u"旧社基本db.mdb"_s, original_);
        write(u"旧社賞与db.mdb"_s, original_);
    }
    QString path(const QString& name) const { return old_.filePath(name); }
    void write(const QString& name, const QByteArray& bytes) const {
        EXPECT_TRUE(support::writeFile(path(name), bytes));
    }
    QByteArray original_ = support::formerDatabase();
    QTemporaryDir old_, made_;
};

TEST_F(Jet, ReadsEveryTypeAndTellsWhatDoesNotHoldTogether) {
    const JetFile file(path(u"旧社基本db.mdb"_s), u"suzumeiro"_s);
    EXPECT_EQ(file.tables(), (QStringList{u"履歴書テーブル"_s, u"空テーブル"_s}));
    const JetFile::Rows rows = file.read(u"履歴書テーブル"_s);
    EXPECT_TRUE(rows.whole());
    ASSERT_EQ(rows.rows.size(), 8U);
    QStringList texts;
    for (std::size_t row : {0U, 1U, 2U})
        for (std::size_t column = 1; column < 8; ++column)
            texts << (rows.rows[row][column].isNull() ? u"-"_s : rows.rows[row][column].toText());
    EXPECT_EQ(texts.join(u' '),
              u"000001 山田 太郎 1960/4/1 True 300000 1.5 1 000002 ABC 1868/1/25 False 922337203685477.5807 "
              u"-1e+300 -1 "
              "000003 ｱｲｳ髙﨑ABC 1899/12/29 False -922337203685477.5808 4.94065645841247e-324 32767"_s);
    EXPECT_EQ(rows.dayTimes, 3);
    EXPECT_EQ(file.read(u"空テーブル"_s).rows.size(), 0U);
    const auto refused = [this](const QString& name, const QString& password) {
        return support::reasonOf([&] { JetFile(path(name), password); });
    };
    EXPECT_EQ(refused(u"旧社基本db.mdb"_s, u"別"_s), Reason::NotOpen);
    write(u"空"_s, {});
    write(u"短い"_s, original_.left(5000));
    write(u"違う"_s, QByteArray(20000, 'x'));
    ASSERT_TRUE(QFile::link(path(u"旧社基本db.mdb"_s), path(u"リンク"_s)));
    for (const QString& name : {u"空"_s, u"短い"_s, u"違う"_s, u"リンク"_s, u"ない"_s})
        EXPECT_EQ(refused(name, u"suzumeiro"_s), Reason::NotOpen) << name.toStdString();
}

TEST_F(Jet, BecomesACompanyAndLeavesTheOldFilesAsTheyAre) {
    const auto plan = planMigration(old_.path());
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->company, u"旧社"_s);
    EXPECT_TRUE(plan->loses());
    ASSERT_EQ(plan->tables.size(), 4U);
    const MovedTable& people = plan->tables[0];
    EXPECT_EQ(people.rows.size(), 8U);
    EXPECT_TRUE(people.notes.contains(u"列「基礎額Ａ」は引き継げません（値のある行 7件）。"_s))
        << people.notes.join(u'\n').toStdString();
    EXPECT_TRUE(people.notes.contains(u"時刻のついた日付が 3件あり、日付だけを引き継ぎます。"_s));
    EXPECT_EQ(plan->tables[2].notes, QStringList{u"このプログラムにないテーブルのため、引き継げません。"_s});
    const QString report = migrate(*plan, made_.path(), u"新社"_s);
    EXPECT_TRUE(report.contains(u"履歴書テーブル\t8件\t8件"_s)) << report.toStdString();
    EXPECT_TRUE(QFileInfo::exists(made_.filePath(u"新社/"_s + kMigrationReport)));
    auto cn = openMainConnection(made_.path(), u"新社"_s);
    EXPECT_EQ(support::textRows(
                  *cn, u"select 社員Code,氏名,生年月日 from 履歴書テーブル order by 社員Code limit 2"_s),
              (QStringList{u"000001|山田 太郎|1960/4/1"_s, u"000002|ABC|1868/1/25"_s}));
    EXPECT_EQ(cn->query(u"select count(*) from 性別マスタ"_s).value(0).toInteger(), 3)
        << "what the old one lacks stays";
    for (const QString& name : {u"旧社基本db.mdb"_s, u"旧社賞与db.mdb"_s}) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.readAll() == original_);
    }
    EXPECT_EQ(support::reasonOf([&] { migrate(*plan, made_.path(), u"新社"_s); }), Reason::NotOpen);
}

TEST_F(Jet, AmountsAreComparedByDateAndLooseCodesAreTold) {
    Migration plan{.company = u"旧社"_s, .folder = old_.path()};
    const schema::Table& table = schema::tableNamed(u"S配分基準対応社員"_s);
    const auto at = [&table](const QString& name) {
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            if (table.columns[i].name == name) return i;
        return std::size_t(0);
    };
    MovedTable paid{.file = u"旧社賞与db.mdb"_s, .name = table.name, .table = &table, .found = 3};
    for (int i = 0; i < 3; ++i) {
        auto& row = paid.rows.emplace_back(table.columns.size());
        row[at(u"社員Code"_s)] = u"00000%1"_s.arg(i);
        row[at(u"基準日"_s)] = QDate(2026, 6 + 6 * (i / 2), 10);
        row[at(u"合計"_s)] = store::Money::fromYen(100000 + i);
    }
    plan.tables.push_back(paid);
    const QString report = migrate(plan, made_.path(), u"新社"_s);
    EXPECT_TRUE(report.contains(u"\t2026/6/10 合計\t200,001\t200,001\n"_s) &&
                report.contains(u"\t2026/12/10 合計\t100,002\t100,002\n"_s))
        << report.toStdString();
    // A sum that can't be told is no company.
    plan.tables[0].rows[0][at(u"合計"_s)] = plan.tables[0].rows[1][at(u"合計"_s)] =
        store::Money::fromRaw(std::numeric_limits<qint64>::max());
    EXPECT_EQ(support::reasonOf([&] { migrate(plan, made_.path(), u"他社"_s); }), Reason::Overflow);
    EXPECT_EQ(QDir(made_.path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"新社"_s});
    QFile::remove(path(u"旧社賞与db.mdb"_s));
    EXPECT_EQ(support::reasonOf([&] { planMigration(old_.path()); }), Reason::NotOpen);
}

// Whatever a damage makes of the bytes: a clear end, and no row that the file does not state without a word.
TEST_F(Jet, AThousandDamagesEndClearly) {
    QRandomGenerator random(20261210);
    int told = 0;
    for (int n = 0; n < 1000; ++n) {
        SCOPED_TRACE(n);
        QByteArray bytes = original_;
        // Aimed at the words that lead on: the heads of pages, of definitions and rows; now and then a cut.
        for (quint32 hits = 1 + random.bounded(4U); hits > 0; --hits) {
            const quint32 page = random.bounded(quint32(bytes.size() / 4096));
            const quint32 offset = random.bounded(3U) ? random.bounded(0x60U) : random.bounded(4096U);
            bytes[qsizetype(page * 4096 + offset)] = char(random.bounded(256U));
        }
        if (n % 50 == 0) bytes.truncate(qsizetype(random.bounded(quint32(bytes.size()))));
        write(u"旧社基本db.mdb"_s, bytes);
        try {
            const auto plan = planMigration(old_.path());
            for (const MovedTable& moved : plan->tables) {
                EXPECT_LT(moved.rows.size(), 100000U);
                told += moved.loses;
            }
        } catch (const store::Error& error) {
            EXPECT_FALSE(error.text().isEmpty());
            ++told;
        }
    }
    EXPECT_GT(told, 100);
}

}  // namespace
}  // namespace company
