#include "calc/run_calculation.h"

#include "calc/shikyuu_store.h"
#include "calc/sougaku.h"

namespace calc {

RunCalculation::RunCalculation(store::Connection& connection, const domain::RunKey& run, const QString& label)
    : connection_(connection), run_(run), work_(connection, label) {}

CalculationResult RunCalculation::individually(const PaymentSimulation& panel) {
    storePaymentCoefficients(connection_, run_, panel);
    Kojinbetsu keisan(connection_, run_, panel);
    keisan.keisan1_kojinbetsu();
    const CalculationResult result = keisan.keisan2_kojinbetsu();
    work_.commit();
    return result;
}

CalculationResult RunCalculation::fromPool(store::Money budget) {
    Sougaku keisan(connection_, run_);
    keisan.keisan1_sougaku();
    keisan.keisan2_sougaku();
    const CalculationResult result = keisan.keisan3_sougaku(budget);
    work_.commit();
    return result;
}

void RunCalculation::nothing() {
    work_.commit();
}

}  // namespace calc
