#include "prep/entry_items.h"

#include <algorithm>

#include "store/work.h"

namespace prep {
namespace {

/// Whether one of the rows is set in a way that this purpose offers.
template <typename Uses>
bool offers(const Uses& uses, EntryPurpose purpose) {
    return std::any_of(uses.begin(), uses.end(), [purpose](const auto& use) {
        if (purpose == EntryPurpose::RunTimeInput) return use.method == design::Method::Typed;
        return use.method != design::Method::Typed && use.method != design::Method::None;
    });
}

}  // namespace

std::array<bool, kEntryItemCount> offeredItems(store::Connection& cn, const domain::RunKey& run,
                                               const QString& santeiHoushiki, EntryPurpose purpose) {
    const design::Setup setup = design::readSetup(cn, run);
    const design::MethodSetup method = setup.of(santeiHoushiki);
    if (method.coefficients.empty()) return {};
    const design::Input wanted =
        purpose == EntryPurpose::RunTimeInput ? design::Input::Typed : design::Input::Automatic;
    return {offers(method.basesOf(Base::A), purpose), offers(method.basesOf(Base::B), purpose),
            method.anyCoefficient([&](const auto& use) { return use.input == wanted; }),
            santeiHoushiki != QStringLiteral("2") && offers(setup.payments, purpose)};
}

bool baseIsOrphaned(store::Connection& cn, const domain::RunKey& run, const QString& santeiHoushiki,
                    Base base) {
    const design::MethodSetup method = design::readSetup(cn, run).of(santeiHoushiki);
    return !method.baseActs(base) && !method.basesOf(base).empty();
}

void removeBaseSetup(store::Connection& cn, const domain::RunKey& run, const QString& santeiHoushiki,
                     Base base) {
    store::Work work(cn);
    for (const char16_t* table : {u"S基礎額設定", u"S基礎額基本給", u"S基礎額手当"})
        cn.execute(
            QStringLiteral(
                "DELETE FROM %1 where 配分区分 = ? AND 配分基準 = ? AND 算定方式 = ? AND 処理区分 = ?")
                .arg(QString::fromUtf16(table)),
            {run.haibunKubun, run.haibunKijun, santeiHoushiki, QString::number(static_cast<int>(base))});
    work.commit();
}

}  // namespace prep
