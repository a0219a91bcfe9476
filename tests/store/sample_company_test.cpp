#include "sample_company.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "support/company_fixture.h"

namespace {

using sample::People;
using sample::SampleOptions;
using store::Binds;
using support::CompanyFolder;

qint64 scalar(store::Connection& cn, const QString& sql, const Binds& binds = {}) {
    store::Recordset rows = cn.query(sql, binds);
    return rows.value(0).isNull() ? -1 : rows.value(0).toInteger();
}

/// Reads only: one company serves all tests.
class SampleCompany : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<CompanyFolder>();
        folder_->makeSample();
        cn_ = folder_->open();
    }
    static void TearDownTestSuite() {
        cn_.reset();
        folder_.reset();
    }
    static qint64 count(const QString& from, const Binds& binds = {}) {
        return scalar(*cn_, QStringLiteral("SELECT count(*) FROM ") + from, binds);
    }
    inline static std::unique_ptr<CompanyFolder> folder_;
    inline static std::unique_ptr<store::Connection> cn_;
};

TEST_F(SampleCompany, CoversEveryBranchOfTheSetUp) {
    const struct {
        const char* from;
        int least;
    } branches[] = {
        {"S配分区分 WHERE 表示 <> 0", 2},
        {"S配分区分 WHERE 表示 = 0", 1},
        {"S配分基準 WHERE 表示 <> 0", 4},
        {"S配分基準 WHERE 表示 = 0", 1},
        {"S配分基準 WHERE 個人別計算 <> 0 AND 総額配分 = 0", 1},
        {"S配分基準 WHERE 個人別計算 = 0 AND 総額配分 <> 0", 1},
        {"S配分基準 WHERE 個人別計算 <> 0 AND 総額配分 <> 0 AND 金一封 <> 0", 1},
        {"S配分基準 WHERE 金一封 <> 0 AND 特別加算金 <> 0 AND 表示 <> 0", 1},
        {"S係数設定 WHERE 算定方式 = '1' AND 基礎額Ａ <> 0 AND 基礎額Ｂ = 0", 1},
        {"S係数設定 WHERE 算定方式 = '1' AND 基礎額Ａ = 0 AND 基礎額Ｂ <> 0", 1},
        {"S係数設定 WHERE 算定方式 = '1' AND 基礎額Ａ <> 0 AND 基礎額Ｂ <> 0", 1},
        {"S係数設定 WHERE 算定方式 = '1' AND 基礎額Ａ = 0 AND 基礎額Ｂ = 0", 1},
        {"S係数設定 WHERE 算定方式 = '2' AND 基礎額Ａ = 0 AND 基礎額Ｂ = 0", 1},
        {"S係数設定 WHERE 入力区分Code = '1'", 1},
        {"S係数設定 WHERE 入力区分Code = '2'", 1},
        {"(SELECT DISTINCT 設定方法 FROM S基礎額設定)", 3},
        {"(SELECT DISTINCT 設定方法 FROM S支給係数設定)", 3},
        {"(SELECT DISTINCT 評語タイプ FROM S係数評価段階設定)", 3},
        {"(SELECT DISTINCT 評語タイプ FROM S評価2テーブル)", 12},
        {"S評価2テーブル WHERE 評語タイプ = '1'", 9},
        {"S係数年齢2 WHERE 配分基準 = '01' AND 配分区分 = '01'", 48},
        {"S支給係数評価あり WHERE 配分区分 = '01' AND 配分基準 = '01'", 6},
        {"(SELECT DISTINCT 単価, 端数処理 FROM Tanka_hasuu)", 3},
        {"S配分基準対応社員 WHERE 金一封 > 0", 1},
        {"S配分基準対応社員 WHERE 特別加算金 > 0", 1},
        {"(SELECT DISTINCT 分類Code FROM Ｈ評価実績)", 3},
        {"(SELECT DISTINCT 基準日 FROM C新賃金体系基本給)", 3},
        {"(SELECT DISTINCT 手当 FROM C新賃金体系手当)", 3},
        {"出身地マスタ", 47},
        {"家族テーブル", 20},
        {"資格・免許テーブル", 20},
        {"履歴書テーブル WHERE 退職フラグ <> 0", 3},
        {"(SELECT 社員Code FROM 異動テーブル GROUP BY 社員Code HAVING count(*) >= 4)", 5},
        {"Sshikyuukeisuu WHERE 設定方法 = '2' AND 一律係数 = 2.5", 2},
        {"SshikyuukeisuuHA", 12},
    };
    for (const auto& branch : branches)
        EXPECT_GE(count(QString::fromUtf8(branch.from)), branch.least) << branch.from;
    EXPECT_EQ(scalar(*cn_, QStringLiteral("SELECT count(*) FROM 会社テーブル WHERE 自由マスタ3 = '組合' AND "
                                          "自由マスタ4 = '未設定' AND 自由マスタ5 = '未設定'")),
              1);
    for (const store::Table& table : store::catalog())
        if (table.lifetime == store::Lifetime::Permanent && table.file == store::File::Chingin) {
            EXPECT_GT(count(table.name), 0) << table.name.toStdString();
        }
}

TEST_F(SampleCompany, EveryCodeStandsInItsMaster) {
    const struct {
        const char* table;
        const char* column;
        const char* master;
        const char* key;
    } references[] = {
        {"履歴書テーブル", "性別", "性別マスタ", "Code"},
        {"履歴書テーブル", "婚姻区分", "婚姻区分マスタ", "Code"},
        {"履歴書テーブル", "世帯主区分", "世帯主区分マスタ", "Code"},
        {"履歴書テーブル", "最終学歴", "最終学歴マスタ", "Code"},
        {"履歴書テーブル", "出身地", "出身地マスタ", "Code"},
        {"履歴書テーブル", "住宅区分", "住宅区分マスタ", "Code"},
        {"履歴書テーブル", "採用区分", "採用区分マスタ", "Code"},
        {"履歴書テーブル", "自由1", "自由マスタ1", "Code"},
        {"履歴書テーブル", "自由2", "自由マスタ2", "Code"},
        {"履歴書テーブル", "自由3", "自由マスタ3", "Code"},
        {"異動テーブル", "異動事由", "異動事由マスタ", "Code"},
        {"異動テーブル", "社員区分", "社員区分マスタ", "Code"},
        {"異動テーブル", "所属大||所属小", "所属小マスタ", "所属大||Code"},
        {"異動テーブル", "役職", "役職マスタ", "Code"},
        {"異動テーブル", "職種", "職種マスタ", "Code"},
        {"異動テーブル", "コース", "コースマスタ", "Code"},
        {"所属小マスタ", "所属大", "所属大マスタ", "Code"},
        {"家族テーブル", "続柄", "続柄マスタ", "Code"},
        {"家族テーブル", "性別", "性別マスタ", "Code"},
        {"家族テーブル", "扶養", "扶養マスタ", "Code"},
        {"家族テーブル", "同居", "同居マスタ", "Code"},
        {"家族テーブル", "障害", "障害マスタ", "Code"},
        {"続柄マスタ", "続柄グループ", "続柄グループマスタ", "Code"},
        {"資格・免許テーブル", "\"資格・免許\"", "資格・免許マスタ", "Code"},
        {"資格・免許テーブル", "業務必要性", "業務必要性マスタ", "Code"},
        {"S配分基準対応社員", "配分区分||配分基準", "S配分基準", "配分区分||Code"},
        {"S実行個人別計算", "配分区分||配分基準", "S配分基準", "配分区分||Code"},
        {"S係数設定", "配分区分Code||配分基準Code", "S配分基準", "配分区分||Code"},
        {"S係数設定", "設定名称", "S係数名称設定", "Code"},
        {"S係数役職", "役職", "役職マスタ", "Code"},
        {"S係数所属大", "所属大", "所属大マスタ", "Code"},
        {"S係数自由1", "自由1", "自由マスタ1", "Code"},
        {"C新賃金体系基本給", "基本給Code", "C基本給設定テーブル", "基本給Code"},
        {"C新賃金体系手当", "手当", "C手当設定テーブル", "手当"},
        {"S基礎額手当", "手当", "C手当設定テーブル", "手当"},
        {"S基礎額基本給", "基本給", "C基本給設定テーブル", "基本給"},
    };
    for (const auto& r : references)
        EXPECT_EQ(count(QStringLiteral("%1 WHERE (%2) IS NOT NULL AND (%2) NOT IN (SELECT %4 FROM %3)")
                            .arg(QString::fromUtf8(r.table), QString::fromUtf8(r.column),
                                 QString::fromUtf8(r.master), QString::fromUtf8(r.key))),
                  0)
            << r.table << "." << r.column;
    EXPECT_EQ(count(QStringLiteral("(SELECT Code FROM 所属小マスタ GROUP BY Code HAVING count(*) > 1)")), 0);
    EXPECT_EQ(count(QStringLiteral(
                  "(SELECT 社員Code FROM 異動テーブル GROUP BY 社員Code, 異動日 HAVING count(*) > 1)")),
              0);
    EXPECT_EQ(count(QStringLiteral("異動テーブル i JOIN 履歴書テーブル r ON r.社員Code = i.社員Code "
                                   "WHERE i.異動日 < r.入社日 OR r.入社日 <= r.生年月日")),
              0);
    for (const store::Table& table : store::catalog())
        for (const store::Column& column : table.columns)
            if (column.name == QStringLiteral("社員Code") && cn_->hasTable(table.name)) {
                EXPECT_EQ(
                    count(QStringLiteral("%1 WHERE 社員Code NOT IN (SELECT 社員Code FROM 履歴書テーブル)")
                              .arg(table.name)),
                    0)
                    << table.name.toStdString();
            }
}

int bytesOf(const QString& text) {
    int bytes = 0;
    for (QChar c : text)
        bytes += c.unicode() < 0x80 || (c.unicode() >= 0xFF61 && c.unicode() <= 0xFF9F) ? 1 : 2;
    return bytes;
}

TEST_F(SampleCompany, NamesAndAddressesFitTheirFields) {
    const struct {
        const char* sql;
        int limit;
    } limits[] = {
        {"SELECT 氏名 FROM 履歴書テーブル", 20},  {"SELECT フリガナ FROM 履歴書テーブル", 20},
        {"SELECT 氏名 FROM 家族テーブル", 20},    {"SELECT フリガナ FROM 家族テーブル", 20},
        {"SELECT 住所1 FROM 履歴書テーブル", 40}, {"SELECT 電話番号 FROM 履歴書テーブル", 13},
        {"SELECT 役職 FROM 役職マスタ", 16},      {"SELECT 自由1 FROM 自由マスタ1", 16},
        {"SELECT 所属小 FROM 所属小マスタ", 16},  {"SELECT \"資格・免許\" FROM 資格・免許マスタ", 16},
    };
    for (const auto& limit : limits) {
        store::Recordset rows = cn_->query(QString::fromUtf8(limit.sql));
        for (; !rows.eof(); rows.moveNext()) {
            const QString text = rows.value(0).toText();
            EXPECT_LE(bytesOf(text), limit.limit) << text.toStdString();
            EXPECT_GT(text.size(), 0) << limit.sql;
        }
    }
    store::Recordset longName =
        cn_->query(QStringLiteral("SELECT 氏名 FROM 履歴書テーブル WHERE 社員Code = ?"), {People::kLongName});
    EXPECT_EQ(bytesOf(longName.value(0).toText()), 20);
}

TEST_F(SampleCompany, TheNamedPeopleHaveTheirStories) {
    const auto rowsAt = [&](const char16_t* code, int date) {
        return count(QStringLiteral("S配分基準対応社員 WHERE 社員Code = ? AND 基準日 = ?"),
                     {code, sample::kijunbi(date)});
    };
    const struct {
        const char16_t* code;
        int rows[sample::kDates];
    } stories[] = {
        {People::kRetiredOnFirstDate, {1, 0, 0}}, {People::kRetiredBeforeFirst, {0, 0, 0}},
        {People::kRetiredBetween, {1, 0, 0}},     {People::kFutureTransfer, {1, 1, 1}},
        {People::kJoinedAfterLastRun, {0, 0, 0}}, {People::kWithoutTransfer, {0, 0, 0}},
        {People::kJoinedBetween, {0, 1, 1}},      {People::kPromoted, {1, 1, 1}},
    };
    for (const auto& story : stories)
        for (int date = 0; date < sample::kDates; ++date)
            EXPECT_EQ(rowsAt(story.code, date), story.rows[date])
                << QString::fromUtf16(story.code).toStdString() << " " << date;
    EXPECT_EQ(count(QStringLiteral("異動テーブル WHERE 異動日 > ? AND 社員Code IN (?, ?)"),
                    {sample::newestKijunbi(), People::kFutureTransfer, People::kFutureTransfer2}),
              2);
    EXPECT_EQ(count(QStringLiteral("異動テーブル WHERE 社員Code = ?"), {People::kWithoutTransfer}), 0);
    EXPECT_EQ(count(QStringLiteral("IdoChuusyutsuMax2 WHERE 社員Code = ?"), {People::kJoinedAfterLastRun}),
              1);
    EXPECT_EQ(
        count(QStringLiteral("IdoChuusyutsuMax2 m JOIN S配分基準対応社員 s ON s.社員Code = m.社員Code WHERE "
                             "m.社員Code = ? AND m.役職 = '03' AND s.配分基準 = '01' AND s.基準日 = ?"),
              {People::kPromoted, sample::newestKijunbi()}),
        1);
    for (const sample::Criterion& criterion : sample::kCriteria)
        EXPECT_GE(
            count(QStringLiteral("S配分基準対応社員 WHERE 基準日 = ? AND 配分区分 = ? AND 配分基準 = ?"),
                  {sample::newestKijunbi(), criterion.kubun, criterion.kijun}),
            5);
}

/// What automatic input would find, asked of the tables themselves.
TEST_F(SampleCompany, InputsOfTheNewestDateFollowTheSetUp) {
    const struct {
        const char* column;
        const char* table;
        const char* key;
        const char* of;
    } coefficients[] = {
        {"年齢係数", "S係数年齢2", "CAST(m.年齢 AS TEXT)", "年齢"},
        {"勤続年数係数", "S係数勤続年数2", "CAST(m.勤続年数 AS TEXT)", "勤続年数"},
        {"等級係数", "S係数等級", "m.等級", "等級"},
        {"社員区分係数", "S係数社員区分", "m.社員区分", "社員区分"},
        {"役職係数", "S係数役職", "m.役職", "役職"},
        {"自由1係数", "S係数自由1", "p.自由1", "自由1"},
    };
    const QString run = QStringLiteral(
        " r JOIN IdoChuusyutsuMax2 m ON m.社員Code = r.社員Code JOIN 履歴書テーブル p ON p.社員Code = "
        "r.社員Code ");
    const QString where = QStringLiteral("WHERE r.基準日 = ? AND r.配分区分 = '01' AND r.配分基準 = '01'");
    const Binds date{sample::newestKijunbi()};
    const qint64 people = count(QStringLiteral("S実行個人別計算") + run + where, date);
    ASSERT_GT(people, 15);
    for (const auto& c : coefficients)
        EXPECT_EQ(
            count(QStringLiteral("S実行個人別計算%1 JOIN %2 k ON k.配分区分 = r.配分区分 AND k.配分基準 = "
                                 "r.配分基準 AND k.%3 = %4 %5 AND r.%6 = k.係数")
                      .arg(run, QString::fromUtf8(c.table), QString::fromUtf8(c.of), QString::fromUtf8(c.key),
                           where, QString::fromUtf8(c.column)),
                  date),
            people)
            << c.column;
    EXPECT_EQ(count(QStringLiteral(
                        "S実行個人別計算%1 JOIN S支給係数評価あり k ON k.評価 = r.評価 JOIN Ｈ評価実績 h ON "
                        "h.社員Code = r.社員Code AND h.評価 = r.評価 AND h.基準日 = '2026-11-20' %2 AND "
                        "r.支給係数 = k.支給係数")
                        .arg(run, where),
                    date),
              people);
    EXPECT_EQ(count(QStringLiteral(
                        "S実行個人別計算%1%2 AND r.基礎額Ｂ = 300000000 AND r.基礎額Ａ = "
                        "(SELECT sum(金額) FROM C新賃金体系基本給 w WHERE w.社員Code = r.社員Code AND "
                        "w.基準日 = '2026-10-01') + coalesce((SELECT 金額 FROM C新賃金体系手当 t WHERE "
                        "t.社員Code = r.社員Code AND t.基準日 = '2026-10-01' AND t.手当 = '役職手当'), 0)")
                        .arg(run, where),
                    date),
              people);
}

TEST_F(SampleCompany, EarlierDatesAreComputedAndTheNewestWaits) {
    const QString run = QStringLiteral(" WHERE 基準日 = ? AND 配分区分 = ? AND 配分基準 = ?");
    for (int index = 0; index < sample::kDates; ++index)
        for (const sample::Criterion& c : sample::kCriteria) {
            const bool computed = index < sample::kDates - 1;
            const Binds key{sample::kijunbi(index), c.kubun, c.kijun};
            const auto ask = [&](const char* what) {
                return scalar(*cn_, QString::fromUtf8(what) + run, key);
            };
            const qint64 people = ask("SELECT count(*) FROM S配分基準対応社員");
            const qint64 amounts = ask("SELECT count(*) FROM S配分基準対応社員") -
                                   ask("SELECT sum(個人別計算 = 0 AND 総額配分 = 0) FROM S配分基準対応社員");
            EXPECT_EQ(amounts, computed ? people : 0);
            EXPECT_EQ(ask("SELECT sum(合計 = 個人別計算 + 総額配分 + 金一封 + 特別加算金 AND 合計 > 0) FROM "
                          "S配分基準対応社員"),
                      computed ? people : ask("SELECT sum(合計 <> 0) FROM S配分基準対応社員"));
            EXPECT_EQ(ask("SELECT count(*) FROM S実行個人別計算決定"), computed && c.kojinbetsu ? people : 0);
            EXPECT_EQ(ask("SELECT count(*) FROM S実行総額配分決定"), computed && c.sougaku ? people : 0);
            EXPECT_EQ(ask("SELECT 予算総額 >= 総額配分予算 FROM S実行予算"), 1);
            EXPECT_EQ(ask("SELECT 総額配分予算 > 0 FROM S実行予算"), c.sougaku ? 1 : 0);
            if (computed) {
                EXPECT_EQ(
                    ask("SELECT 個人別計算合計 + 総額配分合計 + 金一封合計 + 特別加算金合計 FROM S実行予算"),
                    ask("SELECT sum(合計) FROM S配分基準対応社員"));
            }
        }
}

TEST_F(SampleCompany, IsTheSameEveryTime) {
    QTemporaryDir root;
    SampleOptions options;
    options.dataDir = root.filePath(QStringLiteral("Data"));
    sample::makeSampleCompany(options);
    const QByteArray first = support::dump(*cn_);
    const QByteArray second = support::dump(*store::openMainConnection(options.dataDir, options.company));
    EXPECT_GT(first.size(), 100000);
    EXPECT_EQ(support::firstDifference(first, second), QByteArray());
}

TEST(SampleCompanyMaking, ReplacesOnlyWhenAskedAndLeavesNothingBeside) {
    QTemporaryDir root;
    SampleOptions options;
    options.dataDir = root.filePath(QStringLiteral("Data"));
    options.employees = 3;
    options.earlierRuns = false;
    const auto people = [&] {
        return scalar(*store::openMainConnection(options.dataDir, options.company),
                      QStringLiteral("SELECT count(*) FROM 履歴書テーブル"));
    };
    sample::makeSampleCompany(options);
    options.employees = 4;
    EXPECT_THROW(sample::makeSampleCompany(options), store::Error);
    EXPECT_EQ(people(), 3);
    options.replace = true;
    sample::makeSampleCompany(options);
    EXPECT_EQ(people(), 4);
    const auto all = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden;
    EXPECT_EQ(QDir(root.path()).entryList(all), QStringList{QStringLiteral("Data")});
    EXPECT_EQ(QDir(options.dataDir).entryList(all), QStringList{options.company});
}

TEST(SampleCompanyMaking, OtherSizesAndKinds) {
    const auto wageRows = QStringLiteral("SELECT count(*) FROM S基礎額設定 WHERE 設定方法 = '3'");
    SampleOptions many;
    many.employees = 2000;
    CompanyFolder large;
    large.makeSample(many);
    const auto cn = large.open();
    EXPECT_EQ(scalar(*cn, QStringLiteral("SELECT count(*) FROM 履歴書テーブル")), 2000);
    EXPECT_GT(scalar(*cn, QStringLiteral("SELECT count(*) FROM S実行個人別計算決定")), 2000);
    EXPECT_GT(scalar(*cn, wageRows), 0);

    SampleOptions one;
    one.employees = 300;
    one.companions = false;
    one.earlierRuns = false;
    one.spread = sample::Spread::OneCriterion;
    CompanyFolder bench;
    bench.makeSample(one);
    const auto all = bench.open();
    EXPECT_EQ(
        scalar(*all,
               QStringLiteral("SELECT count(*) FROM S実行個人別計算 WHERE 基準日 = ? AND 配分区分 = '01' "
                              "AND 配分基準 = '01'"),
               {sample::newestKijunbi()}),
        300);
    EXPECT_EQ(scalar(*all, wageRows), 0);
    EXPECT_FALSE(QFileInfo::exists(bench.file(store::File::Chingin)));
    EXPECT_EQ(scalar(*all, QStringLiteral("SELECT count(*) FROM S配分基準対応社員")), 300);
}

}  // namespace
