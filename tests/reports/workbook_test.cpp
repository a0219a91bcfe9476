#include "reports/workbook.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
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
    const QString a27(27, u'あ'), a31(31, u'あ'), x30(30, u'x');
    const struct {
        QString wanted, name;
        QStringList taken = {};
    } cases[] = {{u"一般社員／営業"_s, u"一般社員／営業"_s},
                 {u"[a]:b*c?d/e\\f"_s, u"［a］：b＊c？d／e＼f"_s},
                 {u"'賞与'"_s, u"＇賞与＇"_s},
                 {u" \t\n "_s + QChar(0xFFFF), u"一覧"_s},
                 {u"hiSTory"_s, u"hiSTory_"_s},
                 {a31 + u'い', a31},
                 {x30 + u"𠮷"_s, x30},  // a pair is not torn
                 {u"Bonus"_s, u"Bonus (2)"_s, {u"BONUS"_s}},
                 {a31, a27 + u" (3)"_s, {a31, a27 + u" (2)"_s}}};
    for (const auto& c : cases) EXPECT_EQ(safeSheetName(c.wanted, c.taken), c.name) << c.name.toStdString();
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
    const SheetGrid::Row expected{{1, u"000123"_s}, {2, 1234.5}, {4, QDate(2026, 12, 10)}};
    EXPECT_EQ(grid.rows().at(4), expected);
    EXPECT_EQ(grid.columnWidth(1), 10);  // 社員 is 4 half-width characters, Code 4, 2 to spare
    EXPECT_EQ(grid.columnWidth(4), 33);
}

/// A session whose files hold the sheets' names, one a line, so that the tests can read what a file got.
class Session : public testing::Test {
  protected:
    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"文書/ひなた堂ミント"_s);
    ExportSession session_{{path_, u"賞与"_s, [] { return QDateTime(QDate(2026, 11, 22), QTime(14, 30, 5)); },
                            [this](const QString& path, const std::vector<NamedSheet>& sheets) {
                                QFile file(path);
                                EXPECT_TRUE(file.open(QIODevice::WriteOnly));
                                for (const NamedSheet& sheet : sheets) file.write(sheet.name.toUtf8() + '\n');
                            }}};

    QStringList files() const { return QDir(path_).entryList(QDir::Files | QDir::Hidden); }
    static QString content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : u"unreadable"_s;
    }
};

TEST_F(Session, EachSendMakesTheNextFileWithTheNewSheetInFront) {
    const QString first = session_.send({}, u"営業"_s);
    EXPECT_EQ(QFileInfo(first).fileName(), u"賞与_20261122_143005_1.xlsx"_s);
    // A strange file under the next name stays what it is.
    QFile strange(QDir(path_).filePath(u"賞与_20261122_143005_2.xlsx"_s));
    ASSERT_TRUE(strange.open(QIODevice::WriteOnly));
    strange.write("mine");
    strange.close();

    const QString second = session_.send({}, u"営業"_s), third = session_.send({}, u"管理"_s);
    EXPECT_EQ(QFileInfo(second).fileName(), u"賞与_20261122_143005_3.xlsx"_s);
    EXPECT_EQ(content(strange.fileName()), u"mine"_s);
    EXPECT_EQ(content(first), u"営業\n"_s);
    EXPECT_EQ(content(second), u"営業 (2)\n営業\n"_s);
    EXPECT_EQ(content(third), u"管理\n営業 (2)\n営業\n"_s);
    EXPECT_EQ(files().size(), 4);
}

TEST(WriteXlsx, TheCellsStandInTheFile) {
    QTemporaryDir folder;
    ExportSession session({folder.path()});
    SheetGrid grid;
    grid.setText(1, 1, u"◆一般社員／営業 <&>"_s);
    grid.setText(4, 3, u"1,234"_s);
    // A formula stays text; an escape, a NUL and a character that no file may hold neither change nor end it.
    grid.setText(4, 4, u"=_x0041_"_s + QChar(u'\0') + u'B' + QChar(0xFFFF));
    grid.setNumber(4, 5, 1.5);
    grid.setValue(4, 6, store::Value(QDate(1899, 4, 1)));  // before the first date of a sheet
    grid.setValue(4, 7, store::Value(QDate(2026, 4, 1)));
    const QString path = session.send(grid, u"営業"_s);
    const Package package(path);
    EXPECT_TRUE(package.part("xl/workbook.xml").contains(u"name=\"営業\""_s.toUtf8()));
    EXPECT_TRUE(package.part("xl/sharedStrings.xml")
                    .contains(u"<t>◆一般社員／営業 &lt;&amp;&gt;</t></si><si><t>1,234</t></si>"
                              "<si><t>=_x005F_x0041_\uFFFDB\uFFFD</t></si><si><t>1899/4/1</t>"_s.toUtf8()));
    const QByteArray sheet = package.part("xl/worksheets/sheet1.xml");
    for (const char* cell :
         {"<c r=\"A1\" t=\"s\"><v>0</v>", "<c r=\"C4\" t=\"s\"><v>1</v>", "<c r=\"D4\" t=\"s\"><v>2</v>",
          "<c r=\"E4\"><v>1.5</v>", "<c r=\"F4\" s=\"1\" t=\"s\"><v>3</v>"})
        EXPECT_TRUE(sheet.contains(cell)) << cell;
    // Day 46113 after 30 December 1899: 126 years of 365 days, 31 leap days, 2 days of that December, 90 of
    // 2026.
    EXPECT_TRUE(sheet.contains("<v>46113</v>"));

    SheetGrid tooLong;
    tooLong.setText(1, 1, QString(40000, u'x'));
    EXPECT_THROW(session.send(tooLong, u"長い"_s), Error);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{QFileInfo(path).fileName()});
}

#ifdef Q_OS_UNIX
/// Files that cannot grow stand for a full disk: the writer's temporary files break off first.
TEST(WriteXlsx, AFullDiskIsToldLeavesNoFileAndKeepsNoSheet) {
    QTemporaryDir folder;
    ExportSession session({folder.path()});
    const QString first = session.send({}, u"営業"_s);
    const QByteArray before = Package(first).part("xl/workbook.xml");
    SheetGrid grid;
    for (int row = 1; row <= 3000; ++row)
        for (int column = 1; column <= 7; ++column) grid.setNumber(row, column, row * column);
    rlimit unlimited{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{200000, unlimited.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_THROW(session.send(grid, u"失敗"_s), Error);
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, signalBefore);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QFileInfo(first).fileName()});
    EXPECT_EQ(Package(first).part("xl/workbook.xml"), before);
    const QByteArray after = Package(session.send(grid, u"管理"_s)).part("xl/workbook.xml");
    for (const QString& sheet : {u"営業"_s, u"失敗"_s, u"管理"_s})
        EXPECT_EQ(after.contains(sheet.toUtf8()), sheet != u"失敗"_s);
}
#endif

}  // namespace
