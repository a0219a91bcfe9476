#include "reports/workbook.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "reports/package.h"
#include "support/store_probe.h"

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <csignal>
#endif

namespace {

using namespace Qt::StringLiterals;
using namespace reports;
using store::Error;

TEST(SafeSheetName, FollowsTheRulesOfSheets) {
    const QString a31(31, u'あ'), x30(30, u'x');
    const struct {
        QString wanted, name;
    } cases[] = {
        {u"一般社員／営業"_s, u"一般社員／営業"_s},
        {u"[a]:b*c?d/e\\f"_s, u"［a］：b＊c？d／e＼f"_s},
        {u"'賞与'"_s, u"＇賞与＇"_s},
        {u" \t\n "_s + QChar(0xFFFF), u"一覧"_s},
        {u"hiSTory"_s, u"hiSTory_"_s},
        {a31 + u'い', a31},
        {x30 + u"𠮷"_s, x30},  // a pair is not torn
    };
    for (const auto& c : cases) EXPECT_EQ(safeSheetName(c.wanted), c.name) << c.name.toStdString();
}

TEST(SheetGrid, TheRowCounterEndsAt32767ListRows) {
    SheetGrid grid;
    grid.setText(3 + 32767, 1, u"last"_s);
    const auto error = support::errorOf([&] { grid.setText(3 + 32768, 1, u"one more"_s); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text(), u"オーバーフローしました。"_s);
}

TEST(SheetGrid, ValuesKeepTheirKindAndColumnsFitTheirCells) {
    SheetGrid grid;
    grid.setText(1, 1, QString(100, u'表'));  // a title does not widen its column
    grid.setText(3, 1, u"社員Code"_s);
    grid.setValue(4, 1, store::Value(u"000123"));
    grid.setValue(4, 2, store::Value(store::Money::fromRaw(12345000)));
    grid.setValue(4, 3, store::Value());
    grid.setValue(4, 4, store::Value(QDate(2026, 12, 10)));
    grid.setColumnWidth(4, 33);
    const SheetGrid::Row expected{
        {1, u"000123"_s}, {2, SheetGrid::Number{1234.5, NumberLook::Amount}}, {4, QDate(2026, 12, 10)}};
    EXPECT_EQ(grid.rows().at(4), expected);
    EXPECT_TRUE(grid.holdsNumbers(2) && !grid.holdsNumbers(1));
    EXPECT_EQ(grid.columnWidth(1), 10);  // 社員 is 4 half-width characters, Code 4, 2 to spare
    EXPECT_EQ(grid.columnWidth(4), 33);
}

TEST(ListTitle, NamesTheFileAndTellsWhoseItIs) {
    const QDate summer(2026, 7, 10), winter(2026, 12, 10);
    const QString a60(60, u'あ');
    const struct {
        ListTitle title;
        QString stem;
    } cases[] = {{{u"見本商事"_s, {winter}, u"正社員賞与／一般社員"_s, u"賞与支給額"_s, {}},
                  u"2026-12-10_見本商事_正社員賞与／一般社員_賞与支給額"_s},
                 {{u"見本商事"_s, {summer, winter}, {}, u"年間支給額"_s, QDate(2026, 12, 25)},
                  u"2026-07-10～2026-12-10_見本商事_年間支給額"_s},
                 {{u"A/B:\"C\"\n."_s, {}, u" ..."_s, u"x|y*z?"_s, {}}, u"A／B：”C”_x｜y＊z？"_s},
                 {{a60, {winter}, a60, a60, {}},
                  u"2026-12-10_"_s + a60.left(20) + u'_' + a60.left(25) + u'_' + a60.left(20)}};
    for (const auto& c : cases) {
        EXPECT_EQ(fileStem(c.title), c.stem) << fileStem(c.title).toStdString();
        EXPECT_LE(fileStem(c.title).toUtf8().size() + 10, 255);
    }
    EXPECT_EQ(originLine(cases[1].title), u"基準日 2026/7/10、2026/12/10　作成日 2026/12/25　見本商事"_s);
}

/// A folder under a path that does not exist yet.
class Sent : public testing::Test {
  protected:
    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"文書/ひなた堂ミント"_s);
    const SheetFolder sheets_{{path_}};
    static ListTitle titleOf(const QString& company) {
        return {company, {QDate(2026, 12, 10)}, u"営業 & 管理"_s, u"賞与支給額"_s, QDate(2026, 11, 22)};
    }
    static QString name(const QString& path) { return QFileInfo(path).fileName(); }
    /// Every part of the file, as text.
    static QByteArray everything(const QString& path) {
        const Package package(path);
        QByteArray all;
        for (const QByteArray& part : package.partNames()) all += package.part(part);
        return all;
    }
};

TEST_F(Sent, EachSheetGetsAFileOfItsOwnWithNothingOfAnother) {
    const auto gridOf = [](const QString& person) {
        SheetGrid grid;
        grid.setText(4, 1, person);
        return grid;
    };
    const QString first = sheets_.send(gridOf(u"甲野"_s), titleOf(u"甲商事"_s));
    const QString stem = u"2026-12-10_甲商事_営業 & 管理_賞与支給額"_s;
    EXPECT_EQ(name(first), stem + u".xlsx"_s);
    // A strange file under the next name stays what it is.
    QFile strange(QDir(path_).filePath(stem + u" (2).xlsx"_s));
    ASSERT_TRUE(strange.open(QIODevice::WriteOnly) && strange.write("mine") == 4);
    strange.close();
    const QByteArray before = everything(first);
    EXPECT_EQ(name(sheets_.send(gridOf(u"甲山"_s), titleOf(u"甲商事"_s))), stem + u" (3).xlsx"_s);
    EXPECT_EQ(everything(first), before);
    EXPECT_EQ(QFileInfo(strange).size(), 4);
    // The next company: nothing of the former one in any part of the file.
    const QByteArray other = everything(sheets_.send(gridOf(u"乙野"_s), titleOf(u"乙商事"_s)));
    EXPECT_TRUE(other.contains(u"乙商事"_s.toUtf8()) && other.contains(u"乙野"_s.toUtf8()));
    EXPECT_FALSE(other.contains(u"甲"_s.toUtf8()));
    EXPECT_EQ(other.count("<sheet "), 1);
}

TEST_F(Sent, CellsStandInTheFileAndAddUp) {
    SheetGrid grid;
    grid.setText(1, 1, u"◆一般社員／営業 <&>"_s);
    grid.setTexts(3, {u"社員Code"_s, u"合計"_s});
    // A formula stays text; an escape, a NUL and a character that no file may hold neither change nor end it.
    grid.setText(4, 4, u"=_x0041_"_s + QChar(u'\0') + u'B' + QChar(0xFFFF));
    grid.setValue(4, 6, store::Value(QDate(1899, 4, 1)));  // before the first date of a sheet
    grid.setValue(4, 7, store::Value(QDate(2026, 4, 1)));
    grid.setNumber(4, 8, 1.0625, NumberLook::Factor);
    for (int row = 4; row < 104; ++row) {
        grid.setText(row, 1, u"%1"_s.arg(row, 6, 10, QChar(u'0')));
        grid.setAmount(row, 2, store::Money::fromRaw(1234567 * qint64(row)));
    }
    const QString path = sheets_.send(grid, titleOf(u"見本商事"_s));
    const Package package(path);
    EXPECT_TRUE(package.part("xl/workbook.xml").contains(u"name=\"営業 &amp; 管理\""_s.toUtf8()));
    const QByteArray texts = package.part("xl/sharedStrings.xml");
    for (const QString& text :
         {u"◆一般社員／営業 &lt;&amp;&gt;"_s, u"=_x005F_x0041_\uFFFDB\uFFFD"_s, u"1899/4/1"_s, u"000004"_s,
          u"基準日 2026/12/10　営業 &amp; 管理　作成日 2026/11/22　見本商事"_s})
        EXPECT_TRUE(texts.contains((u"<t>"_s + text + u"</t>"_s).toUtf8())) << text.toStdString();
    const QString sheet = QString::fromUtf8(package.part("xl/worksheets/sheet1.xml"));
    double sum = 0;
    static const QRegularExpression amount(u"<c r=\"B\\d+\" s=\"2\"><v>([^<]*)</v>"_s);
    for (const auto& cell : amount.globalMatch(sheet)) sum += cell.captured(1).toDouble();
    EXPECT_NEAR(sum, 123.4567 * (4 + 103) * 50, 1e-6);  // 4 + 5 + … + 103
    // Day 46113 after 30 December 1899: 126 years of 365 days, 31 leap days, 2 days of that December, 90 of
    // 2026. Heads stay in sight, and above numbers they stand at the right.
    for (
        const QString& part :
        {u"<c r=\"H4\" s=\"4\"><v>1.0625</v>"_s, u"<c r=\"G4\" s=\"3\"><v>46113</v>"_s,
         u"topLeftCell=\"A4\""_s, u"<c r=\"B3\" s=\"1\" t=\"s\">"_s, u"<c r=\"A105\" t=\"s\">"_s,
         u"<oddFooter>&amp;L基準日 2026/12/10　営業 &amp;&amp; 管理　作成日 2026/11/22　見本商事&amp;R&amp;P / &amp;N</oddFooter>"_s})
        EXPECT_TRUE(sheet.contains(part)) << part.toStdString();
    const QByteArray styles = package.part("xl/styles.xml");
    for (const char* look : {"#,##0", "yyyy/m/d", "0.000"})
        EXPECT_TRUE(styles.contains(QByteArray("formatCode=\"") + look + '"')) << look;

    SheetGrid tooLong;
    tooLong.setText(1, 1, QString(40000, u'x'));
    EXPECT_THROW(sheets_.send(tooLong, titleOf(u"長い"_s)), Error);
    EXPECT_EQ(QDir(path_).entryList(QDir::Files | QDir::Hidden), QStringList{name(path)});
}

#ifdef Q_OS_UNIX
/// Files that cannot grow stand for a full disk: the writer's temporary files break off first.
TEST_F(Sent, AFullDiskIsToldAndLeavesNoFile) {
    const QString first = sheets_.send({}, titleOf(u"営業"_s));
    const QByteArray before = everything(first);
    SheetGrid grid;
    for (int row = 1; row <= 3000; ++row)
        for (int column = 1; column <= 7; ++column) grid.setNumber(row, column, row * column);
    rlimit unlimited{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{200000, unlimited.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_THROW(sheets_.send(grid, titleOf(u"失敗"_s)), Error);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, signalBefore);
    EXPECT_EQ(QDir(path_).entryList(QDir::Files | QDir::Hidden), QStringList{name(first)});
    EXPECT_EQ(everything(first), before);
    EXPECT_TRUE(QFile::exists(sheets_.send(grid, titleOf(u"管理"_s))));
}
#endif

}  // namespace
