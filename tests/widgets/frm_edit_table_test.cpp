#include <gtest/gtest.h>

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include "store/value.h"
#include "widgets/edit_table.h"

using namespace Qt::StringLiterals;
using namespace widgets;

namespace {

/// Three rows named by a code and a name, with a number below 10 and a word to fill in, before a further
/// control.
struct TwoFields : QWidget {
    EditTable* table = new EditTable(this);
    QLineEdit* after = new QLineEdit(this);
    QStringList told;

    TwoFields() {
        auto* column = new QVBoxLayout(this);
        column->addWidget(table);
        column->addWidget(after);
        after->setObjectName(u"after"_s);
        EditContent content;
        content.heads = {{u"コード"_s, true}, {u"名称"_s}};
        content.headText = [](int row, int head) { return head == 0 ? QString::number(row) : u"名"_s; };
        domain::CellRules number, word;
        number.heading = u"係数"_s;
        number.characters = u"0123456789."_s;
        number.number = [](const QString& text) { return store::parseNumber(text).value_or(0); };
        number.save = [](const QString& text) {
            return store::parseNumber(text).value_or(10) < 10
                       ? std::nullopt
                       : std::optional(domain::Refusal{u"大"_s, u"誤"_s});
        };
        number.leave = number.save;
        word.heading = u"評語"_s;
        word.choices = QStringList{u"Ａ"_s, u"Ｂ"_s};
        content.fields = {number, word};
        content.texts = u"1 Ａ 2 Ａ 3 Ｂ"_s.split(u' ');
        table->tell = [this](const QString& text, const QString&, bool warning) {
            told << (warning ? u"!"_s : QString()) + text;
        };
        table->mayLeave = [this] { return table->judgeCell(); };
        table->setContent(std::move(content));
        show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
        table->focusRow(0);
    }
    void keys(std::initializer_list<Qt::Key> keys, Qt::KeyboardModifiers held = {}) const {
        for (const Qt::Key key : keys) QTest::keyClick(focusWidget(), key, held);
    }
    void paste(const QString& text) const {
        QGuiApplication::clipboard()->setText(text);
        keys({Qt::Key_V}, Qt::ControlModifier);
    }
    QString texts() const {
        QString all;
        for (int row = 0; row < table->rowCount(); ++row) all += table->text(row, 0) + table->text(row, 1);
        return all;
    }
    QString at() const { return focusWidget()->objectName(); }
};

TEST(EditTableTest, FillsSeveralColumns) {
    TwoFields form;
    EXPECT_EQ(form.at(), u"Text1_0"_s);
    // Along the row and on to the next one; Enter stays in the column, the last cell is left as in a form.
    QStringList way;
    for (const Qt::Key key :
         {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Return}) {
        form.keys({key});
        way << form.at();
    }
    EXPECT_EQ(way.join(u' '), u"DataCombo2_0 Text1_1 DataCombo2_0 DataCombo2_1 Text1_2 after"_s);

    // A text that may not stand keeps the cell, whatever key would leave it.
    form.table->focusCell({1, 0});
    QTest::keyClicks(form.focusWidget(), u"1x2"_s);
    form.keys({Qt::Key_Tab, Qt::Key_Up, Qt::Key_Return});
    EXPECT_EQ(form.at() + form.told.join(u' '), u"Text1_1大 大 大"_s);
    QTest::keyClicks(form.focusWidget(), u"4"_s);
    form.keys({Qt::Key_Tab});
    static_cast<QComboBox*>(form.focusWidget())->setCurrentText(u"Ｂ"_s);
    EXPECT_EQ(form.texts(), u"1Ａ4Ｂ3Ｂ"_s);
    EXPECT_EQ(form.table->total(), 8);
    EXPECT_EQ(form.table->changedRows(), 1);  // one row, two cells
    form.keys({Qt::Key_Z}, Qt::ControlModifier);
    form.keys({Qt::Key_Z}, Qt::ControlModifier);
    EXPECT_EQ(form.texts() + form.at(), u"1Ａ2Ａ3ＢText1_1"_s);
    EXPECT_EQ(form.table->changedRows(), 0);

    // A block goes in whole or not at all, in one step.
    form.told.clear();
    form.paste(u"5\tＢ\n6\tＣ\n"_s);
    form.paste(u"5\tＢ\tＢ"_s);
    form.paste(u"5\n6\n7"_s);
    form.keys({Qt::Key_Tab});
    form.paste(u"Ａ\tＡ"_s);
    const QString none = u"\n貼り付けは行いません。"_s;
    EXPECT_EQ(form.told, (QStringList{u"!2行目の値（2 名）を入力できません。\n一覧にない値です。"_s + none,
                                      u"!貼り付ける値は3列ありますが、この列から右は2列です。"_s + none,
                                      u"!貼り付ける値は3行ありますが、この行から下は2行です。"_s + none,
                                      u"!貼り付ける値は2列ありますが、この列から右は1列です。"_s + none}));
    EXPECT_EQ(form.texts(), u"1Ａ2Ａ3Ｂ"_s);
    form.keys({Qt::Key_Backtab});
    form.paste(u"５\tＢ\r\n6\tＡ\r\n"_s);
    EXPECT_EQ(form.texts(), u"1Ａ5Ｂ6Ａ"_s);
    form.table->copyWithHeads();
    EXPECT_EQ(QGuiApplication::clipboard()->text().section(u'\n', 0, 1),
              u"コード\t名称\t係数\t評語\n0\t名\t1\tＡ"_s);
    form.keys({Qt::Key_Z}, Qt::ControlModifier);
    EXPECT_EQ(form.texts(), u"1Ａ2Ａ3Ｂ"_s);
    form.keys({Qt::Key_Y}, Qt::ControlModifier);
    EXPECT_EQ(form.texts(), u"1Ａ5Ｂ6Ａ"_s);
    form.table->undo();
    form.table->give({{{0, 0}, u"7"_s}, {{2, 1}, u"Ａ"_s}, {{1, 0}, u"2.0"_s}});
    EXPECT_EQ(form.texts(), u"7Ａ2Ａ3Ａ"_s);  // what is the same number stays as it was
    form.table->undo();
    EXPECT_EQ(form.texts(), u"1Ａ2Ａ3Ｂ"_s);
}

}  // namespace
