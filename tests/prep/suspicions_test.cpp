#include "prep/suspicions.h"

#include "prep/run_company.h"
#include "sample_design.h"

namespace {

using namespace preptest;
using design::Houshiki;
using sample::kCriteria;

class Suspicions : public RunCompany {
  protected:
    Suspicions() : RunCompany(Content::Sample) {}

    static domain::RunKey runOf(int criterion) {
        return {sample::newestKijunbi(), QString::fromUtf16(kCriteria[criterion].kubun),
                QString::fromUtf16(kCriteria[criterion].kijun)};
    }
    static QStringList lines(const std::vector<prep::Suspicion>& found) {
        QStringList lines;
        for (const auto& one : found) lines << one.text + u'|' + one.people.join(u'、') + u'|' + one.screen;
        return lines;
    }
    QStringList found(int criterion, Houshiki houshiki = Houshiki::Kojinbetsu) {
        return lines(prep::suspicionsBeforeCalculation(cn_, runOf(criterion), houshiki));
    }
};

const QString kOf = u" WHERE 基準日 = '2026-12-10' AND 配分区分 = '01' AND 配分基準 = '01'"_s;

TEST_F(Suspicions, NothingIsToldOfInputsThatFit) {
    for (int criterion = 0; criterion < 4; ++criterion) {
        const auto& c = kCriteria[criterion];
        EXPECT_EQ(c.kojinbetsu ? found(criterion) : QStringList(), QStringList()) << criterion;
        EXPECT_EQ(c.sougaku ? found(criterion, Houshiki::Sougaku) : QStringList(), QStringList())
            << criterion;
    }
}

struct Case {
    QString change;  ///< @ is the first employee with a payment coefficient, @行 that row of the run
    QStringList found;
};
class SuspiciousInputs : public Suspicions, public ::testing::WithParamInterface<Case> {};

TEST_P(SuspiciousInputs, AreNamedWithTheirPlaceAndNothingIsWritten) {
    const QStringList who = read(
                                u"SELECT 行.社員Code, 人.氏名 FROM S実行個人別計算 AS 行 JOIN 履歴書テーブル "
                                u"AS 人 ON 人.社員Code = "
                                "行.社員Code %1 AND 支給係数 <> 1 ORDER BY 1 LIMIT 1"_s.arg(kOf))
                                .value(0)
                                .split(u'|');
    cn_.executeScript(QString(GetParam().change)
                          .replace(u"@行"_s, kOf + u" AND 社員Code = '%1'"_s.arg(who[0]))
                          .replace(u'@', who[0]));
    const QByteArray before = support::dump(cn_);
    const QStringList told = found(0);
    expectUnchanged(before);
    ASSERT_EQ(told.size(), GetParam().found.size()) << told.join(u'\n').toStdString();
    for (qsizetype i = 0; i < told.size(); ++i)
        EXPECT_TRUE(told[i].startsWith(QString(GetParam().found[i]).replace(u'@', who.join(u' '))))
            << told[i].toStdString();
}

const QString
    kMissing =
        u"基準日の人事データにない社員が 1人います（退職した、異動履歴がないなど）。|@|frmSTaisyousya"_s,
    kDiffers = u"自動入力の結果と違う値の社員が 1人います（"_s,
    kUnfilled = u"自動入力がまだの項目のある社員が 1人います。|@|frmSHaibunjikkouK"_s,
    kRow = u"UPDATE S実行個人別計算 SET "_s;
INSTANTIATE_TEST_SUITE_P(
    Each, SuspiciousInputs,
    ::testing::Values(
        Case{u"DELETE FROM IdoChuusyutsuMax2 WHERE 社員Code = '@'"_s,
             {kMissing, u"自動入力の結果を確かめられません。"_s}},
        Case{kRow + u"評価 = '' @行"_s, {u"評価の入っていない社員が 1人います。|@|frmSSanteishikiSub"_s}},
        Case{kRow + u"評価 = 'Z' @行"_s,
             {u"自動入力で値の見つからない項目（×）のある社員が 1人います。|@|frmSHaibunjikkouK"_s}},
        Case{kRow + u"支給係数 = 1 @行"_s, {kUnfilled}}, Case{kRow + u"支給係数 = NULL @行"_s, {kUnfilled}},
        Case{kRow + u"支給係数 = 支給係数 + 0.001 @行"_s, {kDiffers}},
        Case{u"UPDATE S基礎額設定 SET 設定方法 = '1'; "_s + kRow +
                 u"基礎額Ａ = 100000000, 基礎額Ｂ = 90000000 @行"_s,
             {u"基礎額Ａが 10,000円のままの社員が 1人います。|@|frmSSanteishitei"_s}}));

}  // namespace
