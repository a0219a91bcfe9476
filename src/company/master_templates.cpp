#include "company/master_templates.h"

#include "schema/upgrade.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using Row = MasterTemplate::Row;

std::vector<Row> named(const QStringList& names) {
    std::vector<Row> rows;
    for (const QString& name : names) rows.push_back({name});
    return rows;
}

/// 1等級 to 20等級, as a transfer can name them.
std::vector<Row> grades() {
    constexpr int kGrades = 20;
    std::vector<Row> rows;
    for (int grade = 1; grade <= kGrades; ++grade) rows.push_back({u"%1等級"_s.arg(grade)});
    return rows;
}

const QStringList kPrefectures{
    u"北海道"_s, u"青森県"_s, u"岩手県"_s, u"宮城県"_s, u"秋田県"_s, u"山形県"_s,   u"福島県"_s, u"茨城県"_s,
    u"栃木県"_s, u"群馬県"_s, u"埼玉県"_s, u"千葉県"_s, u"東京都"_s, u"神奈川県"_s, u"新潟県"_s, u"富山県"_s,
    u"石川県"_s, u"福井県"_s, u"山梨県"_s, u"長野県"_s, u"岐阜県"_s, u"静岡県"_s,   u"愛知県"_s, u"三重県"_s,
    u"滋賀県"_s, u"京都府"_s, u"大阪府"_s, u"兵庫県"_s, u"奈良県"_s, u"和歌山県"_s, u"鳥取県"_s, u"島根県"_s,
    u"岡山県"_s, u"広島県"_s, u"山口県"_s, u"徳島県"_s, u"香川県"_s, u"愛媛県"_s,   u"高知県"_s, u"福岡県"_s,
    u"佐賀県"_s, u"長崎県"_s, u"熊本県"_s, u"大分県"_s, u"宮崎県"_s, u"鹿児島県"_s, u"沖縄県"_s};

}  // namespace

const std::vector<MasterTemplate>& masterTemplates() {
    static const std::vector<MasterTemplate> all{
        {u"社員区分マスタ"_s, u"社員区分"_s, true,
         named({u"正社員"_s, u"契約社員"_s, u"嘱託"_s, u"パート"_s, u"役員"_s})},
        {u"所属大マスタ"_s, u"所属大"_s, true, named({u"総務部"_s, u"経理部"_s, u"営業部"_s, u"製造部"_s})},
        {u"役職マスタ"_s, u"役職"_s, true,
         named({u"部長"_s, u"次長"_s, u"課長"_s, u"係長"_s, u"主任"_s, u"一般"_s})},
        {u"職種マスタ"_s, u"職種"_s, true, named({u"事務職"_s, u"営業職"_s, u"技術職"_s, u"技能職"_s})},
        {u"コースマスタ"_s, u"コース"_s, false,
         named({u"総合職"_s, u"一般職"_s, u"地域限定職"_s, u"専門職"_s})},
        {u"異動事由マスタ"_s, u"異動事由"_s, true,
         named({u"新規採用"_s, u"定期異動"_s, u"昇進"_s, u"昇格"_s, u"配置転換"_s, u"出向"_s, u"復職"_s,
                u"区分変更"_s, u"組織変更"_s})},
        {u"住宅区分マスタ"_s, u"住宅区分"_s, false, named({u"持家"_s, u"賃貸"_s, u"社宅"_s, u"親元"_s})},
        {u"最終学歴マスタ"_s,
         u"最終学歴"_s,
         true,
         {{u"中学校卒"_s, 15},
          {u"高等学校卒"_s, 18},
          {u"専門学校卒"_s, 20},
          {u"高専卒"_s, 20},
          {u"短期大学卒"_s, 20},
          {u"大学卒"_s, 22},
          {u"大学院修士"_s, 24},
          {u"大学院博士"_s, 27}}},
        {u"採用区分マスタ"_s, u"採用区分"_s, false,
         named({u"新卒採用"_s, u"中途採用"_s, u"縁故採用"_s, u"再雇用"_s})},
        {u"資格・免許マスタ"_s, u"資格・免許"_s, false,
         named({u"普通自動車免許"_s, u"大型自動車免許"_s, u"日商簿記２級"_s, u"日商簿記３級"_s,
                u"社会保険労務士"_s, u"衛生管理者"_s, u"危険物取扱者"_s, u"基本情報技術者"_s})},
        {u"続柄グループマスタ"_s, u"続柄グループ"_s, false,
         named({u"配偶者"_s, u"子"_s, u"父母"_s, u"祖父母"_s, u"兄弟姉妹"_s, u"その他"_s})},
        {u"続柄マスタ"_s, u"続柄"_s, false, {{u"夫"_s, u"01"},   {u"妻"_s, u"01"},    {u"長男"_s, u"02"},
                                             {u"長女"_s, u"02"}, {u"次男"_s, u"02"},  {u"次女"_s, u"02"},
                                             {u"三男"_s, u"02"}, {u"三女"_s, u"02"},  {u"父"_s, u"03"},
                                             {u"母"_s, u"03"},   {u"義父"_s, u"03"},  {u"義母"_s, u"03"},
                                             {u"祖父"_s, u"04"}, {u"祖母"_s, u"04"},  {u"兄"_s, u"05"},
                                             {u"姉"_s, u"05"},   {u"弟"_s, u"05"},    {u"妹"_s, u"05"},
                                             {u"孫"_s, u"06"},   {u"その他"_s, u"06"}}},
        {u"出身地マスタ"_s, u"出身地"_s, false, named(kPrefectures)},
        {u"等級マスタ"_s, u"等級"_s, false, grades()},
    };
    return all;
}

void fillMaster(store::Connection& kihon, const MasterTemplate& master, QDate since) {
    const schema::Table& table = schema::tableNamed(master.table);
    const bool dated = table.columns.back().type.kind == store::TypeKind::DateTime;
    const int width = master.table == u"等級マスタ" ? 1 : 2;  // a transfer names its 等級 by the number
    int code = 0;
    for (const Row& row : master.rows) {
        store::Binds values{u"%1"_s.arg(++code, width, 10, QChar(u'0')), row.name};
        if (dated) values.push_back(since);
        if (!row.extra.isNull()) values.push_back(row.extra);
        schema::insertRow(kihon, table, values);
    }
}

}  // namespace company
