#include "reports/report.h"

#include <gtest/gtest.h>

#include <QRect>

#include "reports/designs.h"

namespace {

using namespace Qt::StringLiterals;
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
    report.setData({u"a"_s}, std::vector<Report::Row>(static_cast<std::size_t>(rows), Report::Row(1)));
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

const Control& find(const Report& report, const QString& name) {
    for (const Section section : kAll)
        for (const Control& control : report.design().band(section).controls)
            if (control.name == name) return control;
    throw std::logic_error("no such control");
}

/// The sum and the average, as printed, of a column of amounts.
QStringList functionsOver(const std::vector<Value>& amounts) {
    Report report = makeReport(u"DataReportSHyou03"_s);
    std::vector<Report::Row> rows;
    for (const Value& amount : amounts) rows.push_back({amount});
    report.setData({u"合計"_s}, rows);
    QStringList texts;
    for (const QString& function : {u"Function2"_s, u"Function7"_s}) {
        report.bind(Section::Section5, function, u"合計"_s);
        texts << report.textOf(find(report, function), 0, 1);
    }
    return texts;
}

TEST(Functions, SumsAreExactAndAveragesRoundOnceAwayFromZero) {
    const auto yen = [](qint64 n) { return Value(Money::fromYen(n)); };
    const auto raw = [](qint64 n) { return Value(Money::fromRaw(n)); };
    const struct {
        std::vector<Value> amounts;
        const char16_t *sum, *average;
    } cases[] = {
        {{yen(100000), yen(200000), yen(300001)}, u"600,001", u"200,000"},
        {{yen(1), yen(2)}, u"3", u"2"},                     // 1.5
        {{yen(-1), yen(-2)}, u"-3", u"-2"},                 // -1.5
        {{yen(5), Value(), yen(6), Value()}, u"11", u"6"},  // Null counts in neither
        {{Value(), Value()}, u"", u""},                     // nothing to add
        {{raw(4999), raw(4999), raw(5000)}, u"1", u"0"},    // 0.49993…: not 0.5 first and then 1
        {{raw(-4999), raw(-4999), raw(-5000)}, u"-1", u"0"},
        {{yen(900000000000000), yen(1)}, u"900,000,000,000,001", u"450,000,000,000,001"},
        {{yen(900000000000000), yen(900000000000000)}, u"####", u"####"},  // beyond the type: no wrong number
    };
    for (const auto& c : cases)
        EXPECT_EQ(functionsOver(c.amounts),
                  QStringList({QString::fromUtf16(c.sum), QString::fromUtf16(c.average)}))
            << QString::fromUtf16(c.sum).toStdString();
}

TEST(Report, TokensDatesAndUnboundColumns) {
    Report report = makeReport(u"DataReportHData"_s);
    report.setTitle(u"一覧 %p"_s);
    report.setData({u"基準日"_s, u"賞与の内容"_s},
                   {{Value(QDate(2026, 12, 10)), Value(u"冬季賞与")}, {Value(QDate(2027, 7, 1)), Value()}});
    report.bind(Section::Section1, u"Text1"_s, u"基準日"_s);
    report.bind(Section::Section1, u"Text5"_s, u"賞与の内容"_s);

    const auto text = [&](const QString& control, int row, int page) {
        return report.textOf(find(report, control), row, page);
    };
    // A title is data: only the design's own caption has tokens. So is a caption that a screen sets.
    EXPECT_EQ(text(u"Label4"_s, 0, 3), u"一覧 %p"_s);
    EXPECT_EQ(text(u"Label5"_s, 0, 12), u"- 12 -"_s);
    report.setCaption(Section::Section4, u"Label6"_s, u"50%pの会"_s);
    EXPECT_EQ(text(u"Label6"_s, 0, 3), u"50%pの会"_s);

    EXPECT_EQ(text(u"Text1"_s, 1, 1), u"2027/7/1"_s);
    EXPECT_EQ(text(u"Text5"_s, 1, 1), QString());
    EXPECT_EQ(text(u"Text2"_s, 0, 1), QString());
}

TEST(Report, WithoutRowsTheNoticeStandsInsteadOfTheTotals) {
    Report report = makeReport(u"DataReportSHyou03"_s);
    const Control notice = find(report, u"Label9"_s);
    EXPECT_TRUE(report.isVisible(notice));
    EXPECT_EQ(report.bandHeight(Section::Section5), 0);
    const int withNotice = report.bandHeight(Section::Section4);

    report.setData({u"社員Code"_s}, {{Value(u"000001")}});
    EXPECT_FALSE(report.isVisible(find(report, u"Label9"_s)));
    EXPECT_GT(report.bandHeight(Section::Section5), 0);
    EXPECT_LT(report.bandHeight(Section::Section4), withNotice);
}

/// No control of a design reaches beyond its band or its width, and none lies on another text of its band.
TEST(Designs, ControlsStandInsideTheirBandsAndApart) {
    for (const QString& name : {u"DataReportSHyou03"_s, u"DataReportHData"_s}) {
        const Design design = designNamed(name);
        EXPECT_LE(design.width, paperWidth(design.paper));
        for (const Section section : kAll) {
            std::vector<QRect> before;
            for (const Control& c : design.band(section).controls) {
                const QRect box(c.left, c.top, c.width, c.height);
                EXPECT_TRUE(QRect(0, 0, design.width, design.band(section).height).contains(box))
                    << c.name.toStdString();
                for (const QRect& other : before) EXPECT_FALSE(box.intersects(other)) << c.name.toStdString();
                before.push_back(box);
            }
        }
    }
}

}  // namespace
