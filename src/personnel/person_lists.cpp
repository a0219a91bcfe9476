#include "personnel/person_lists.h"

#include <QSet>
#include <algorithm>

#include "domain/field_rules.h"
#include "personnel/code_choices.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

/// A column of a list and its heading in a sheet.
struct ListColumn {
    const char16_t* source;  ///< F 社員絞込, R 履歴書テーブル, P IdoChuusyutsuMax2, K the rows of a person
    const char16_t* name;
    const char16_t* heading;
};

struct ListPlan {
    std::vector<ListColumn> columns;
    QString tables;  ///< behind 社員絞込 and 履歴書テーブル
    QString filter;
    QString orderBy;  ///< behind the code
};

const QString kPosition = u" INNER JOIN IdoChuusyutsuMax2 AS P ON P.社員Code = R.社員Code"_s;
const QString kCurrent = u"R.退職フラグ = 0"_s;

/// The name of a code in a column of R or K; the master's table takes the item's name.
QString master(const QString& join, const QString& item, const QString& holder) {
    return u" %1 JOIN %2 AS %3 ON %3.Code = %4.%3"_s.arg(join, masterOf(item), item, holder);
}

QString masters(const QString& join, std::initializer_list<const char16_t*> items, const QString& holder) {
    QString text;
    for (const char16_t* item : items) text += master(join, QString::fromUtf16(item), holder);
    return text;
}

ListPlan staffPlan(bool retired) {
    const ListColumn date = retired ? ListColumn{u"R.退職日", u"退職日", u"退職日"}
                                    : ListColumn{u"R.入社日", u"入社日", u"入社日"};
    return {{{u"F.社員Code", u"社員Code", u"社員Code"},
             {u"R.氏名", u"氏名", u"氏名"},
             {u"R.フリガナ", u"フリガナ", u"フリガナ"},
             {u"性別.性別", u"性別", u"性別"},
             {u"R.生年月日", u"生年月日", u"生年月日"},
             date,
             {u"P.社員区分名", u"社員区分名", u"社員区分名"},
             {u"P.所属大名", u"所属大名", u"所属大名"},
             {u"P.所属小名", u"所属小名", u"所属小名"},
             {u"P.役職名", u"役職名", u"役職名"},
             {u"P.職種名", u"職種名", u"職種名"},
             {u"P.コース名", u"コース名", u"コース名"}},
            kPosition + masters(u"INNER"_s, {u"性別"}, u"R"_s),
            retired ? u"R.退職フラグ <> 0"_s : kCurrent,
            {}};
}

ListPlan staffSheetPlan() {
    return {
        {{u"F.社員Code", u"社員Code", u"社員Code"},
         {u"R.氏名", u"氏名", u"氏名"},
         {u"R.フリガナ", u"フリガナ", u"フリガナ"},
         {u"性別.性別", u"性別", u"性別"},
         {u"婚姻区分.婚姻区分", u"婚姻区分", u"婚姻区分"},
         {u"世帯主区分.世帯主区分", u"世帯主区分", u"世帯主区分"},
         {u"R.生年月日", u"生年月日", u"生年月日"},
         {u"R.入社日", u"入社日", u"入社日"},
         {u"R.郵便番号", u"郵便番号", u"郵便番号"},
         {u"R.住所1", u"住所1", u"住所１"},
         {u"R.住所2", u"住所2", u"住所２"},
         {u"R.電話番号", u"電話番号", u"tel"},
         {u"R.fax番号", u"fax番号", u"fax"},
         {u"最終学歴.最終学歴", u"最終学歴", u"最終学歴"},
         {u"出身地.出身地", u"出身地", u"出身地"},
         {u"採用区分.採用区分", u"採用区分", u"採用区分"},
         {u"自由1.自由1", u"自由1", u"自由1"},
         {u"自由2.自由2", u"自由2", u"自由2"},
         {u"自由3.自由3", u"自由3", u"自由3"},
         {u"自由4.自由4", u"自由4", u"自由4"},
         {u"自由5.自由5", u"自由5", u"自由5"},
         {u"P.社員区分名", u"社員区分名", u"社員区分名"},
         {u"P.所属大名", u"所属大名", u"所属大名"},
         {u"P.所属小名", u"所属小名", u"所属小名"},
         {u"P.役職名", u"役職名", u"役職名"},
         {u"P.職種名", u"職種名", u"職種名"},
         {u"P.コース名", u"コース名", u"コース名"},
         {u"P.等級", u"等級", u"等級"},
         {u"P.号俸", u"号俸", u"号俸"},
         {u"P.評語", u"評語", u"評語"}},
        kPosition + masters(u"INNER"_s, {u"性別", u"婚姻区分", u"世帯主区分"}, u"R"_s) +
            masters(u"LEFT"_s,
                    {u"最終学歴", u"採用区分", u"出身地", u"自由1", u"自由2", u"自由3", u"自由4", u"自由5"},
                    u"R"_s),
        kCurrent,
        {}};
}

ListPlan familyPlan() {
    return {{{u"F.社員Code", u"社員Code", u"社員Code"},
             {u"R.氏名", u"氏名", u"氏名"},
             {u"K.フリガナ", u"家族フリガナ", u"家族フリガナ"},
             {u"K.氏名", u"家族氏名", u"家族氏名"},
             {u"続柄.続柄", u"続柄", u"続柄"},
             {u"性別.性別", u"性別", u"性別"},
             {u"K.生年月日", u"生年月日", u"生年月日"},
             {u"扶養.扶養", u"扶養", u"扶養"},
             {u"同居.同居", u"同居", u"同居"},
             {u"障害.障害", u"障害", u"障害"}},
            u" INNER JOIN 家族テーブル AS K ON K.社員Code = R.社員Code"_s +
                masters(u"INNER"_s, {u"続柄", u"性別", u"扶養", u"同居", u"障害"}, u"K"_s),
            kCurrent,
            u",CodeKey(K.続柄)"_s};
}

ListPlan qualificationPlan() {
    return {{{u"F.社員Code", u"社員Code", u"社員Code"},
             {u"R.氏名", u"氏名", u"氏名"},
             {u"資格・免許.資格・免許", u"資格・免許", u"資格・免許"},
             {u"業務必要性.業務必要性", u"業務必要性", u"業務必要性"},
             {u"K.取得年月日", u"取得年月日", u"取得年月日"}},
            u" INNER JOIN 資格・免許テーブル AS K ON K.社員Code = R.社員Code"_s +
                masters(u"INNER"_s, {u"資格・免許", u"業務必要性"}, u"K"_s),
            kCurrent,
            u",CodeKey(K.資格・免許)"_s};
}

ListPlan planOf(PersonList list) {
    switch (list) {
        case PersonList::Staff:
            return staffPlan(false);
        case PersonList::Retired:
            return staffPlan(true);
        case PersonList::StaffSheet:
            return staffSheetPlan();
        case PersonList::Family:
            return familyPlan();
        case PersonList::Qualifications:
            return qualificationPlan();
    }
    Q_UNREACHABLE();
}

/// The headings of a sheet; the free attributes stand under the company's names.
QStringList headingsOf(store::Connection& cn, PersonList list) {
    auto names = cn.prepare(
        u"SELECT 自由マスタ1,自由マスタ2,自由マスタ3,自由マスタ4,自由マスタ5 FROM 会社テーブル LIMIT 1"_s);
    const bool named = names.step();
    QStringList headings;
    int attribute = 0;
    for (const ListColumn& column : planOf(list).columns) {
        QString heading = QString::fromUtf16(column.heading);
        if (heading.startsWith(u"自由"_s) && named) heading = names.toText(attribute++);
        headings << heading;
    }
    return headings;
}

}  // namespace

bool showsPosition(PersonList list) {
    return list != PersonList::Family && list != PersonList::Qualifications;
}

store::Recordset personRows(store::Connection& cn, PersonList list) {
    const ListPlan plan = planOf(list);
    QStringList columns;
    for (const ListColumn& column : plan.columns)
        columns << QString::fromUtf16(column.source) + u" AS "_s + QString::fromUtf16(column.name);
    return cn.query(
        u"SELECT %1 FROM 社員絞込 AS F INNER JOIN 履歴書テーブル AS R ON R.社員Code = F.社員Code%2 "
        "WHERE %3 ORDER BY CodeKey(F.社員Code)%4"_s.arg(columns.join(u','), plan.tables, plan.filter,
                                                        plan.orderBy));
}

reports::SheetGrid personSheet(store::Connection& cn, PersonList list, const store::Recordset& rows) {
    const QStringList headings = headingsOf(cn, list);
    reports::SheetGrid grid;
    grid.setHeadingRow(1);
    for (int column = 0; column < headings.size(); ++column) {
        constexpr int kMargin = 2;
        int widest = domain::byteCount(headings[column]);
        grid.setText(1, column + 1, headings[column]);
        for (int row = 0; row < rows.recordCount(); ++row) {
            const store::Value& value = rows.valueAt(row, column);
            widest = std::max(widest, domain::byteCount(value.toText()));
            grid.setValue(row + 2, column + 1, value);
        }
        grid.setColumnWidth(column + 1, widest + kMargin);
    }
    return grid;
}

int leftOut(store::Connection& cn, PersonList list, const store::Recordset& rows) {
    if (!showsPosition(list)) {
        const QString table = list == PersonList::Family ? u"家族テーブル"_s : u"資格・免許テーブル"_s;
        auto held = cn.prepare(
            u"SELECT COUNT(*) FROM 社員絞込 AS F INNER JOIN 履歴書テーブル AS R ON R.社員Code = F.社員Code "
            "INNER JOIN %1 AS K ON K.社員Code = R.社員Code WHERE %2"_s.arg(table, kCurrent));
        held.step();
        return std::max(0, static_cast<int>(held.toInteger(0)) - rows.recordCount());
    }
    QSet<QString> shown;
    for (int row = 0; row < rows.recordCount(); ++row) shown.insert(rows.valueAt(row, 0).toText());
    auto chosen = cn.prepare(u"SELECT COUNT(DISTINCT 社員Code) FROM 社員絞込"_s);
    chosen.step();
    return static_cast<int>(chosen.toInteger(0) - shown.size());
}

}  // namespace personnel
