#include "prep/entry_items.h"

#include "store/work.h"

namespace prep {
namespace {

using store::Binds;

bool anyRow(store::Connection& cn, const QString& sql, const Binds& binds) {
    return cn.query(sql, binds).recordCount() > 0;
}

QString baseCode(Base base) {
    return QString::number(static_cast<int>(base));
}

}  // namespace

std::array<bool, kEntryItemCount> offeredItems(store::Connection& cn, const domain::RunKey& run,
                                               const QString& santeiHoushiki, EntryPurpose purpose) {
    const bool entry = purpose == EntryPurpose::RunTimeInput;
    const Binds criterion{run.haibunKubun, run.haibunKijun};
    const Binds method{run.haibunKubun, run.haibunKijun, santeiHoushiki};
    const QString coefficients = QStringLiteral(
        "select 1 from S係数設定 where 配分区分Code = ? AND 配分基準Code = ? AND 算定方式 = ?");
    if (!anyRow(cn, coefficients, method)) return {};

    const auto baseOffered = [&](Base base) {
        const QString sql = QStringLiteral(
            "select 1 from S基礎額設定 where 配分区分 = ? AND 配分基準 = ? AND 算定方式 = ? AND 処理区分 = ? "
            "AND 設定方法 ");
        return anyRow(cn, sql + (entry ? QStringLiteral("= '1'") : QStringLiteral("<> '1'")),
                      {run.haibunKubun, run.haibunKijun, santeiHoushiki, baseCode(base)});
    };
    const bool keisuu = anyRow(cn,
                               coefficients + (entry ? QStringLiteral(" AND 入力区分Code = '1'")
                                                     : QStringLiteral(" AND 入力区分Code = '2'")),
                               method);
    const bool shikyuu =
        santeiHoushiki != QStringLiteral("2") &&
        anyRow(
            cn,
            QStringLiteral("select 1 from S支給係数設定 where 配分区分 = ? AND 配分基準 = ? AND 設定方法 ") +
                (entry ? QStringLiteral("= '1'") : QStringLiteral("<> '1'")),
            criterion);
    return {baseOffered(Base::A), baseOffered(Base::B), keisuu, shikyuu};
}

bool baseIsOrphaned(store::Connection& cn, const domain::RunKey& run, const QString& santeiHoushiki,
                    Base base) {
    const QString acts =
        QStringLiteral(
            "select 1 from S係数設定 where 配分区分Code = ? AND 配分基準Code = ? AND 算定方式 = ? "
            "AND ") +
        (base == Base::A ? QStringLiteral("基礎額Ａ <> 0") : QStringLiteral("基礎額Ｂ <> 0"));
    return !anyRow(cn, acts, {run.haibunKubun, run.haibunKijun, santeiHoushiki}) &&
           anyRow(cn,
                  QStringLiteral(
                      "select 1 from S基礎額設定 where 配分区分 = ? AND 配分基準 = ? AND 算定方式 = ? "
                      "AND 処理区分 = ?"),
                  {run.haibunKubun, run.haibunKijun, santeiHoushiki, baseCode(base)});
}

void removeBaseSetup(store::Connection& cn, const domain::RunKey& run, const QString& santeiHoushiki,
                     Base base) {
    store::Work work(cn);
    for (const char16_t* table : {u"S基礎額設定", u"S基礎額基本給", u"S基礎額手当"})
        cn.execute(QStringLiteral(
                       "DELETE FROM %1 where 配分区分 = ? AND 配分基準 = ? AND 算定方式 = ? AND 処理区分 = ?")
                       .arg(QString::fromUtf16(table)),
                   {run.haibunKubun, run.haibunKijun, santeiHoushiki, baseCode(base)});
    work.commit();
}

}  // namespace prep
