#include "durability/company_states.h"

#include "calc/kojinbetsu.h"
#include "calc/sougaku.h"

namespace durability {
namespace {

void setRounding(store::Connection& cn, QDate kijunbi, int side) {
    cn.execute(QStringLiteral("update Tanka_hasuu set 単価 = ?, 端数処理 = '2' where 基準日 = ?"),
               {side == 0 ? u"0" : u"3", kijunbi});
}

void computeIndividual(store::Connection& cn, int side) {
    const shell::RunKey run = sample::runKey(sample::kCriteria[0], sample::newestKijunbi());
    setRounding(cn, run.kijunbi, side);
    calc::Kojinbetsu keisan(cn, run, {});
    keisan.keisan1_kojinbetsu();
    keisan.keisan2_kojinbetsu();
}

void computePool(store::Connection& cn, int side) {
    const shell::RunKey run = sample::runKey(sample::kCriteria[0], sample::newestKijunbi());
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

}  // namespace

void runTowards(store::Connection& cn, Command command, int side) {
    if (command == Command::Dates) prep::SelectIntoX(cn, {extraDate(), extraDate(), extraDate()});
    store::Transaction transaction(cn);
    if (command == Command::Individual)
        computeIndividual(cn, side);
    else if (command == Command::Pool)
        computePool(cn, side);
    else
        changeDates(cn, side);
    transaction.commit();
}

}  // namespace durability
