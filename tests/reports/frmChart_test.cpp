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
        const QRectF area = view.chart()->plotArea();
        QTest::mouseMove(view.viewport(), view.mapFromScene(area.center() - QPointF(0, area.height() / 4)));
        EXPECT_EQ(text(screen, u"lblPoint"_s), u"総務　夏 1円　冬 3円　合計 4円"_s);
        screen.close();
    });
}

}  // namespace
