#include "prep/run_setting.h"

#include "schema/catalog.h"
#include "store/row_edit.h"

namespace prep {
namespace {

namespace t = schema::tables;

store::Recordset openRow(store::Connection& cn, QDate kijunbi) {
    return cn.open({QString::fromUtf16(t::Tanka_hasuu::kName), QStringLiteral("基準日 = ?"), {kijunbi}, {}});
}

store::Recordset openOrCreateRow(store::Connection& cn, QDate kijunbi) {
    const store::Recordset rows = openRow(cn, kijunbi);
    if (!rows.isEmpty()) return rows;
    store::RowEdit row(cn, rows);
    row.set(t::Tanka_hasuu::単価, u"0");
    row.set(t::Tanka_hasuu::端数処理, u"0");
    row.set(t::Tanka_hasuu::基準日, kijunbi);
    row.write();
    return openRow(cn, kijunbi);
}

/// The stored digit as the index of an option, -1 for anything that is none of them.
int optionIndex(const store::Value& stored, int options) {
    const QString text = stored.toText();
    for (int i = 0; i < options; ++i)
        if (text == QString::number(i)) return i;
    return -1;
}

}  // namespace

RunSetting::RunSetting(store::Connection& cn, QDate kijunbi)
    : cn_(cn), kijunbi_(kijunbi), row_(openOrCreateRow(cn, kijunbi)) {}

int RunSetting::unit() const {
    return optionIndex(row_.value(t::Tanka_hasuu::単価), kUnits);
}

int RunSetting::rounding() const {
    return optionIndex(row_.value(t::Tanka_hasuu::端数処理), kRoundings);
}

void RunSetting::save(int unit, int rounding) {
    store::RowEdit row(cn_, row_, 0);
    if (unit >= 0) row.set(t::Tanka_hasuu::単価, QString::number(unit));
    if (rounding >= 0) row.set(t::Tanka_hasuu::端数処理, QString::number(rounding));
    row.write();
    row_ = openRow(cn_, kijunbi_);
}

}  // namespace prep
