#include "reports/workbook.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "reports/package.h"
#include "store/error.h"

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <csignal>
#endif

namespace {

using namespace reports;
using store::Error;

TEST(SafeSheetName, FollowsTheRulesOfSheets) {
    const QString a31(31, u'あ');
    const struct {
        QString wanted;
        QStringList taken;
        QString name;
    } cases[] = {
        {QStringLiteral("一般社員／営業"), {}, QStringLiteral("一般社員／営業")},
        {QStringLiteral("[a]:b*c?d/e\\f"), {}, QStringLiteral("［a］：b＊c？d／e＼f")},
        {QStringLiteral("'賞与'"), {}, QStringLiteral("＇賞与＇")},
        {QStringLiteral(" \t\n "), {}, QStringLiteral("一覧")},
        {QStringLiteral("hiSTory"), {}, QStringLiteral("hiSTory_")},
        {a31 + u'い', {}, a31},
        {QString(30, u'x') + QStringLiteral("𠮷"), {}, QString(30, u'x')},  // a pair is not torn
        {QStringLiteral("Bonus"), {QStringLiteral("BONUS")}, QStringLiteral("Bonus (2)")},
        {a31,
         {a31, QString(27, u'あ') + QStringLiteral(" (2)")},
         QString(27, u'あ') + QStringLiteral(" (3)")},
    };
    for (const auto& c : cases) EXPECT_EQ(safeSheetName(c.wanted, c.taken), c.name) << c.name.toStdString();
}

TEST(SheetGrid, TheRowCounterEndsAt32767ListRows) {
    SheetGrid grid;
    grid.setText(3 + 32767, 1, QStringLiteral("last"));
    try {
        grid.setText(3 + 32768, 1, QStringLiteral("one more"));
        FAIL() << "accepted";
    } catch (const Error& error) {
        EXPECT_EQ(error.text(), QStringLiteral("オーバーフローしました。"));
    }
}

TEST(SheetGrid, ValuesKeepTheirKindAndColumnsFitTheirCells) {
    SheetGrid grid;
    grid.setText(1, 1, QString(100, u'表'));  // a title does not widen its column
    grid.setText(3, 1, QStringLiteral("社員Code"));
    grid.setValue(4, 1, store::Value(u"000123"));
    grid.setValue(4, 2, store::Value(store::Money::fromRaw(12345000)));
    grid.setValue(4, 3, store::Value());
    grid.setValue(4, 4, store::Value(QDate(2026, 12, 10)));
    grid.setColumnWidth(4, 33);
    const SheetGrid::Row expected{{1, QStringLiteral("000123")}, {2, 1234.5}, {4, QDate(2026, 12, 10)}};
    EXPECT_EQ(grid.rows().at(4), expected);
    EXPECT_EQ(grid.columnWidth(1), 10);  // 社員 is 4 half-width characters, Code 4, 2 to spare
    EXPECT_EQ(grid.columnWidth(4), 33);
}

/// A session whose files hold the sheets' names, one a line, so that the tests can read what a file got.
class Session : public testing::Test {
  protected:
    QTemporaryDir folder_;
    QString path_ = folder_.filePath(QStringLiteral("文書/ひなた堂ミント"));
    bool broken_ = false;
    ExportSession session_{{path_, QStringLiteral("賞与"),
                            [] { return QDateTime(QDate(2026, 11, 22), QTime(14, 30, 5)); },
                            [this](const QString& path, const std::vector<NamedSheet>& sheets) {
                                QFile file(path);
                                EXPECT_TRUE(file.open(QIODevice::WriteOnly));
                                for (const NamedSheet& sheet : sheets) file.write(sheet.name.toUtf8() + '\n');
                                if (broken_) throw Error(Error::Reason::DiskFull, QStringLiteral("full"));
                            }}};

    QStringList files() const { return QDir(path_).entryList(QDir::Files | QDir::Hidden); }
    static QString content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                              : QStringLiteral("unreadable");
    }
};

TEST_F(Session, EachSendMakesTheNextFileWithTheNewSheetInFront) {
    const QString first = session_.send({}, QStringLiteral("営業"));
    EXPECT_EQ(QFileInfo(first).fileName(), QStringLiteral("賞与_20261122_143005_1.xlsx"));
    // A strange file under the next name stays what it is.
    QFile strange(QDir(path_).filePath(QStringLiteral("賞与_20261122_143005_2.xlsx")));
    ASSERT_TRUE(strange.open(QIODevice::WriteOnly));
    strange.write("mine");
    strange.close();

    const QString second = session_.send({}, QStringLiteral("営業"));
    const QString third = session_.send({}, QStringLiteral("管理"));
    EXPECT_EQ(QFileInfo(second).fileName(), QStringLiteral("賞与_20261122_143005_3.xlsx"));
    EXPECT_EQ(content(strange.fileName()), QStringLiteral("mine"));
    EXPECT_EQ(content(first), QStringLiteral("営業\n"));
    EXPECT_EQ(content(second), QStringLiteral("営業 (2)\n営業\n"));
    EXPECT_EQ(content(third), QStringLiteral("管理\n営業 (2)\n営業\n"));
    EXPECT_EQ(files().size(), 4);
}

TEST_F(Session, AFailedSendLeavesNoFileAndKeepsNoSheet) {
    const QString first = session_.send({}, QStringLiteral("営業"));
    broken_ = true;
    EXPECT_THROW(session_.send({}, QStringLiteral("失敗")), Error);
    EXPECT_EQ(files(), QStringList{QFileInfo(first).fileName()});
    EXPECT_EQ(content(first), QStringLiteral("営業\n"));
    broken_ = false;
    EXPECT_EQ(content(session_.send({}, QStringLiteral("管理"))), QStringLiteral("管理\n営業\n"));
}

TEST(ExportSession, AFolderThatCannotBeMadeIsTold) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ExportSession session({file.fileName() + QStringLiteral("/sub")});
    try {
        session.send({}, QStringLiteral("営業"));
        FAIL() << "written into a file";
    } catch (const Error& error) {
        EXPECT_TRUE(error.text().contains(QStringLiteral("フォルダを作成できません。"))) << error.what();
    }
}

TEST(WriteXlsx, TheCellsStandInTheFile) {
    QTemporaryDir folder;
    ExportSession session({folder.path()});
    SheetGrid grid;
    grid.setText(1, 1, QStringLiteral("◆一般社員／営業 <&>"));
    grid.setText(4, 3, QStringLiteral("1,234"));
    grid.setText(4, 4, QStringLiteral("=1+1"));
    grid.setNumber(4, 5, 1.5);
    grid.setValue(4, 6, store::Value(QDate(1899, 4, 1)));  // before the first date of a sheet
    grid.setValue(4, 7, store::Value(QDate(2026, 4, 1)));
    const QString path = session.send(grid, QStringLiteral("営業"));
    const Package package(path);
    EXPECT_TRUE(package.part("xl/workbook.xml").contains(QStringLiteral("name=\"営業\"").toUtf8()));
    EXPECT_TRUE(package.part("xl/sharedStrings.xml")
                    .contains(QStringLiteral("<t>◆一般社員／営業 &lt;&amp;&gt;</t></si><si><t>1,234</t></si>"
                                             "<si><t>=1+1</t></si><si><t>1899/4/1</t>")
                                  .toUtf8()));
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
    EXPECT_THROW(session.send(tooLong, QStringLiteral("長い")), Error);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{QFileInfo(path).fileName()});
}

#ifdef Q_OS_UNIX
/// Files that cannot grow stand for a full disk: the writer's temporary files break off first.
TEST(WriteXlsx, AFullDiskIsToldAndLeavesNothing) {
    QTemporaryDir folder;
    ExportSession session({folder.path()});
    SheetGrid grid;
    for (int row = 1; row <= 3000; ++row)
        for (int column = 1; column <= 7; ++column) grid.setNumber(row, column, row * column);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small{200000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_THROW(session.send(grid, QStringLiteral("営業")), Error);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signalBefore);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_NO_THROW(session.send(grid, QStringLiteral("営業")));
}
#endif

}  // namespace
