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

TEST(ChartWindow, TellsOneByOneWhatIsShownSavesItAndSaysWhatToDoWithNothing) {
    const Chart one{u"年齢"_s,
                    u"年齢と支給額"_s,
                    u"1人"_s,
                    u"年齢"_s,
                    u"支給額"_s,
                    u"円"_s,
                    Points{{{46, 350000, u"000001 山田"_s}}, {}},
                    u"計算してください。"_s};
    Chart none = one, classes = one, groups = one;
    none.content = Points{};
    classes.content = Distribution{{100000, 50000, 2}, {3, 4}};
    groups.content = Stack{{u"総務"_s, u"営業"_s}, {{u"夏"_s, {1, 2}}, {u"冬"_s, {3, 4}}}};
    QTemporaryDir folder;
    ScreenDriver driver;
    frmChart form({one, none, classes, groups}, u"◆正社員賞与"_s, nullptr);
    driver.run(form, [&](QDialog& screen) {
        auto& tabs = control<QTabWidget>(screen, u"tabCharts"_s);
        EXPECT_EQ(screen.focusWidget(), tabs.currentWidget());
        const QString hint = text(screen, u"lblPoint"_s);
        const auto told = [&](Qt::Key key) {
            press(screen, key);
            return text(screen, u"lblPoint"_s);
        };
        EXPECT_EQ(told(Qt::Key_Right), u"000001 山田　年齢 46　350,000円"_s);
        EXPECT_TRUE(form.savePicture(folder.filePath(u"a.png"_s)));
        EXPECT_EQ(QImage(folder.filePath(u"a.png"_s)).size(), QSize(1600, 1000));
        driver.expectBox(
            u"画像を保存できません。\n/nowhere/a.png\nそのようなファイルやディレクトリはありません"_s,
            u"グラフ"_s);
        EXPECT_FALSE(form.savePicture(u"/nowhere/a.png"_s));
        press(screen, Qt::Key_2, Qt::AltModifier);
        EXPECT_EQ(text(screen, u"lblPoint"_s), QString());
        EXPECT_EQ(dynamic_cast<QLabel&>(*tabs.currentWidget()).text(), one.empty);
        EXPECT_FALSE(enabled(screen, u"cmdSave"_s));
        press(screen, Qt::Key_3, Qt::AltModifier);
        EXPECT_EQ(text(screen, u"lblPoint"_s), hint);
        EXPECT_EQ(told(Qt::Key_End), u"150,000円 以上 200,000円 未満　4人"_s);
        EXPECT_EQ(told(Qt::Key_Left), u"100,000円 以上 150,000円 未満　3人"_s);
        press(screen, Qt::Key_4, Qt::AltModifier);
        // The upper bar is the first group.
        const auto& view = dynamic_cast<ChartView&>(*tabs.currentWidget());
        const QRectF area = view.picture().plotArea();
        QTest::mouseMove(tabs.currentWidget(), (area.center() - QPointF(0, area.height() / 4)).toPoint());
        EXPECT_EQ(text(screen, u"lblPoint"_s), u"総務　夏 1円　冬 3円　合計 4円"_s);
        screen.close();
    });
}

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
