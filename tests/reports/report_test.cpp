#include "reports/report.h"

#include <gtest/gtest.h>

#include "reports/designs.h"

namespace {

using namespace reports;
using store::Money;
using store::Value;

const Section kAll[] = {Section::Section1, Section::Section2, Section::Section3, Section::Section4,
                        Section::Section5};

/// Bands of heights that divide well: on the first page there is room for 7 rows, on others for 10, and the
/// report footer takes the room of 3.
Report plainReport(int rows) {
    constexpr int kRow = 1000;
    Design design;
    design.width = 9000;
    const int room = paperHeight(design.paper) - 2 * kVerticalMargin;
    design.band(Section::Section1).height = kRow;
    design.band(Section::Section3).height = (room - 10 * kRow) / 2;
    design.band(Section::Section2).height = room - 10 * kRow - design.band(Section::Section3).height;
    design.band(Section::Section4).height = 3 * kRow;
    design.band(Section::Section5).height = 3 * kRow;
    Report report(design);
    report.setData({QStringLiteral("a")},
                   std::vector<Report::Row>(static_cast<std::size_t>(rows), Report::Row(1)));
    return report;
}

TEST(Pagination, RowsAndFooterFallOnTheRightPages) {
    const struct {
        int rows, pages, lastPageRows;
    } cases[] = {
        {0, 1, 0},  {1, 1, 1},  {4, 1, 4},   // the footer just fits the first page
        {5, 2, 0},  {7, 2, 0},               // full first page: the footer stands alone
        {8, 2, 1},  {14, 2, 7}, {15, 3, 0},  // 7 + 7 + footer, one row more and it moves on
        {17, 3, 0}, {18, 3, 1}, {32767, 3278, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rows);
        const Pagination pagination(plainReport(c.rows));
        ASSERT_EQ(pagination.pageCount(), c.pages);
        EXPECT_EQ(pagination.page(c.pages).rowCount, c.lastPageRows);
        int next = 0;
        for (int number = 1; number <= c.pages; ++number) {
            const Pagination::Page page = pagination.page(number);
            EXPECT_EQ(page.firstRow, next);
            EXPECT_EQ(page.reportHeader, number == 1);
            EXPECT_EQ(page.reportFooter, number == c.pages);
            next += page.rowCount;
        }
        EXPECT_EQ(next, c.rows);
    }
}

/// The texts of the functions over one column of amounts, in ten-thousandths; Null for no value.
QStringList functionsOver(const std::vector<Value>& amounts) {
    Report report = makeReport(QStringLiteral("DataReportSHyou03"));
    std::vector<Report::Row> rows;
    for (const Value& amount : amounts) rows.push_back({amount});
    report.setData({QStringLiteral("合計")}, rows);
    report.bind(Section::Section5, QStringLiteral("Function2"), QStringLiteral("合計"));
    report.bind(Section::Section5, QStringLiteral("Function7"), QStringLiteral("合計"));
    QStringList texts;
    for (const Control& control : report.design().band(Section::Section5).controls)
        if (control.name == u"Function2" || control.name == u"Function7")
            texts << report.textOf(control, 0, 1);
    return texts;
}

TEST(Functions, SumsAreExactAndAveragesRoundOnceAwayFromZero) {
    const auto yen = [](qint64 n) { return Value(Money::fromYen(n)); };
    const auto raw = [](qint64 n) { return Value(Money::fromRaw(n)); };
    const struct {
        std::vector<Value> amounts;
        const char16_t* sum;
        const char16_t* average;
    } cases[] = {
        {{yen(100000), yen(200000), yen(300001)}, u"600,001", u"200,000"},
        {{yen(1), yen(2)}, u"3", u"2"},      // 1.5
        {{yen(-1), yen(-2)}, u"-3", u"-2"},  // -1.5
        {{yen(5), Value(), yen(6), Value()},
         u"11",
         u"6"},  // Null counts neither in the sum nor in the number
        {{yen(0), yen(0)}, u"0", u"0"},
        {{Value(), Value()}, u"", u""},                   // nothing to add
        {{raw(4999), raw(4999), raw(5000)}, u"1", u"0"},  // 0.49993…: not 0.5 first and then 1
        {{raw(-4999), raw(-4999), raw(-5000)}, u"-1", u"0"},
        {{yen(900000000000000), yen(1)}, u"900,000,000,000,001", u"450,000,000,000,001"},
        {{yen(900000000000000), yen(900000000000000)}, u"####", u"####"},  // beyond the type: no wrong number
    };
    for (const auto& c : cases)
        EXPECT_EQ(functionsOver(c.amounts),
                  QStringList({QString::fromUtf16(c.sum), QString::fromUtf16(c.average)}))
            << QString::fromUtf16(c.sum).toStdString();
}

const Control& find(const Report& report, const char16_t* name) {
    for (const Section section : kAll)
        for (const Control& control : report.design().band(section).controls)
            if (control.name == QStringView(name)) return control;
    throw std::logic_error("no such control");
}

TEST(Report, TokensDatesAndUnboundColumns) {
    Report report = makeReport(QStringLiteral("DataReportHData"));
    report.setTitle(QStringLiteral("一覧 %p"));
    report.setData({QStringLiteral("基準日"), QStringLiteral("賞与の内容")},
                   {{Value(QDate(2026, 12, 10)), Value(u"冬季賞与")}, {Value(QDate(2027, 7, 1)), Value()}});
    report.bind(Section::Section1, QStringLiteral("Text1"), QStringLiteral("基準日"));
    report.bind(Section::Section1, QStringLiteral("Text5"), QStringLiteral("賞与の内容"));

    // A title is data: only the design's own caption has tokens. So is a caption that a screen sets.
    EXPECT_EQ(report.textOf(find(report, u"Label4"), 0, 3), QStringLiteral("一覧 %p"));
    EXPECT_EQ(report.textOf(find(report, u"Label5"), 0, 12), QStringLiteral("- 12 -"));
    report.setCaption(Section::Section4, QStringLiteral("Label6"), QStringLiteral("50%pの会"));
    EXPECT_EQ(report.textOf(find(report, u"Label6"), 0, 3), QStringLiteral("50%pの会"));

    EXPECT_EQ(report.textOf(find(report, u"Text1"), 1, 1), QStringLiteral("2027/7/1"));
    EXPECT_EQ(report.textOf(find(report, u"Text5"), 0, 1), QStringLiteral("冬季賞与"));
    EXPECT_EQ(report.textOf(find(report, u"Text5"), 1, 1), QString());
    EXPECT_EQ(report.textOf(find(report, u"Text2"), 0, 1), QString());
}

TEST(Report, WithoutRowsTheNoticeStandsInsteadOfTheTotals) {
    Report report = makeReport(QStringLiteral("DataReportSHyou03"));
    const Control notice = find(report, u"Label9");
    EXPECT_TRUE(report.isVisible(notice));
    EXPECT_EQ(report.textOf(notice, 0, 1), QStringLiteral("該当者はいません。"));
    EXPECT_EQ(report.bandHeight(Section::Section5), 0);
    const int withNotice = report.bandHeight(Section::Section4);

    report.setData({QStringLiteral("社員Code")}, {{Value(u"000001")}});
    EXPECT_FALSE(report.isVisible(find(report, u"Label9")));
    EXPECT_GT(report.bandHeight(Section::Section5), 0);
    EXPECT_LT(report.bandHeight(Section::Section4), withNotice);

    report.setCaption(Section::Section4, QStringLiteral("Label9"), QStringLiteral("支給係数 = 1.5"));
    report.setVisible(Section::Section4, QStringLiteral("Label9"), true);
    EXPECT_TRUE(report.isVisible(find(report, u"Label9")));
    EXPECT_EQ(report.bandHeight(Section::Section4), withNotice);
}

/// A copied report keeps its rows when the source gets others: a preview depends on nothing outside.
TEST(Report, ACopyKeepsItsOwnRows) {
    Report report = plainReport(5);
    const Report preview = report;
    report.setData({QStringLiteral("a")}, {});
    EXPECT_EQ(preview.rowCount(), 5);
}

/// No control of a design reaches beyond its band or its width, and none lies on another text of its band.
TEST(Designs, ControlsStandInsideTheirBandsAndApart) {
    for (const QString& name : {QStringLiteral("DataReportSHyou03"), QStringLiteral("DataReportHData")}) {
        const Design design = designNamed(name);
        EXPECT_LE(design.width, paperWidth(design.paper));
        for (const Section section : kAll) {
            const Band& band = design.band(section);
            for (std::size_t i = 0; i < band.controls.size(); ++i) {
                const Control& a = band.controls[i];
                EXPECT_TRUE(a.left >= 0 && a.left + a.width <= design.width &&
                            a.top + a.height <= band.height)
                    << a.name.toStdString();
                for (std::size_t j = 0; j < i; ++j) {
                    const Control& b = band.controls[j];
                    EXPECT_FALSE(a.left < b.left + b.width && b.left < a.left + a.width &&
                                 a.top < b.top + b.height && b.top < a.top + a.height)
                        << a.name.toStdString() << " over " << b.name.toStdString();
                }
            }
        }
    }
}

}  // namespace
