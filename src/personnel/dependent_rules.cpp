#include "personnel/dependent_rules.h"

#include "domain/field_rules.h"
#include "store/date_text.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

constexpr qint32 kNameBytes = 20;

Fault inputError(const QString& text) {
    return {text, u"入力エラー"_s};
}

}  // namespace

QSet<QString> itemsNotEntered(store::Connection& cn, const QStringList& items) {
    QSet<QString> without;
    auto row = cn.prepare(u"SELECT %1 FROM 入力可・不可テーブル LIMIT 1"_s.arg(items.join(u',')));
    if (!row.step()) return without;
    for (int i = 0; i < row.columnCount(); ++i)
        if (!row.isNull(i) && !row.toBool(i)) without.insert(row.columnName(i));
    return without;
}

Finding checkKazokuText(const QString& column, const QString& text) {
    const auto fault = domain::fieldFault(text, kNameBytes, false, u"･･･"_s + column);
    if (!fault) return {};
    return Fault{*fault, u"入力のエラー"_s};
}

Finding checkZokugara(const QString& chosen) {
    if (!chosen.isEmpty()) return {};
    return Fault{u"続柄を選択してください。"_s, u"続柄選択エラー"_s};
}

Fault duplicateZokugara() {
    return {u"続柄が重複しています。"_s, u"続柄選択エラー"_s};
}

Finding checkKazokuSeinengappi(const QString& text, QDate today) {
    if (text.isEmpty()) return inputError(u"生年月日を入力してください。"_s);
    const auto date = store::parseDate(text);
    if (!date) return inputError(u"日付の入力が正しくありません。･･･生年月日"_s);
    if (*date > today) return inputError(u"現在の日付より古い日付を入力してください。･･･生年月日"_s);
    return {};
}

Finding checkShikaku(const QString& chosen) {
    if (!chosen.isEmpty()) return {};
    return Fault{u"資格・免許を選択してください。"_s, u"資格・免許選択エラー"_s};
}

Fault duplicateShikaku() {
    return {u"資格・免許が重複しています。"_s, u"資格・免許選択エラー"_s};
}

Finding checkSyutokubi(const QString& text, const QString& seinengappi) {
    if (text.isEmpty()) return inputError(u"取得年月日を入力してください。"_s);
    const auto date = store::parseDate(text);
    if (!date) return inputError(u"日付の入力が正しくありません。･･･取得年月日"_s);
    const auto born = store::parseDate(seinengappi);
    if (born && *date < *born)
        return inputError(u"生年月日"_s + seinengappi + u"より古い日付はありえません。･･･取得年月日"_s);
    return {};
}

}  // namespace personnel
