#include "design/criteria.h"

#include "prep/run_company.h"

namespace {

using namespace preptest;

struct Criteria : RunCompany {
    Criteria() : RunCompany(Content::Empty) {}
};

TEST_F(Criteria, AreOfferedIfShownInTheOrderOfTheNumbers) {
    sql(u"insert into S配分区分(Code,配分区分,表示) values('10','十',-1),('2','二',-1),('03','三',0)"_s);
    sql(u"insert into S配分基準(配分区分,Code,配分基準,表示,個人別計算,総額配分,金一封,特別加算金) values"
        "('2','11','乙',-1,-1,0,0,-1),('2','09','甲',-1,0,-1,null,0),('2','01','休止',0,-1,-1,-1,-1),"
        "('10','01','他',-1,-1,-1,-1,-1)"_s);
    QStringList lines;
    for (const auto& kubun : design::kubunList(cn_)) {
        lines << kubun.code + kubun.name;
        for (const auto& kijun : design::kijunList(cn_, kubun.code)) {
            lines << u'-' + kijun.code + kijun.name;
            for (bool uses : kijun.uses) lines.last() += uses ? u'x' : u'.';
        }
    }
    EXPECT_EQ(lines, (QStringList{u"2二"_s, u"-09甲.x.."_s, u"-11乙x..x"_s, u"10十"_s, u"-01他xxxx"_s}));
    EXPECT_EQ(design::kijunOf(cn_, u"2"_s, u"09"_s)->name, u"甲"_s);
    EXPECT_FALSE(design::kijunOf(cn_, u"2"_s, u"01"_s));
    EXPECT_FALSE(design::kijunOf(cn_, u"2' or '1'='1"_s, u"09"_s));
}

TEST_F(Criteria, EmployeesCountForTheirRunOnly) {
    const domain::RunKey run{QDate(2026, 12, 10), u"2"_s, u"09"_s};
    EXPECT_FALSE(design::hasEmployees(cn_, run));
    sql(u"insert into S配分基準対応社員(社員Code,基準日,配分区分,配分基準) values('000001',?,'2','09')"_s,
        {run.kijunbi});
    EXPECT_TRUE(design::hasEmployees(cn_, run));
    for (const domain::RunKey& other : {domain::RunKey{run.kijunbi.addDays(1), u"2"_s, u"09"_s},
                                        {run.kijunbi, u"10"_s, u"09"_s},
                                        {run.kijunbi, u"2"_s, u"11"_s}})
        EXPECT_FALSE(design::hasEmployees(cn_, other));
}

}  // namespace
