// Amounts, dates and the conversion into columns.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "store/column_type.h"
#include "store/date_text.h"
#include "store/money.h"
#include "support/store_probe.h"

namespace {

using namespace Qt::StringLiterals;
using store::ColumnType;
using store::Money;
using store::TypeKind;
using store::Value;
using support::reasonOf;
using Reason = store::Error::Reason;
using Texts = std::vector<const char16_t*>;

constexpr qint64 kMost = std::numeric_limits<qint64>::max();
constexpr qint64 kLeast = std::numeric_limits<qint64>::min();

std::string shown(const char16_t* text) {
    return QString::fromUtf16(text).toStdString();
}

TEST(Money, RoundsADoubleToTheNearestCountTiesToEven) {
    const std::vector<std::pair<double, qint64>> cases{
        {0, 0},        {0.0001, 1},    {0.00004, 0},     {1234.5, 12345000},
        {0.1, 1000},   {0.03125, 312}, {-0.03125, -312}, {-300000.75, -3000007500},
        {0.0313, 313}, {0.09375, 938}, {-0.09375, -938}, {1e14, 1000000000000000000}};
    for (const auto& [yen, raw] : cases) EXPECT_EQ(Money::fromDouble(yen).raw(), raw) << yen;
    for (const double bad : {9.3e14, -9.3e14, std::nan(""), HUGE_VAL})
        EXPECT_EQ(reasonOf([&] { Money::fromDouble(bad); }), Reason::Overflow) << bad;
}

TEST(Money, ReadsTextExactly) {
    const auto read = [](const char16_t* text) { return Money::fromText(QString::fromUtf16(text)).raw(); };
    const std::vector<std::pair<const char16_t*, qint64>> good{
        {u".5", 5000},           {u"0.00005", 0}, {u"0.000051", 1},    {u"1,234,567.5", 12345675000},
        {u"+3.", 30000},         {u"0.00015", 2}, {u" -12 ", -120000}, {u"-0.00015", -2},
        {u"-12,345", -123450000}};
    for (const auto& [text, raw] : good) EXPECT_EQ(read(text), raw) << shown(text);
    EXPECT_EQ(read(u"922337203685477.5807"), kMost);
    EXPECT_EQ(read(u"-922337203685477.5808"), kLeast);
    for (const auto* text : Texts{u"", u"-", u".", u"12a", u"1.2.3", u",5", u"1 2", u"1e3", u"1.5,0", u"3,5",
                                  u"1,2345", u"1234,567", u"1,,234", u"0,123"})
        EXPECT_EQ(reasonOf([&] { read(text); }), Reason::Type) << shown(text);
    for (const auto* text : Texts{u"922337203685477.5808", u"-922337203685477.5809", u"99999999999999999999"})
        EXPECT_EQ(reasonOf([&] { read(text); }), Reason::Overflow) << shown(text);
}

TEST(Number, TooSmallIsZeroAndTooLargeIsSeen) {
    EXPECT_EQ(store::parseNumber(u"1e-400"_s), 0.0);
    EXPECT_EQ(store::parseNumber(u"-1e400"_s), -HUGE_VAL);
}

TEST(Money, ArithmeticNeverWraps) {
    const Money most = Money::fromRaw(kMost), least = Money::fromRaw(kLeast), one = Money::fromRaw(1);
    EXPECT_EQ((most - one + one), most);
    EXPECT_EQ((least + one - one), least);
    EXPECT_EQ(reasonOf([&] { most + one; }), Reason::Overflow);
    EXPECT_EQ(reasonOf([&] { least - one; }), Reason::Overflow);
    EXPECT_EQ(reasonOf([&] { one - least; }), Reason::Overflow);
    EXPECT_EQ(reasonOf([&] { Money::fromYen(922337203685478); }), Reason::Overflow);
}

TEST(Money, FormatsAsAnOfficeWrites) {
    const std::vector<std::pair<qint64, const char16_t*>> amounts{
        {0, u"0"},          {9990000, u"999"}, {10000000, u"1,000"}, {12345675000, u"1,234,568"},
        {4999, u"0"},       {-4999, u"0"},     {-5000, u"-1"},       {-12345674999, u"-1,234,567"},
        {9995000, u"1,000"}};
    for (const auto& [raw, text] : amounts)
        EXPECT_EQ(formatGrouped(Money::fromRaw(raw)), QString::fromUtf16(text)) << raw;
    const std::vector<std::pair<double, const char16_t*>> coefficients{
        {1, u"1.000"},       {1.0005, u"1.001"},     {2.0015, u"2.002"},       {0.95, u"0.950"},
        {-0.0004, u"0.000"}, {1234.5, u"1,234.500"}, {999.9995, u"1,000.000"}, {-1.2345, u"-1.235"}};
    for (const auto& [number, text] : coefficients)
        EXPECT_EQ(store::formatCoefficient(number), QString::fromUtf16(text)) << number;
}

TEST(Date, ParsesEveryWrittenFormWithinTheErasLimits) {
    const std::vector<std::pair<const char16_t*, QDate>> good{
        {u"2003/4/1", QDate(2003, 4, 1)},         {u"2003-04-01", QDate(2003, 4, 1)},
        {u" 2003年4月1日 ", QDate(2003, 4, 1)},   {u"２００３/４/１", QDate(2003, 4, 1)},
        {u"平成15年4月1日", QDate(2003, 4, 1)},   {u"H15.4.1", QDate(2003, 4, 1)},
        {u"H15/4/1", QDate(2003, 4, 1)},          {u"平成元年1月8日", QDate(1989, 1, 8)},
        {u"昭和64年1月7日", QDate(1989, 1, 7)},   {u"S1.12.25", QDate(1926, 12, 25)},
        {u"T15.12.24", QDate(1926, 12, 24)},      {u"大正元年7月30日", QDate(1912, 7, 30)},
        {u"M45.7.29", QDate(1912, 7, 29)},        {u"平成31年4月30日", QDate(2019, 4, 30)},
        {u"令和元年5月1日", QDate(2019, 5, 1)},   {u"R6.2.29", QDate(2024, 2, 29)},
        {u"２０００／４／１", QDate(2000, 4, 1)}, {u"２０００・４・１", QDate(2000, 4, 1)},
        {u"　Ｈ１５．４．１", QDate(2003, 4, 1)}, {u"ｈ１５。４。１", QDate(2003, 4, 1)},
        {u"h15.4.1", QDate(2003, 4, 1)},          {u"H15-4-1", QDate(2003, 4, 1)},
        {u"２００３ー４ー１", QDate(2003, 4, 1)}, {u"平成１５年４月１日", QDate(2003, 4, 1)}};
    for (const auto& [text, date] : good)
        EXPECT_EQ(store::parseDate(QString::fromUtf16(text)), date) << shown(text);
    for (const auto* text : Texts{u"",
                                  u"昭和64年1月8日",
                                  u"平成31年5月1日",
                                  u"平成元年1月7日",
                                  u"令和元年4月30日",
                                  u"H0.1.1",
                                  u"S1.12.24",
                                  u"03/4/1",
                                  u"24/4/1",
                                  u"2003/4-1",
                                  u"2003/2/29",
                                  u"2003/13/1",
                                  u"2003/4/1x",
                                  u"2003.4.1",
                                  u"X1.1.1",
                                  u"20030401",
                                  u"2003/4",
                                  u"平成15/4/1",
                                  u"平成100年1月1日",
                                  u"12",
                                  u"0000/1/1",
                                  u"12003/4/1",
                                  u"１２００３／４／１",
                                  u"H15.4-1",
                                  u"H15ー4・1"})
        EXPECT_FALSE(store::parseDate(QString::fromUtf16(text))) << shown(text);
    EXPECT_EQ(store::formatDate(QDate(2003, 4, 1)), u"2003/4/1"_s);
    EXPECT_EQ(store::formatLongDate(QDate(2003, 4, 1)), u"2003年4月1日"_s);
}

TEST(Value, ConvertsIntoColumns) {
    constexpr ColumnType text4{TypeKind::Text, 4}, text10{TypeKind::Text, 10},
        currency{TypeKind::Currency, 0}, number{TypeKind::Double, 0}, date{TypeKind::DateTime, 0},
        boolean{TypeKind::Boolean, 0}, whole{TypeKind::Integer, 0};
    const std::vector<std::tuple<ColumnType, Value, Value>> good{
        {text4, u"総務部門", u"総務部門"},          {text4, 12, u"12"},
        {text10, QDate(2003, 4, 1), u"2003/4/1"},   {text4, true, u"True"},
        {text4, Money::fromRaw(-5000), u"-0.5"},    {boolean, u"true", true},
        {currency, 1.5, Money::fromRaw(15000)},     {boolean, 0.0, false},
        {currency, u"1,000", Money::fromYen(1000)}, {number, u"-1.25e1", -12.5},
        {number, Money::fromRaw(15000), 1.5},       {whole, 2.5, 2},
        {date, u"H15.4.1", QDate(2003, 4, 1)},      {whole, true, -1},
        {whole, Money::fromRaw(35000), 4},          {currency, {}, {}},
        {whole, Money::fromRaw(-25000), -2},        {date, QDate(), {}}};
    for (const auto& [type, from, to] : good)
        EXPECT_EQ(convertTo(type, from), to) << from.toText().toStdString();
    const std::vector<std::tuple<ColumnType, Value, Reason>> bad{
        {text4, u"12345", Reason::Type},         {currency, u"abc", Reason::Type},
        {number, u"0x10", Reason::Type},         {number, u"nan", Reason::Type},
        {date, u"2003/2/29", Reason::Type},      {date, 37712, Reason::Type},
        {whole, 2147483648.0, Reason::Overflow}, {number, HUGE_VAL, Reason::Overflow},
        {number, u"1e999", Reason::Overflow},    {currency, 1e15, Reason::Overflow}};
    for (const auto& [type, from, reason] : bad)
        EXPECT_EQ(reasonOf([&] { convertTo(type, from); }), reason) << from.toText().toStdString();
    EXPECT_EQ(support::errorOf([&] { convertTo(text4, u"12345"); })->text(),
              u"フィールドが小さすぎて、入力したデータを格納できません。"_s);
    EXPECT_EQ(Value(0.1 + 0.2).toText(), u"0.3"_s);
    EXPECT_EQ(reasonOf([] { Value().toDouble(); }), Reason::Type);
}

}  // namespace
