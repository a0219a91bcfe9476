#include "durability/company_states.h"

#include <QDir>
#include <algorithm>
#include <stdexcept>

#include "calc/run_budget.h"
#include "calc/run_calculation.h"
#include "calc/shikyuu_store.h"
#include "company/key.h"
#include "personnel/code_change.h"
#include "personnel/person_import.h"
#include "prep/auto_input.h"
#include "prep/evaluation_import.h"
#include "prep/run_input.h"
#include "prep/snapshot.h"
#include "sample_company.h"
#include "schema/catalog.h"
#include "schema/files.h"
#include "store/work.h"

namespace durability {
namespace {

using personnel::Referent;

domain::RunKey generalRun() {
    return sample::runKey(sample::kCriteria[0], sample::newestKijunbi());
}

void setRounding(store::Connection& cn, QDate kijunbi, int side) {
    cn.execute(QStringLiteral("update Tanka_hasuu set 単価 = ?, 端数処理 = '2' where 基準日 = ?"),
               {side == 0 ? u"0" : u"3", kijunbi});
}

void computeIndividual(store::Connection& cn, int side) {
    const domain::RunKey run = generalRun();
    setRounding(cn, run.kijunbi, side);
    calc::RunCalculation(cn, run, QStringLiteral("配分計算")).individually({});
}

void computePool(store::Connection& cn, int side) {
    const domain::RunKey run = generalRun();
    setRounding(cn, run.kijunbi, side);
    calc::RunCalculation(cn, run, QStringLiteral("配分計算")).fromPool(store::Money::fromYen(9'000'000));
}

void changeDates(store::Connection& cn, int side) {
    const QDate extra(2027, 7, 10);  // the sample company does not have it
    const personnel::PositionDates dates{extra, extra, extra};
    prep::SelectIntoX(cn, dates);
    store::Work work(cn);
    if (side == 1)
        prep::addDate(cn, prep::Side::Jikkou, dates);
    else
        prep::removeDate(cn, prep::Side::Jikkou, extra);
    work.commit();
}

void fillAutomatically(store::Connection& cn, int side) {
    cn.execute(QStringLiteral("update S係数等級 set 係数 = ?"), {1.5 + side});
    prep::autoInput(cn, generalRun(), design::Houshiki::Kojinbetsu);
}

void saveGrid(store::Connection& cn, const prep::InputTarget& target, const QString& text) {
    std::vector<prep::InputRow> rows = prep::loadInputRows(cn, generalRun(), target);
    for (prep::InputRow& row : rows) row.text = text;
    if (prep::writeInputRows(cn, generalRun(), target, rows)) store::throwTypeMismatch();
}

void typeAmounts(store::Connection& cn, int side) {
    const QString column = QStringLiteral("金一封");
    saveGrid(cn, {prep::RunTable::TaiouSyain, column}, QString::number(12000 + side));
    prep::storeTypedTotal(cn, generalRun(), column);
}

/// The results of one of two dates, then the grid's own save nested in the same transaction.
void importGrades(store::Connection& cn, int side) {
    const QDate date = prep::evaluationDates(cn, generalRun().kijunbi).at(static_cast<std::size_t>(side));
    for (prep::RunTable table : {prep::RunTable::KojinBetsu, prep::RunTable::SougakuHaibun})
        prep::storeResults(cn, table, prep::evaluationResults(cn, generalRun(), table, date));
    cn.execute(QStringLiteral("savepoint 画面"));
    saveGrid(cn, {prep::RunTable::SougakuHaibun, QStringLiteral("評価")}, QString(side ? u'A' : u'B'));
    cn.execute(QStringLiteral("release 画面"));
}

void storeCorrection(store::Connection& cn, int side) {
    calc::PaymentSimulation panel;
    auto decision = calc::decidePaymentPanel(cn, generalRun());
    const auto& rows = std::get<calc::GradePanel>(decision.outcome).rows;
    std::copy(rows.begin(), rows.end(), panel.grades.begin());
    panel.uniformCorrected = panel.grades[0].corrected = QString::number(2.5 + side);
    calc::storePaymentCoefficients(cn, generalRun(), panel);
}

void renameEmployee(store::Connection& cn, int side) {
    const personnel::CodeKey from{kRenamed[1 - side], {}}, to{kRenamed[side], {}};
    const personnel::CompanyDatabases company = databasesOf(cn);
    personnel::announceRename(company, Referent::Syain, from, to);
    store::Work work(cn, store::Work::Reserve::AsWritten);
    personnel::renameCode(company, Referent::Syain, from, to);
    personnel::renameEntry(cn, Referent::Syain, from, to);
    work.commit();
}

/// Another person with all rows of one that every file knows. What the person is called is of no account.
void copyEmployee(store::Connection& cn, const schema::Table& table, int codeColumn, const QString& copy) {
    QStringList names;
    QStringList values;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].type.kind == store::TypeKind::Counter) continue;
        names << table.columns[i].name;
        values << (static_cast<int>(i) == codeColumn ? QStringLiteral("?") : table.columns[i].name);
    }
    cn.execute(QStringLiteral("insert into %1(%2) select %3 from %1 where %4 = ?")
                   .arg(table.name, names.join(u','), values.join(u','),
                        table.columns[static_cast<std::size_t>(codeColumn)].name),
               {copy, kRenamed[0]});
}

void removeEmployee(store::Connection& cn, int side) {
    const personnel::CodeKey copy{QStringLiteral("900002"), {}};
    const personnel::CompanyDatabases company = databasesOf(cn);
    personnel::announceRemoval(company, Referent::Syain, copy);
    store::Work work(cn, store::Work::Reserve::AsWritten);
    personnel::removeCode(company, Referent::Syain, copy);
    personnel::removeEntry(cn, Referent::Syain, copy);
    work.commit();
    if (side == 1) return;
    store::Connection hyouka(schema::filePath(company.dataDir, company.company, schema::File::Hyouka),
                             company::sharedKey());
    store::Work own(cn), other(hyouka);
    copyEmployee(cn, schema::tableNamed(QStringLiteral("履歴書テーブル")), 0, copy.code);
    for (const personnel::Reference& each : personnel::codeReferences())
        if (each.table->columns[static_cast<std::size_t>(each.column)].name == u"社員Code" &&
            each.table->lifetime != schema::Lifetime::Scratch)
            copyEmployee(each.table->file == schema::File::Hyouka ? hyouka : cn, *each.table, each.column,
                         copy.code);
    own.commit();
    other.commit();
}

/// Forty people new, ten others with another reading; the new ones go when the way back is taken.
void importPeople(store::Connection& cn, int side) {
    cn.execute(QStringLiteral("delete from 履歴書テーブル where Clng(社員Code) >= 910000"));
    QString sheet = QStringLiteral(
        "社員Code,氏名,フリガナ,性別,生年月日,入社日,最終学歴,職能資格,勤務地,組合,出身地,採用区分,"
        "住宅区分\n");
    for (int i = 1; i <= 10; ++i)
        sheet += QStringLiteral("%1,社員　%1,%2,,,,,,,,,,\n").arg(QString::number(i), side ? u"ｱﾄ" : u"ﾏｴ");
    for (int i = 910000; side == 1 && i < 910040; ++i)
        sheet += QStringLiteral("%1,社員　%1,ｼﾝｼﾞﾝ,2,1990/4/1,2013/4/1,01,01,01,01,13,01,01\n").arg(i);
    const auto plan = personnel::planImport(cn, personnel::ImportKind::Employees, domain::parseCsv(sheet),
                                            {true, QDate(2026, 12, 1)});
    if (!plan.mayRun()) throw std::logic_error("the sheet is refused");
    personnel::runImport(cn, plan);
}

template <auto Work>
void inOneTransaction(store::Connection& cn, int side) {
    store::Work work(cn);
    Work(cn, side);
    work.commit();
}

}  // namespace

personnel::CompanyDatabases databasesOf(store::Connection& cn) {
    const QDir folder = QFileInfo(cn.path()).dir();
    return {cn, QFileInfo(folder.path()).path(), folder.dirName()};
}

const Command kCommands[kCommandCount] = {
    {inOneTransaction<computeIndividual>}, {inOneTransaction<computePool>},  {changeDates},
    {inOneTransaction<fillAutomatically>}, {inOneTransaction<typeAmounts>},  {inOneTransaction<importGrades>},
    {inOneTransaction<storeCorrection>},   {inOneTransaction<importPeople>}, {renameEmployee, true},
    {removeEmployee, true, false},
};

}  // namespace durability
