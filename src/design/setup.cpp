#include "design/setup.h"

namespace design {
namespace {

std::optional<QString> textOf(const store::Statement& row, int column) {
    return row.isNull(column) ? std::nullopt : std::optional(row.toText(column));
}

Input inputOf(const std::optional<QString>& code) {
    if (!code) return Input::None;
    if (*code == QStringLiteral("1")) return Input::Typed;
    return *code == QStringLiteral("2") ? Input::Automatic : Input::Other;
}

Method methodOf(const std::optional<QString>& code) {
    if (!code) return Method::None;
    if (*code == QStringLiteral("1")) return Method::Typed;
    if (*code == QStringLiteral("2")) return Method::Uniform;
    return *code == QStringLiteral("3") ? Method::Derived : Method::Other;
}

std::optional<Base> baseOf(const QString& syoriKubun) {
    for (const Base base : {Base::A, Base::B})
        if (syoriKubun == QString::number(static_cast<int>(base))) return base;
    return std::nullopt;
}

std::optional<Houshiki> houshikiOf(const QString& code) {
    for (int i = 0; i < kHoushikiCount; ++i)
        if (const auto houshiki = static_cast<Houshiki>(i); houshikiCode(houshiki) == code) return houshiki;
    return std::nullopt;
}

/// The rows of a table that belong to the criterion, as they were set up.
store::Statement rowsOf(store::Connection& cn, const domain::RunKey& run, const QString& columns,
                        const QString& table, const QString& suffix = {}) {
    auto rows =
        cn.prepare(QStringLiteral("SELECT %1 FROM %2 WHERE 配分区分%3 = ? AND 配分基準%3 = ? ORDER BY ID")
                       .arg(columns, table, suffix));
    rows.bindAll({run.haibunKubun, run.haibunKijun});
    return rows;
}

void readCoefficients(store::Connection& cn, const domain::RunKey& run, Setup& setup) {
    auto row = rowsOf(cn, run,
                      QStringLiteral("算定方式, 設定名称, 係数, 入力区分Code, coalesce(基礎額Ａ, 0) <> 0, "
                                     "coalesce(基礎額Ｂ, 0) <> 0"),
                      QStringLiteral("S係数設定"), QStringLiteral("Code"));
    while (row.step()) {
        const auto houshiki = houshikiOf(row.toText(0));
        if (!houshiki) continue;
        const QString code = row.toText(1);
        setup.methods[static_cast<std::size_t>(*houshiki)].coefficients.push_back(
            {.code = code,
             .kind = domain::CoefficientKind::ofCode(code),
             .name = row.toText(2),
             .input = inputOf(textOf(row, 3)),
             .onA = row.toInteger(4) != 0,
             .onB = row.toInteger(5) != 0});
    }
}

void readBases(store::Connection& cn, const domain::RunKey& run, Setup& setup) {
    auto row = rowsOf(cn, run, QStringLiteral("算定方式, 処理区分, 設定方法, 一律金額"),
                      QStringLiteral("S基礎額設定"));
    while (row.step()) {
        const auto houshiki = houshikiOf(row.toText(0));
        if (!houshiki) continue;
        BaseUse use{baseOf(row.toText(1)), methodOf(textOf(row, 2)), {}};
        if (!row.isNull(3)) use.uniform = row.toMoney(3);
        setup.methods[static_cast<std::size_t>(*houshiki)].bases.push_back(use);
    }
}

void readPayments(store::Connection& cn, const domain::RunKey& run, Setup& setup) {
    auto row =
        rowsOf(cn, run, QStringLiteral("設定方法, 評語タイプ, 一律係数"), QStringLiteral("S支給係数設定"));
    while (row.step()) {
        const auto method = textOf(row, 0);
        PaymentUse use{method, methodOf(method), textOf(row, 1), {}};
        if (!row.isNull(2)) use.uniform = row.toDouble(2);
        setup.payments.push_back(use);
    }
}

}  // namespace

bool MethodSetup::baseActs(Base base) const {
    return anyCoefficient([base](const CoefficientUse& use) { return use.actsOn(base); });
}

std::vector<BaseUse> MethodSetup::basesOf(Base base) const {
    std::vector<BaseUse> found;
    std::copy_if(bases.begin(), bases.end(), std::back_inserter(found),
                 [base](const BaseUse& use) { return use.base == base; });
    return found;
}

std::vector<CoefficientUse> MethodSetup::sorted(std::vector<CoefficientUse> coefficients) {
    std::vector<std::pair<qint64, std::size_t>> order;
    for (const CoefficientUse& use : coefficients) {
        if (use.code.isEmpty()) store::throwNull();
        const qint64 number = store::Value(use.code).toInteger();
        if (number != static_cast<qint16>(number)) store::throwOverflow();
        order.emplace_back(number, order.size());
    }
    std::sort(order.begin(), order.end());
    std::vector<CoefficientUse> inOrder;
    for (const auto& [number, index] : order) inOrder.push_back(std::move(coefficients[index]));
    return inOrder;
}

MethodSetup Setup::of(const QString& santeiHoushiki) const& {
    const auto houshiki = houshikiOf(santeiHoushiki);
    return houshiki ? of(*houshiki) : MethodSetup();
}

std::vector<PaymentUse> Setup::paymentsBy(Method method) const {
    std::vector<PaymentUse> found;
    std::copy_if(payments.begin(), payments.end(), std::back_inserter(found),
                 [method](const PaymentUse& use) { return use.method == method; });
    return found;
}

Setup readSetup(store::Connection& cn, const domain::RunKey& run) {
    Setup setup;
    readCoefficients(cn, run, setup);
    readBases(cn, run, setup);
    readPayments(cn, run, setup);
    auto row = rowsOf(cn, run, QStringLiteral("評語タイプ"), QStringLiteral("S係数評価段階設定"));
    if (row.step()) setup.gradeScale = row.toText(0);
    return setup;
}

}  // namespace design
