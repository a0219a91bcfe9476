#include "durability/company_states.h"

#include <algorithm>

#include "calc/kojinbetsu.h"
#include "calc/shikyuu_store.h"
#include "calc/sougaku.h"
#include "personnel/code_references.h"
#include "prep/auto_input.h"
#include "prep/evaluation_import.h"
#include "prep/run_input.h"
#include "store/catalog.h"

namespace durability {
namespace {

shell::RunKey generalRun() {
    return sample::runKey(sample::kCriteria[0], sample::newestKijunbi());
}

void setRounding(store::Connection& cn, QDate kijunbi, int side) {
    cn.execute(QStringLiteral("update Tanka_hasuu set 単価 = ?, 端数処理 = '2' where 基準日 = ?"),
               {side == 0 ? u"0" : u"3", kijunbi});
}

void computeIndividual(store::Connection& cn, int side) {
    const shell::RunKey run = generalRun();
    setRounding(cn, run.kijunbi, side);
    calc::Kojinbetsu keisan(cn, run, {});
    keisan.keisan1_kojinbetsu();
    keisan.keisan2_kojinbetsu();
}

void computePool(store::Connection& cn, int side) {
    const shell::RunKey run = generalRun();
    setRounding(cn, run.kijunbi, side);
    calc::Sougaku keisan(cn, run);
    keisan.keisan1_sougaku();
    keisan.keisan2_sougaku();
    keisan.keisan3_sougaku(store::Money::fromYen(9'000'000));
}

void changeDates(store::Connection& cn, int side) {
    const personnel::PositionDates dates{extraDate(), extraDate(), extraDate()};
    if (side == 1)
        prep::addDate(cn, prep::Side::Jikkou, dates);
    else
        prep::removeDate(cn, prep::Side::Jikkou, extraDate());
}

void fillAutomatically(store::Connection& cn, int side) {
    cn.execute(QStringLiteral("update S係数等級 set 係数 = ?"), {1.5 + side});
    prep::autoInput(cn, generalRun(), criteria::Houshiki::Kojinbetsu);
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

/// The companions' files stand by themselves, so they are kept out: none is found in no folder.
void renameEmployee(store::Connection& cn, int side) {
    const QString codes[] = {QStringLiteral("000001"), QStringLiteral("900001")};
    const personnel::CompanyDatabases databases{cn, {}, sample::SampleOptions().company};
    personnel::renameCode(databases, personnel::Referent::Syain, {codes[1 - side], {}}, {codes[side], {}});
    cn.execute(QStringLiteral("update 履歴書テーブル set 社員Code = ? where 社員Code = ?"),
               {codes[side], codes[1 - side]});
}

/// Another person with all rows of the first employee's. What the person is called is of no account.
void copyFirstEmployee(store::Connection& cn, const store::Table& table, int codeColumn,
                       const QString& copy) {
    QStringList names;
    QStringList values;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].type.kind == store::TypeKind::Counter) continue;
        names << table.columns[i].name;
        values << (static_cast<int>(i) == codeColumn ? QStringLiteral("?") : table.columns[i].name);
    }
    cn.execute(QStringLiteral("insert into %1(%2) select %3 from %1 where %4 = '000001'")
                   .arg(table.name, names.join(u','), values.join(u','),
                        table.columns[static_cast<std::size_t>(codeColumn)].name),
               {copy});
}

void removeEmployee(store::Connection& cn, int side) {
    const QString copy = QStringLiteral("900002");
    const store::Table& people = store::tableNamed(QStringLiteral("履歴書テーブル"));
    if (side == 1) {
        personnel::removeCode({cn, {}, sample::SampleOptions().company}, personnel::Referent::Syain,
                              {copy, {}});
        cn.execute(QStringLiteral("delete from 履歴書テーブル where 社員Code = ?"), {copy});
        return;
    }
    copyFirstEmployee(cn, people, 0, copy);
    for (const personnel::Reference& reference : personnel::codeReferences()) {
        const store::File file = reference.table->file;
        const bool own = (file == store::File::Kihon || file == store::File::Syouyo) &&
                         reference.table->lifetime == store::Lifetime::Permanent;
        if (own && reference.refersTo == personnel::Referent::Syain)
            copyFirstEmployee(cn, *reference.table, reference.column, copy);
    }
}

}  // namespace

void runTowards(store::Connection& cn, Command command, int side) {
    if (command == Command::Dates) prep::SelectIntoX(cn, {extraDate(), extraDate(), extraDate()});
    using Work = void (*)(store::Connection&, int);
    static constexpr Work kWorks[] = {computeIndividual, computePool,    changeDates,
                                      fillAutomatically, typeAmounts,    importGrades,
                                      storeCorrection,   renameEmployee, removeEmployee};
    store::Transaction transaction(cn);
    kWorks[static_cast<int>(command)](cn, side);
    transaction.commit();
}

}  // namespace durability
