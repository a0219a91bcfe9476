#include "personnel/person_rules.h"

#include <algorithm>
#include <cmath>

#include "domain/field_rules.h"
#include "schema/catalog.h"
#include "store/date_text.h"
#include "store/half_width.h"
#include "store/value.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const QString kInputError = u"入力エラー"_s;

Finding refuse(const QString& text, const QString& column = {}) {
    return Fault{column.isEmpty() ? text : text + u"･･･"_s + column, kInputError};
}

Finding demand(const QString& item) {
    return Fault{item + u"を選択してください。"_s, item + u"の選択"_s};
}

const QDate kFirstDay(1900, 1, 1);
const QDate kEndOfDays(2100, 1, 1);

Finding checkCentury(QDate date, const QString& column) {
    if (date < kFirstDay) return refuse(u"1900年1月1日以降の日付を入力してください。"_s, column);
    if (date >= kEndOfDays) return refuse(u"2099年12月31日以前の日付を入力してください。"_s, column);
    return {};
}

/// There and a date; the date goes into `date`.
Finding checkDate(const QString& text, const QString& column, QDate& date) {
    if (text.isEmpty()) return refuse(u"未入力は許されません。"_s, column);
    const auto parsed = store::parseDate(text);
    if (!parsed) return refuse(u"日付の入力が正しくありません。"_s, column);
    date = *parsed;
    return {};
}

/// The company's flag for a column, where it bears another name or means another table's column.
QString flagOf(const QString& item) {
    if (item == u"電話番号"_s) return u"tel"_s;
    if (item == u"fax番号"_s) return u"fax"_s;
    return item;
}

/// 0 to 4 for 自由1 to 自由5, else -1.
int attributeIndex(const QString& item) {
    if (item.size() != 3 || !item.startsWith(u"自由"_s)) return -1;
    const int index = item.back().digitValue() - 1;
    return index < EntryItems::kAttributes ? index : -1;
}

bool isNumber(const QString& text) {
    return store::parseNumber(text).has_value();
}

}  // namespace

// ---- Which items the company keeps

EntryItems EntryItems::read(store::Connection& cn) {
    // The other flags of the row belong to families and qualifications: 氏名 and フリガナ of an employee are
    // always entered.
    static const QString kFlags =
        u"婚姻区分,世帯主区分,郵便番号,住所1,住所2,tel,fax,出身地,住宅区分,採用区分,自由1,自由2,自由3,自由4,"
        "自由5,等級,所属小,コース,コメント"_s;
    EntryItems items;
    auto flags = cn.prepare(u"SELECT %1 FROM 入力可・不可テーブル LIMIT 1"_s.arg(kFlags));
    if (flags.step())
        for (int i = 0; i < flags.columnCount(); ++i)
            items.flags_.insert(flags.columnName(i), flags.isNull(i) || flags.toBool(i));
    auto names = cn.prepare(
        u"SELECT 自由マスタ1,自由マスタ2,自由マスタ3,自由マスタ4,自由マスタ5 FROM 会社テーブル LIMIT 1"_s);
    if (names.step())
        for (int i = 0; i < kAttributes; ++i) items.attributes_[std::size_t(i)] = names.toText(i);
    return items;
}

bool EntryItems::entered(const QString& item) const {
    const int attribute = attributeIndex(item);
    if (attribute >= 0 && attributes_[std::size_t(attribute)] == u"未設定"_s) return false;
    return flags_.value(flagOf(item), true);
}

QString EntryItems::caption(const QString& item) const {
    const int attribute = attributeIndex(item);
    if (attribute < 0 || attributes_[std::size_t(attribute)].isEmpty()) return item;
    return attributes_[std::size_t(attribute)];
}

// ---- 履歴書テーブル

QString paddedSyainCode(const QString& typed) {
    const QString code = store::halfWidth(typed).trimmed();
    const bool digits = !code.isEmpty() &&
                        std::all_of(code.begin(), code.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    return digits ? code.rightJustified(6, u'0') : typed;
}

Finding checkSyainCode(const QString& code) {
    if (code.isEmpty()) return refuse(u"未入力は許されません。"_s, u"社員Code"_s);
    const QString range = u"1～999999を入力してください。･･･社員Code"_s;
    bool digits = false;
    const qulonglong number = code.toULongLong(&digits);
    const bool above = digits && (number > 999999 || code.size() > 6);
    if (above) return refuse(range + u' ');
    if (!digits || number < 1 || code != paddedSyainCode(code)) return refuse(range);
    return {};
}

Fault duplicateSyainCode() {
    return *refuse(u"社員Codeが重複しています。"_s);
}

Finding checkEmployeeText(const QString& column, const QString& text) {
    struct Rule {
        QString column;
        QString label;
        qint32 bytes;
        bool optional;
    };
    static const Rule rules[] = {
        {u"氏名"_s, u"･･･氏名"_s, 20, false},       {u"フリガナ"_s, u"･･･フリガナ"_s, 20, false},
        {u"郵便番号"_s, u"･･･郵便番号"_s, 8, true}, {u"住所1"_s, u"･･･住所１"_s, 40, true},
        {u"住所2"_s, u"･･･住所２"_s, 40, true},     {u"電話番号"_s, u"･･･tel"_s, 13, true},
        {u"fax番号"_s, u"･･･fax"_s, 13, true},
    };
    const auto* rule = std::find_if(std::begin(rules), std::end(rules),
                                    [&](const Rule& each) { return each.column == column; });
    Q_ASSERT(rule != std::end(rules));
    const auto fault = domain::fieldFault(text, rule->bytes, rule->optional, rule->label);
    if (!fault) return {};
    return Fault{*fault, u"入力のエラー"_s};
}

Finding checkSeinengappi(const QString& text, QDate today) {
    const QString column = u"生年月日"_s;
    QDate date;
    if (const Finding fault = checkDate(text, column, date)) return fault;
    if (date > today) return refuse(u"現在の日付より古い日付を入力してください。"_s, column);
    return checkCentury(date, column);
}

Finding checkNyuusyabi(const QString& text, QDate seinengappi) {
    const QString column = u"入社日"_s;
    QDate date;
    if (const Finding fault = checkDate(text, column, date)) return fault;
    if (seinengappi.isValid() && date < seinengappi)
        return refuse(u"生年月日より古い日付はありえません。"_s, column);
    return checkCentury(date, column);
}

Finding checkEmployeeChoice(const EntryItems& items, const QString& column, const QString& chosen) {
    if (!chosen.isEmpty() || !items.entered(column)) return {};
    return demand(items.caption(column));
}

// ---- 異動テーブル

Finding checkIdoubi(const QString& text, QDate nyuusyabi) {
    const QString column = u"異動日"_s;
    QDate date;
    if (const Finding fault = checkDate(text, column, date)) return fault;
    if (nyuusyabi.isValid() && date < nyuusyabi)
        return refuse(u"入社日より古い日付はありえません。"_s, column);
    return {};
}

Fault duplicateIdoubi() {
    return *refuse(u"異動日が重複しています。"_s);
}

Finding checkTokyu(const QString& text) {
    const QString column = u"等級"_s;
    if (text.isEmpty()) return refuse(u"未入力は許されません。"_s, column);
    if (!isNumber(text)) return refuse(u"数字以外は許されません。 "_s);
    const double tokyu = *store::parseNumber(text);
    if (tokyu < 1 || tokyu > 20 || tokyu != std::floor(tokyu))
        return refuse(u"1～20を入力してください。"_s, column);
    return {};
}

QString tokyuText(const QString& text) {
    const auto number = store::parseNumber(text);
    return number ? store::formatGrouped(store::Money::fromDouble(*number)) : text;
}

Finding checkComment(const QString& text) {
    const auto fault = domain::fieldFault(text, 100, true, u"･･･コメント"_s);
    if (!fault) return {};
    return Fault{*fault, u"入力のエラー"_s};
}

Finding checkTransferChoice(const EntryItems& items, const QString& column, const QString& chosen,
                            bool listHasRows) {
    if (!chosen.isEmpty() || !items.entered(column)) return {};
    if (!listHasRows && (column == u"異動事由"_s || column == u"所属小"_s)) return {};
    return demand(column);
}

}  // namespace personnel
