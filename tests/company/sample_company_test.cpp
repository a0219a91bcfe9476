#include "sample_company.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <array>

#include "company/main_connection.h"
#include "support/company_fixture.h"

namespace {

using namespace Qt::StringLiterals;
using sample::SampleOptions;
using support::CompanyFolder;

qint64 scalar(store::Connection& cn, const QString& sql, const store::Binds& binds = {}) {
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
    static qint64 count(const QString& from, const store::Binds& binds = {}) {
        return scalar(*cn_, u"SELECT count(*) FROM "_s + from, binds);
    }
    inline static std::unique_ptr<CompanyFolder> folder_;
    inline static std::unique_ptr<store::Connection> cn_;
};

TEST_F(SampleCompany, EveryCodeStandsInItsMaster) {
    const QString orphans = u"%1 WHERE (%2) IS NOT NULL AND (%2) NOT IN (SELECT %3)"_s;
    QStringList wrong{
        u"(SELECT Code FROM 所属小マスタ GROUP BY Code HAVING count(*) > 1)"_s,
        u"(SELECT 社員Code FROM 異動テーブル GROUP BY 社員Code, 異動日 HAVING count(*) > 1)"_s,
        u"異動テーブル JOIN 履歴書テーブル USING(社員Code) WHERE 異動日 < 入社日 OR 入社日 <= 生年月日"_s};
    const std::vector<std::pair<QString, QString>> namedLikeTheirMaster{
        {u"履歴書テーブル"_s, u"性別 婚姻区分 世帯主区分 最終学歴 出身地 住宅区分 採用区分"_s},
        {u"異動テーブル"_s, u"異動事由 社員区分 役職 職種 コース"_s},
        {u"家族テーブル"_s, u"続柄 性別 扶養 同居 障害"_s},
        {u"資格・免許テーブル"_s, u"資格・免許 業務必要性"_s},
        {u"S係数役職"_s, u"役職"_s},
        {u"S係数所属大"_s, u"所属大"_s}};
    for (const auto& [table, columns] : namedLikeTheirMaster)
        for (const QString& column : columns.split(u' '))
            wrong << orphans.arg(table, u"\"%1\""_s.arg(column), u"Code FROM \"%1マスタ\""_s.arg(column));
    const std::vector<std::array<QString, 3>> others{
        {u"履歴書テーブル"_s, u"自由3"_s, u"Code FROM 自由マスタ3"_s},
        {u"異動テーブル"_s, u"所属大||所属小"_s, u"所属大||Code FROM 所属小マスタ"_s},
        {u"S配分基準対応社員"_s, u"配分区分||配分基準"_s, u"配分区分||Code FROM S配分基準"_s},
        {u"S実行個人別計算"_s, u"配分区分||配分基準"_s, u"配分区分||Code FROM S配分基準"_s},
        {u"S係数設定"_s, u"配分区分Code||配分基準Code"_s, u"配分区分||Code FROM S配分基準"_s},
        {u"S係数設定"_s, u"設定名称"_s, u"Code FROM S係数名称設定"_s},
        {u"C新賃金体系手当"_s, u"手当"_s, u"手当 FROM C手当設定テーブル"_s},
        {u"S基礎額手当"_s, u"手当"_s, u"手当 FROM C手当設定テーブル"_s},
        {u"S基礎額基本給"_s, u"基本給"_s, u"基本給 FROM C基本給設定テーブル"_s}};
    for (const auto& [table, columns, keys] : others) wrong << orphans.arg(table, columns, keys);
    for (const schema::Table& table : schema::catalog())
        for (const schema::Column& column : table.columns)
            if (column.name == u"社員Code"_s && cn_->hasTable(table.name))
                wrong << orphans.arg(table.name, column.name, u"社員Code FROM 履歴書テーブル"_s);
    for (const QString& from : wrong) EXPECT_EQ(count(from), 0) << from.toStdString();
}

TEST(SampleCompanyMaking, ReplacesOnlyWhenAskedAndLeavesNothingBeside) {
    QTemporaryDir root;
    SampleOptions options{.dataDir = root.filePath(u"Data"_s), .employees = 3, .earlierRuns = false};
    const auto people = [&] {
        return scalar(*company::openMainConnection(options.dataDir, options.company),
                      u"SELECT count(*) FROM 履歴書テーブル"_s);
    };
    sample::makeSampleCompany(options);
    options.employees = 4;
    EXPECT_THROW(sample::makeSampleCompany(options), store::Error);
    EXPECT_EQ(people(), 3);
    options.replace = true;
    sample::makeSampleCompany(options);
    EXPECT_EQ(people(), 4);
    const auto all = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden;
    EXPECT_EQ(QDir(root.path()).entryList(all), QStringList{u"Data"_s});
    EXPECT_EQ(QDir(options.dataDir).entryList(all), QStringList{options.company});
}

}  // namespace
