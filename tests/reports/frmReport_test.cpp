#include "reports/frmReport.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPrinter>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

#include "reports/designs.h"
#include "reports/ui_snapshot_report.h"
#include "shell/global_record.h"
#include "shell/ui_box.h"
#include "shell/ui_screens.h"
#include "store/catalog.h"

namespace {

using namespace reports;
using store::Money;
using store::Value;

const QStringList kColumns{QStringLiteral("社員Code"), QStringLiteral("氏名"),   QStringLiteral("個人別計算"),
                           QStringLiteral("総額配分"), QStringLiteral("金一封"), QStringLiteral("特別加算金"),
                           QStringLiteral("合計")};

/// A list of `rows` employees; the amounts of the first one are the longest that the type holds, his name
/// longer than its column.
Report amounts(int rows) {
    Report report = makeReport(QStringLiteral("DataReportSHyou03"));
    report.setTitle(QStringLiteral("賞与支給額"));
    std::vector<Report::Row> data;
    for (int i = 0; i < rows; ++i) {
        const Money amount = i == 0 ? Money::fromRaw(-9223372036854775807) : Money::fromYen(100000 + i);
        const QString name = i == 0 ? QString(80, u'長') : QStringLiteral("社員%1").arg(i);
        data.push_back({QStringLiteral("%1").arg(i + 1, 6, 10, QChar(u'0')), name, amount, amount, amount,
                        amount, amount});
    }
    report.setData(kColumns, std::move(data));
    for (int i = 0; i < kColumns.size(); ++i)
        report.bind(Section::Section1, QStringLiteral("Text%1").arg(i + 1), kColumns[i]);
    return report;
}

/// A painting device that keeps every drawn text with its box in the device's coordinates.
class TextRecorder : public QPaintDevice {
  public:
    struct Drawn {
        QString text;
        QRectF box;
    };
    std::vector<Drawn> texts;
    QPaintEngine* paintEngine() const override { return &engine_; }

  protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
            case PdmWidth:
                return 1000;
            case PdmHeight:
                return 1414;
            case PdmDevicePixelRatio:
                return 1;
            case PdmDevicePixelRatioScaled:
                return static_cast<int>(devicePixelRatioFScale());
            default:
                return 96;
        }
    }

  private:
    class Engine : public QPaintEngine {
      public:
        explicit Engine(TextRecorder& out) : QPaintEngine(AllFeatures), out_(out) {}
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState&) override {}
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
        void drawPath(const QPainterPath&) override {}
        Type type() const override { return User; }
        void drawTextItem(const QPointF& at, const QTextItem& item) override {
            const QRectF box(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent());
            out_.texts.push_back({item.text(), painter()->transform().mapRect(box)});
        }

      private:
        TextRecorder& out_;
    };
    mutable Engine engine_{*this};
};

TEST(ReportPainter, EveryRowIsDrawnOnceInsideThePageAndApart) {
    constexpr int kRows = 100;
    const QRectF page(0, 0, 1000, 1414);
    const ReportPainter painter(amounts(kRows));
    ASSERT_EQ(painter.pageCount(), 3);
    QStringList codes;
    for (int number = 1; number <= painter.pageCount(); ++number) {
        TextRecorder recorder;
        QPainter device(&recorder);
        painter.paint(device, page, number);
        device.end();
        QString all;
        for (std::size_t i = 0; i < recorder.texts.size(); ++i) {
            const auto& [text, box] = recorder.texts[i];
            all += text + u'\n';
            if (text.size() == 6 && text.startsWith(u'0')) codes << text;
            EXPECT_TRUE(page.adjusted(50, 40, -50, -40).contains(box)) << text.toStdString();
            for (std::size_t j = 0; j < i; ++j) {
                const QRectF common = box.intersected(recorder.texts[j].box);
                // Line boxes may touch by the font's leading, texts of one line may not.
                EXPECT_FALSE(common.width() > 0.5 && common.height() > box.height() / 2)
                    << text.toStdString() << " on " << recorder.texts[j].text.toStdString();
            }
        }
        EXPECT_TRUE(all.contains(QStringLiteral("- %1 -").arg(number)));
        EXPECT_EQ(all.count(QStringLiteral("氏名")), 1) << "page header";
        EXPECT_EQ(all.contains(QStringLiteral("賞与支給額")), number == 1);
        EXPECT_EQ(all.contains(QStringLiteral("【平均】")), number == 3);
        // Longest amounts stay whole, a longest name is cut visibly.
        EXPECT_EQ(all.count(QStringLiteral("-922,337,203,685,478")), number == 1 ? 5 : 0);
        EXPECT_EQ(all.contains(u'…'), number == 1);
    }
    ASSERT_EQ(codes.size(), kRows);
    EXPECT_EQ(codes.front(), QStringLiteral("000001"));
    EXPECT_EQ(codes.back(), QStringLiteral("000100"));
    EXPECT_EQ(codes.removeDuplicates(), 0);
}

class Preview : public testing::Test {
  protected:
    void SetUp() override {
        form_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form_));
    }
    template <class W>
    W* control(const char* name) {
        return form_.findChild<W*>(QString::fromLatin1(name));
    }
    frmReport form_{amounts(100), nullptr};
};

TEST_F(Preview, PagesMoveByButtonsNumberAndKeys) {
    EXPECT_EQ(form_.windowTitle(), QStringLiteral("賞与支給額"));
    EXPECT_EQ(control<QLabel>("lblPages")->text(), QStringLiteral("全 3 ページ"));
    EXPECT_FALSE(control<QPushButton>("cmdPrevious")->isEnabled());
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(&form_, key);
        return form_.page();
    };
    EXPECT_EQ(press(Qt::Key_PageDown), 2);
    EXPECT_EQ(press(Qt::Key_End), 3);
    EXPECT_EQ(press(Qt::Key_PageDown), 3);
    EXPECT_FALSE(control<QPushButton>("cmdNext")->isEnabled());
    EXPECT_EQ(press(Qt::Key_PageUp), 2);
    EXPECT_EQ(press(Qt::Key_Home), 1);
    control<QPushButton>("cmdLast")->click();
    EXPECT_EQ(form_.page(), 3);
    auto* field = control<QSpinBox>("txtPage");
    EXPECT_EQ(field->value(), 3);
    field->setValue(2);
    EXPECT_EQ(form_.page(), 2);
}

TEST_F(Preview, ZoomStepsFromWhatIsSeen) {
    auto* sheet = control<QWidget>("Sheet");
    form_.setZoom(100);
    const int real = sheet->width();
    EXPECT_NEAR(real, 210 / 25.4 * form_.logicalDpiX(), 1);
    QTest::keyClick(&form_, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_NEAR(sheet->width(), real * 1.25, 1);
    QTest::keyClick(&form_, Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(&form_, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_NEAR(sheet->width(), real * 0.75, 1);
    auto* zoom = control<QComboBox>("cboZoom");
    zoom->setCurrentIndex(1);  // the whole page
    EXPECT_LE(sheet->height(), control<QWidget>("PageView")->height());
    zoom->setCurrentIndex(0);  // the window's width
    EXPECT_GT(sheet->width(), form_.width() * 9 / 10);
}

TEST_F(Preview, PdfIsWrittenWholeOrNotAtAll) {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("賞与.pdf"));
    ASSERT_TRUE(form_.savePdf(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF-"));
    EXPECT_TRUE(bytes.contains("/Count 3"));
    EXPECT_TRUE(bytes.contains("/FontFile")) << "fonts are embedded";

    QStringList said;
    shell::setBoxHandler([&](const shell::BoxRequest& box) {
        said << box.text;
        return shell::BoxAnswer::Ok;
    });
    EXPECT_FALSE(form_.savePdf(folder.filePath(QStringLiteral("none/賞与.pdf"))));
    shell::setBoxHandler({});
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].startsWith(QStringLiteral("PDF ファイルを保存できません。")));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("賞与.pdf")});
}

TEST(ReportPainter, PrintsARangeOfPagesAndStopsWhenTold) {
    QTemporaryDir folder;
    const ReportPainter painter(amounts(100));
    const auto print = [&](int first, int last, const ReportPainter::Progress& progress) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        painter.setPaper(printer);
        printer.setOutputFileName(folder.filePath(QStringLiteral("p.pdf")));
        return painter.print(printer, first, last, progress);
    };
    EXPECT_TRUE(print(2, 3, {}));
    QFile file(folder.filePath(QStringLiteral("p.pdf")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("/Count 2"));
    int told = 0;
    EXPECT_FALSE(print(1, 3, [&](int) { return ++told < 2; }));
    EXPECT_EQ(told, 2);
}

TEST(SnapshotDates, AreListedInTheOrderOfTheirDates) {
    QTemporaryDir folder;
    shell::GlobalRecord global;
    shell::ScreenRegistry screens;
    shell::House house{global, screens};
    global.setCompanyPanel(QStringLiteral("見本商事株式会社"));
    global.cn_main = std::make_unique<store::Connection>(
        folder.filePath(QStringLiteral("a.mdb")), QStringLiteral("key"), store::Connection::Mode::Create);
    const QString table = QStringLiteral("Sデータ取込年月日運用");
    for (const QString& sql : store::createStatements(store::tableNamed(table))) global.cn_main->execute(sql);
    for (const int year : {2026, 1999, 2025})
        global.cn_main->execute(QStringLiteral("insert into %1 values (?, ?, ?, ?)").arg(table),
                                {QDate(year, 12, 10), QDate(year, 4, 1), QDate(year, 4, 2), u"冬季賞与"});

    const std::unique_ptr<QDialog> preview(previewSnapshotDates(house, nullptr));
    global.cn_main.reset();  // the open preview needs no connection
    const Report& report = dynamic_cast<frmReport&>(*preview).report();
    const auto texts = [&](Section section, int row) {
        QStringList all;
        for (const Control& c : report.design().band(section).controls)
            if (c.kind != ControlKind::Line) all << report.textOf(c, row, 1);
        return all.join(u'|');
    };
    EXPECT_EQ(preview->windowTitle(), QStringLiteral("配分実行 人事データ取込年月日"));
    EXPECT_EQ(texts(Section::Section4, 0),
              QStringLiteral("《配分実行》人事データ取込年月日|見本商事株式会社"));
    EXPECT_EQ(texts(Section::Section2, 0),
              QStringLiteral("基準日|年齢算出年月日|勤続年数算出年月日|賞与の内容"));
    EXPECT_EQ(texts(Section::Section1, 0), QStringLiteral("1999/12/10|1999/4/1|1999/4/2|冬季賞与"));
    EXPECT_EQ(texts(Section::Section1, 2), QStringLiteral("2026/12/10|2026/4/1|2026/4/2|冬季賞与"));
    EXPECT_EQ(report.design().band(Section::Section1).controls.back().width, 9000);
}

}  // namespace
