#include "design/criteria.h"

#include <algorithm>

namespace design {

std::vector<Kubun> kubunList(store::Connection& cn) {
    std::vector<Kubun> list;
    const auto rows = cn.query(
        QStringLiteral("select Code,配分区分 from S配分区分 where 表示 <> 0 Order by CodeKey(Code)"));
    for (int i = 0; i < rows.recordCount(); ++i)
        list.push_back({rows.valueAt(i, 0).toText(), rows.valueAt(i, 1).toText()});
    return list;
}

QString houshikiCode(Houshiki houshiki) {
    return QString::number(static_cast<int>(houshiki) + 1);
}

namespace {

std::vector<Kijun> readKijun(store::Connection& cn, const QString& condition, const store::Binds& binds) {
    std::vector<Kijun> list;
    const auto rows =
        cn.query(QStringLiteral("select Code,配分基準,個人別計算,総額配分,金一封,特別加算金 from S配分基準 "
                                "where 表示 <> 0 AND 配分区分 = ? ") +
                     condition + QStringLiteral(" Order by CodeKey(Code)"),
                 binds);
    for (int i = 0; i < rows.recordCount(); ++i) {
        Kijun kijun{rows.valueAt(i, 0).toText(), rows.valueAt(i, 1).toText(), {}};
        for (int h = 0; h < kHoushikiCount; ++h)
            kijun.uses[static_cast<std::size_t>(h)] =
                !rows.valueAt(i, 2 + h).isNull() && rows.valueAt(i, 2 + h).toBool();
        list.push_back(kijun);
    }
    return list;
}

}  // namespace

std::vector<Kijun> kijunList(store::Connection& cn, const QString& kubun) {
    return readKijun(cn, {}, {kubun});
}

std::optional<Kijun> kijunOf(store::Connection& cn, const QString& kubun, const QString& kijun) {
    const auto list = readKijun(cn, QStringLiteral("and Code = ?"), {kubun, kijun});
    return list.empty() ? std::nullopt : std::optional(list.front());
}

PaymentFlags offeredPayments(const Kijun& kijun) {
    PaymentFlags offered = kijun.uses;
    if (std::none_of(offered.begin(), offered.end(), [](bool used) { return used; })) offered.fill(true);
    return offered;
}

bool hasEmployees(store::Connection& cn, const domain::RunKey& run) {
    return cn.query(QStringLiteral("select 1 FROM S配分基準対応社員 where 基準日 = ? AND 配分区分 = ? and "
                                   "配分基準 = ? limit 1"),
                    {run.kijunbi, run.haibunKubun, run.haibunKijun})
               .recordCount() > 0;
}

}  // namespace design
