#include "reports/frmReport.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPaintEngine>
#include <QPainter>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/screens.h"
#include "reports/designs.h"
#include "reports/ui_snapshot_report.h"
#include "schema/catalog.h"

namespace {

using namespace Qt::StringLiterals;
using namespace reports;
using store::Money;
using store::Value;

const QStringList kColumns{u"社員Code"_s, u"氏名"_s,       u"個人別計算"_s, u"総額配分"_s,
                           u"金一封"_s,   u"特別加算金"_s, u"合計"_s};

/// A list of `rows` employees; the amounts of the first one are the longest that the type holds, his name
/// longer than its column. A line separator has crept into the other names.
Report amounts(int rows) {
    Report report = makeReport(u"DataReportSHyou03"_s);
    report.setTitle(u"K7賞与支給額"_s);
    std::vector<Report::Row> data;
    for (int i = 0; i < rows; ++i) {
        const Money amount = i == 0 ? Money::fromRaw(-9223372036854775807) : Money::fromYen(100000 + i);
        const QString name = i == 0 ? QString(80, u'長') : u"社員\u2028%1"_s.arg(i);
        data.push_back(
            {u"%1"_s.arg(i + 1, 6, 10, QChar(u'0')), name, amount, amount, amount, amount, amount});
    }
    report.setData(kColumns, std::move(data));
    for (int i = 0; i < kColumns.size(); ++i)
        report.bind(Section::Section1, u"Text%1"_s.arg(i + 1), kColumns[i]);
    return report;
}

/// A page that keeps every drawn text with its box instead of painting it.
class TextRecorder : public QImage {
  public:
    struct Drawn {
        QString text;
        QRectF box;
    };
    std::vector<Drawn> texts;
    TextRecorder() : QImage(1000, 1414, Format_RGB32) {}
    QPaintEngine* paintEngine() const override { return &engine_; }

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
        TextRecorder& out_;
    };
    mutable Engine engine_{*this};
};

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(ReportPainter, EveryRowIsDrawnOnceInsideThePageAndApart) {
    constexpr int kRows = 100;
    const QRectF page(0, 0, 1000, 1414);
    Report report = amounts(kRows);
    const QString origin = u"基準日 2026/12/10　作成日 2026/11/23　見本商事"_s;
    report.setOrigin(origin);
    const ReportPainter painter(report);
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
        EXPECT_TRUE(all.contains(u"- %1 -"_s.arg(number)));
        EXPECT_EQ(all.count(origin), 1);
        EXPECT_EQ(all.count(u"氏名"_s), 1) << "page header";
        EXPECT_EQ(all.contains(u"賞与支給額"_s), number == 1);
        EXPECT_EQ(all.contains(u"【平均】"_s), number == 3);
        // Longest amounts stay whole, a longest name is cut visibly.
        EXPECT_EQ(all.count(u"-922,337,203,685,478"_s), number == 1 ? 5 : 0);
        EXPECT_EQ(all.contains(u'…'), number == 1);
        EXPECT_TRUE(all.contains(u"社員 "_s)) << "a name is one text";
    }
    ASSERT_EQ(codes.size(), kRows);
    EXPECT_EQ(codes.front(), u"000001"_s);
    EXPECT_EQ(codes.back(), u"000100"_s);
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
    frmReport form_{amounts(100), {}, nullptr};
};

TEST_F(Preview, PdfIsWrittenWholeOrNotAtAll) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"賞与.pdf"_s);
    ASSERT_TRUE(form_.savePdf(path));
    const QByteArray bytes = content(path);
    EXPECT_TRUE(bytes.startsWith("%PDF-"));
    EXPECT_TRUE(bytes.contains("/Count 3"));
    EXPECT_TRUE(bytes.contains("/FontFile")) << "fonts are embedded";
    // Each glyph leads back to its character, so the maps have no gap: text can be searched and copied,
    // digits beside Latin letters too.
    static const QRegularExpression map(
        u"\\d+ beginbfrange\n<0000> <0000> <0000>\n<0001>[^\n]*\nendbfrange"_s);
    EXPECT_GT(bytes.count("beginbfrange"), 0);
    EXPECT_EQ(QString::fromLatin1(bytes).count(map), bytes.count("beginbfrange"));

    QStringList said;
    forms::setBoxHandler([&](const forms::BoxRequest& box) {
        said << box.text;
        return forms::BoxAnswer::Ok;
    });
    EXPECT_FALSE(form_.savePdf(folder.filePath(u"none/賞与.pdf"_s)));
    forms::setBoxHandler({});
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].startsWith(u"PDF ファイルを保存できません。"_s));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"賞与.pdf"_s});
}

}  // namespace
