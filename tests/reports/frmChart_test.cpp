#include "reports/frmChart.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include "reports/ui_chart_view.h"
#include "screen_driver.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;
using namespace reports;

/// Long names, many of them, large and negative amounts, in the smallest window, on paper and on a wide
/// screen.
TEST(ChartPicture, WritingNeverOverlapsAndStaysInThePictureAndBarsAreToScale) {
    const QString longName = u"東日本第二営業本部広域法人営業推進部長付"_s;
    std::vector<CategoryItem> people;
    std::vector<StackItem> parts;
    for (int i = 0; i < 40; ++i) people.push_back({QString::number(100 + i), longName, 1e6 * i, u"a"_s});
    for (int i = 0; i < 24; ++i)
        parts.push_back({QString::number(10 + i / 2), longName, std::size_t(i % 2), i % 2 ? -3e7 : 9e7});
    const Chart base{u"名"_s,
                     u"支給額の分布"_s,
                     longName + longName + longName,
                     u"支給額（円）"_s,
                     u"人数（人）"_s,
                     u"円"_s,
                     {},
                     u"計算してください。"_s};
    std::vector<Chart> charts(6, base);
    charts[0].content = Distribution{{0, 50000000, 20}, std::vector<int>(20, 12345)};
    charts[1].content = overCategories(people);
    charts[2].content = overCategories({people.begin(), people.begin() + 5});
    charts[3].content = stackGroups({longName, u"冬"_s}, parts);
    charts[4].content = Points{{{20, 100000, u"a"_s}, {60, 987654321, u"b"_s}}, {}};
    charts[5].content = Points{};
    for (const Chart& chart : charts)
        for (const QSizeF size : {QSizeF(420, 280), QSizeF(800, 500), QSizeF(1900, 900)}) {
            ChartPicture picture(chart, widgets::paperChartColors());
            picture.resize(size);
            const auto& writings = picture.writings();
            for (std::size_t i = 0; i < writings.size(); ++i) {
                const QRectF& area = writings[i].area;
                EXPECT_TRUE(QRectF(QPointF(), size).contains(area)) << writings[i].text.toStdString();
                EXPECT_FALSE(area.intersects(picture.plotArea())) << writings[i].text.toStdString();
                for (std::size_t j = 0; j < i; ++j)
                    EXPECT_FALSE(area.intersects(writings[j].area))
                        << writings[i].text.toStdString() << " / " << writings[j].text.toStdString();
            }
        }
    // 9e7 to the right, 3e7 to the left of zero: a scale from -40,000,000 in steps of 20,000,000 to
    // 100,000,000.
    ChartPicture groups(charts[3], widgets::paperChartColors());
    groups.resize({1400, 700});
    EXPECT_NEAR(groups.markedArea(0).width() - 2, groups.plotArea().width() * 12 / 14, 0.5);
    EXPECT_EQ(groups.itemAt(groups.plotArea().topLeft() + QPointF(1, 1)), 0);
    EXPECT_EQ(groups.itemAt(groups.plotArea().bottomRight() - QPointF(1, 1)), 11);
    EXPECT_EQ(groups.itemAt({0, 0}), -1);
}

}  // namespace
