#include "sample_design.h"

#include <QHash>
#include <array>

#include "sample_lists.h"
#include "sample_writer.h"

namespace t = schema::tables;

namespace sample {

const std::vector<CoefficientUse> kCoefficientUses = {
    // 01/01, individual: A only, B only, both, and one set on neither
    {0, u'1', 1, false, true, false},
    {0, u'1', 2, false, true, true},
    {0, u'1', 3, false, true, false},
    {0, u'1', 5, true, true, true},
    {0, u'1', 6, false, false, true},
    {0, u'1', 8, false, false, true},
    {0, u'1', 9, false, false, false},
    {0, u'1', 11, false, true, false},
    {0, u'1', 16, true, true, true},
    // 01/01, pool
    {0, u'2', 3, false, true, false},
    {0, u'2', 4, false, true, true},
    {0, u'2', 5, true, true, false},
    {0, u'2', 7, false, false, true},
    {0, u'2', 10, false, true, false},
    {0, u'2', 12, false, false, true},
    {0, u'2', 13, false, false, false},
    // 01/02, individual
    {1, u'1', 4, false, true, true},
    {1, u'1', 5, true, true, true},
    {1, u'1', 7, false, true, false},
    {1, u'1', 8, false, true, true},
    {1, u'1', 17, true, false, true},
    {1, u'1', 18, true, false, false},
    // 02/01, pool
    {2, u'2', 2, false, true, false},
    {2, u'2', 4, false, true, true},
    {2, u'2', 5, true, true, true},
    {2, u'2', 6, false, true, false},
    {2, u'2', 9, false, false, true},
    {2, u'2', 16, true, true, false},
    // 02/02, individual: nothing acts on base B
    {3, u'1', 2, false, true, false},
    {3, u'1', 3, false, false, false},
    {3, u'1', 5, true, true, false},
    {3, u'1', 10, false, true, false},
};

const std::vector<BaseUse> kBaseUses = {
    {0, u'1', u'1', u'3', 0}, {0, u'1', u'2', u'2', 30000}, {0, u'2', u'1', u'3', 0},
    {0, u'2', u'2', u'1', 0}, {1, u'1', u'1', u'1', 0},     {1, u'1', u'2', u'3', 0},
    {2, u'2', u'1', u'1', 0}, {2, u'2', u'2', u'2', 10000}, {3, u'1', u'1', u'2', 180000},
};

const std::vector<PaymentUse> kPaymentUses = {
    {0, u'3', u"4", 0},
    {1, u'2', u"", 2500},
    {3, u'1', u"", 0},
};

namespace {

constexpr int kScales = 12;
constexpr int kKinds = 18;

struct Kind {
    const char16_t* ownName;  ///< the company's display name
    const char16_t* table;    ///< look-up table; null for kinds that are only typed
};

const std::array<Kind, kKinds>& kinds() {
    static const std::array<Kind, kKinds> kinds = {{
        {u"年齢係数", t::S係数年齢2::kName},
        {u"勤続係数", t::S係数勤続年数2::kName},
        {u"等級係数", t::S係数等級::kName},
        {u"評価係数", t::S係数評価::kName},
        {u"出勤率", nullptr},
        {u"区分係数", t::S係数社員区分::kName},
        {u"部門業績係数", t::S係数所属大::kName},
        {u"役職係数", t::S係数役職::kName},
        {u"職種係数", t::S係数職種::kName},
        {u"コース係数", t::S係数コース::kName},
        {u"職能資格係数", t::S係数自由1::kName},
        {u"勤務地係数", t::S係数自由2::kName},
        {u"組合係数", t::S係数自由3::kName},
        {u"自由4係数", t::S係数自由4::kName},
        {u"自由5係数", t::S係数自由5::kName},
        {u"在籍月数係数", nullptr},
        {u"功労係数", nullptr},
        {u"調整係数", nullptr},
    }};
    return kinds;
}

const char16_t* kubunOf(int criterion) {
    return kCriteria[criterion].kubun;
}
const char16_t* kijunOf(int criterion) {
    return kCriteria[criterion].kijun;
}
QString kindCode(int kind) {
    return QString::number(kind).rightJustified(2, u'0');
}
constexpr double factor(int thousandths) {
    return thousandths / 1000.0;
}

struct LookupRow {
    QString key;
    int thousandths;
};
using Rows = std::vector<LookupRow>;

Rows ageRows() {
    Rows rows;
    for (int age = 18; age <= 65; ++age)
        rows.push_back({QString::number(age), age < 25 ? 900 : age < 35 ? 1000 : age < 45 ? 1050 : 1100});
    return rows;
}

Rows tenureRows() {
    Rows rows;
    for (int years = 0; years <= 47; ++years)
        rows.push_back({QString::number(years), years < 1 ? 500 : years < 3 ? 900 : 1000 + years / 5 * 10});
    return rows;
}

Rows gradeStepRows() {
    Rows rows;
    for (int toukyuu = 1; toukyuu <= 20; ++toukyuu)
        rows.push_back({QString::number(toukyuu), 1000 + toukyuu * 10});
    return rows;
}

/// Codes of a master, each a step below the one before.
Rows codeRows(const std::vector<lists::Entry>& entries, int first, int step) {
    Rows rows;
    for (const lists::Entry& entry : entries) {
        rows.push_back({QString::fromUtf16(entry.code), first});
        first -= step;
    }
    return rows;
}

Rows evaluationRows(int criterion) {
    Rows rows;
    int thousandths = 1200;
    for (QChar letter : scaleOf(hyougoTypeOf(criterion).value_or(0))) {
        rows.push_back({QString(letter), thousandths});
        thousandths -= 100;
    }
    return rows;
}

Rows baseRowsOf(int criterion, int kind) {
    switch (kind) {
        case 1:
            return ageRows();
        case 2:
            return tenureRows();
        case 3:
            return gradeStepRows();
        case 4:
            return evaluationRows(criterion);
        case 6:
            return codeRows(lists::kSyainKubun, 1000, 50);
        case 7:
            return codeRows(lists::kSyozokuDai, 1060, 20);
        case 8:
            return codeRows(lists::kYakusyoku, 1300, 60);
        case 9:
            return codeRows(lists::kSyokusyu, 1000, -15);
        case 10:
            return codeRows(lists::kCourse, 1050, 25);
        case 11:
            return codeRows(lists::kJiyuu1, 1000, -30);
        case 12:
            return codeRows(lists::kJiyuu2, 1040, 20);
        case 13:
            return codeRows(lists::kJiyuu3, 1000, 10);
        default:
            return {};
    }
}

/// The rows of a look-up table for a criterion: no two criteria share a value.
Rows lookupRows(int criterion, int kind) {
    Rows rows = baseRowsOf(criterion, kind);
    for (LookupRow& row : rows) row.thousandths += criterion * 4;
    return rows;
}

using Lookup = QHash<QString, int>;
using Lookups = std::array<std::array<Lookup, kKinds + 1>, std::size(kCriteria)>;

const Lookups& lookups() {
    static const Lookups all = [] {
        Lookups made;
        for (int criterion = 0; criterion < static_cast<int>(std::size(kCriteria)); ++criterion)
            for (int kind = 1; kind <= kKinds; ++kind)
                for (const LookupRow& row : lookupRows(criterion, kind))
                    made[static_cast<std::size_t>(criterion)][static_cast<std::size_t>(kind)].insert(
                        row.key, row.thousandths);
        return made;
    }();
    return all;
}

void writeCriteria(store::Connection& cn) {
    TableWriter kubun(cn, t::S配分区分::kName);
    kubun.write({{}, u"01", u"正社員賞与", true});
    kubun.write({{}, u"02", u"嘱託・パート賞与", true});
    kubun.write({{}, u"09", u"決算賞与（休止）", false});
    TableWriter kijun(cn, t::S配分基準::kName);
    for (const Criterion& c : kCriteria)
        kijun.write(
            {{}, c.kubun, c.kijun, c.kijunName, true, c.kojinbetsu, c.sougaku, c.kinIppuu, c.tokubetsu});
    kijun.write({{}, u"01", u"09", u"旧基準（休止）", false, true, true, true, true});
}

void writeCoefficientUses(store::Connection& cn) {
    TableWriter writer(cn, t::S係数設定::kName);
    for (const CoefficientUse& use : kCoefficientUses) {
        using namespace t::S係数設定;
        store::Binds row = writer.blank();
        row[配分区分Code] = kubunOf(use.criterion);
        row[配分基準Code] = kijunOf(use.criterion);
        row[設定名称] = kindCode(use.kind);
        row[算定方式] = QString(use.method);
        row[入力区分Code] = use.typed ? u"1" : u"2";
        row[入力区分] = use.typed ? u"実行時入力" : u"自動入力";
        row[係数] = kinds()[static_cast<std::size_t>(use.kind - 1)].ownName;
        row[表示順] = use.kind;
        row[基礎額Ａ] = use.a;
        row[基礎額Ｂ] = use.b;
        writer.write(row);
    }
    store::Statement names =
        cn.prepare(QStringLiteral("UPDATE S係数名称設定 SET 係数名称 = ? WHERE Code = ?"));
    for (int kind = 1; kind <= kKinds; ++kind) {
        names.bindAll({kinds()[static_cast<std::size_t>(kind - 1)].ownName, kindCode(kind)});
        names.run();
    }
}

void writeLookups(store::Connection& cn) {
    for (int kind = 1; kind <= kKinds; ++kind) {
        const char16_t* const table = kinds()[static_cast<std::size_t>(kind - 1)].table;
        if (!table) continue;
        TableWriter writer(cn, table);
        for (int criterion = 0; criterion < static_cast<int>(std::size(kCriteria)); ++criterion) {
            int order = 0;
            for (const LookupRow& row : lookupRows(criterion, kind)) {
                store::Binds values{
                    {}, kubunOf(criterion), kijunOf(criterion), row.key, factor(row.thousandths)};
                if (kind == 4) values.push_back(kindCode(++order));
                writer.write(values);
            }
        }
    }
}

void writeBaseUses(store::Connection& cn, bool wageItems) {
    TableWriter writer(cn, t::S基礎額設定::kName);
    TableWriter basicPay(cn, t::S基礎額基本給::kName);
    TableWriter allowances(cn, t::S基礎額手当::kName);
    for (const BaseUse& use : kBaseUses) {
        const char16_t way = use.way == u'3' && !wageItems ? u'1' : use.way;
        writer.write({{},
                      kubunOf(use.criterion),
                      kijunOf(use.criterion),
                      QString(use.method),
                      QString(use.side),
                      QString(way),
                      store::Money::fromYen(use.uniform)});
        if (way != u'3') continue;
        for (const char16_t* item : kBasicPay)
            basicPay.write({{},
                            kubunOf(use.criterion),
                            kijunOf(use.criterion),
                            QString(use.method),
                            QString(use.side),
                            item});
        for (int item = 0; item < kAllowancesInBase; ++item)
            allowances.write({{},
                              kubunOf(use.criterion),
                              kijunOf(use.criterion),
                              QString(use.method),
                              QString(use.side),
                              kAllowances[item]});
    }
}

void writeGrades(store::Connection& cn) {
    TableWriter words(cn, t::S評価2テーブル::kName);
    for (int type = 1; type <= kScales; ++type) {
        int order = 0;
        for (QChar letter : scaleOf(type))
            words.write({{}, QString::number(type), kindCode(++order), QString(letter)});
    }
    TableWriter steps(cn, t::S係数評価段階設定::kName);
    for (int criterion = 0; criterion < static_cast<int>(std::size(kCriteria)); ++criterion)
        if (const std::optional<int> type = hyougoTypeOf(criterion))
            steps.write({{}, kubunOf(criterion), kijunOf(criterion), QString::number(*type)});
}

void writePayments(store::Connection& cn) {
    TableWriter writer(cn, t::S支給係数設定::kName);
    TableWriter grades(cn, t::S支給係数評価あり::kName);
    for (const PaymentUse& use : kPaymentUses) {
        writer.write({{},
                      kubunOf(use.criterion),
                      kijunOf(use.criterion),
                      QString(use.way),
                      use.hyougoType,
                      factor(use.uniform)});
        if (use.way != u'3') continue;
        int order = 0;
        for (QChar letter : scaleOf(QString::fromUtf16(use.hyougoType).toInt()))
            grades.write({{},
                          kubunOf(use.criterion),
                          kijunOf(use.criterion),
                          QString(letter),
                          factor(paymentOf(use.criterion, letter)),
                          kindCode(++order)});
    }
}

}  // namespace

QString scaleOf(int hyougoType) {
    if (hyougoType < 1 || hyougoType > kScales) return {};
    const QString letters = QStringLiteral("SABCDEFGH");
    return hyougoType <= 6 ? letters.left(10 - hyougoType) : letters.mid(1, 14 - hyougoType);
}

std::optional<int> hyougoTypeOf(int criterion) {
    static constexpr int kTypes[] = {4, 9, 11, 0};
    const int type = kTypes[criterion];
    return type > 0 ? std::optional<int>(type) : std::nullopt;
}

std::optional<int> coefficientOf(int criterion, int kind, const QString& key) {
    const Lookup& lookup = lookups()[static_cast<std::size_t>(criterion)][static_cast<std::size_t>(kind)];
    const auto found = lookup.constFind(key);
    return found == lookup.constEnd() ? std::nullopt : std::optional<int>(*found);
}

int paymentOf(int criterion, QChar grade) {
    const int place = static_cast<int>(scaleOf(hyougoTypeOf(criterion).value_or(0)).indexOf(grade));
    return 2600 - 200 * place;
}

void writeDesign(store::Connection& cn, bool wageItems) {
    writeCriteria(cn);
    writeCoefficientUses(cn);
    writeLookups(cn);
    writeBaseUses(cn, wageItems);
    writeGrades(cn);
    writePayments(cn);
}

}  // namespace sample
