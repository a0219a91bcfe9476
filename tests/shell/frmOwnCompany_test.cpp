// From an empty Data folder to a company of one's own, on the real screens.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "company/backup.h"
#include "company/first_steps.h"
#include "company/main_connection.h"
#include "own_company.h"
#include "support/company_fixture.h"

namespace {

using namespace Qt::StringLiterals;

TEST(OwnCompany, AnEmptyDataFolderBecomesACompanyWithItsPeopleAndABackup) {
    const QTemporaryDir folder;
    const tour::OwnRoad road{.programDir = folder.path(), .people = 30};
    ASSERT_TRUE(tour::makeOwnCompany(road));
    const company::Places places = company::placesOf(folder.path());
    auto cn = company::openMainConnection(places.data, road.company);
    EXPECT_EQ(support::textRows(
                  *cn,
                  u"select (select count(*) from 履歴書テーブル), (select count(*) from 異動テーブル), "
                  "(select 会社名 from 会社テーブル)"_s),
              QStringList{u"30|30|青空工業株式会社"_s});
    QString done;
    for (const company::FirstStep& step : company::firstSteps(*cn)) done += step.done ? u'1' : u'0';
    EXPECT_EQ(done, u"11100"_s);
    const QByteArray rows = support::dump(*cn);
    cn.reset();
    const auto backups = company::backupsIn(places.backups());
    ASSERT_EQ(backups.size(), 1U);
    EXPECT_TRUE(backups[0].whole && backups[0].summary.people == 30);
    ASSERT_TRUE(company::restoreBackup(backups[0], *company::CompanyLock::acquire(places.data, u"控え"_s)));
    cn = company::openMainConnection(places.data, u"控え"_s);
    EXPECT_EQ(support::firstDifference(rows, support::dump(*cn)), QByteArray());
    EXPECT_FALSE(company::guideDismissed(places, road.company));
    company::dismissGuide(places, road.company);
    EXPECT_TRUE(company::guideDismissed(places, road.company) && !company::guideDismissed(places, u"控え"_s));
}

}  // namespace
