#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include "widgets/code_list.h"
#include "widgets/form.h"
#include "widgets/layout.h"
#include "widgets/table.h"

using namespace widgets;

namespace {

/// A checked field between other controls, in the order of the focus chain.
struct EntryForm : Form {
    QLineEdit* checked = make<QLineEdit>(QStringLiteral("Text1_0"));
    QLineEdit* other = make<QLineEdit>(QStringLiteral("Text1_1"));
    QRadioButton* option = make<QRadioButton>(QStringLiteral("Option1_0"), QStringLiteral("金一封"));
    QCheckBox* tick = make<QCheckBox>(QStringLiteral("Check1"), QStringLiteral("含む"));
    CodeList* list = make<CodeList>(QStringLiteral("DataList1"));
    QPushButton* work = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("取込(&I)"));
    QPushButton* tool = make<QPushButton>(QStringLiteral("Command9"), QStringLiteral("表"));
    QPushButton* close = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    QLabel* label = labelFor(QStringLiteral("Label1"), QStringLiteral("基準日(&D)："), other);
    int checks = 0;
    int worked = 0;
    int closed = 0;
    int activations = 0;
    bool valid = false;
    bool withBox = false;

    EntryForm() : Form(QStringLiteral("frmEntry"), QStringLiteral("入力"), nullptr) {
        QVBoxLayout* column = columnOf(this);
        for (QWidget* control :
             std::initializer_list<QWidget*>{label, checked, other, option, tick, list, work, tool, close})
            column->addWidget(control);
        tool->setFocusPolicy(Qt::NoFocus);
        list->setItems(
            {{QStringLiteral("01"), QStringLiteral("夏季")}, {QStringLiteral("02"), QStringLiteral("冬季")}});
        for (QPushButton* button : {work, tool})
            connect(button, &QPushButton::clicked, this, [this] { ++worked; });
        connect(close, &QPushButton::clicked, this, [this] { ++closed; });
        setCancelButton(close);
        checked->setText(QStringLiteral("2003/4/1"));
        validateOnLeave(checked, [this] { return check(); }, {close});
    }

    void open() {
        show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        checked->setFocus();
        ASSERT_TRUE(checked->hasFocus());
    }

    using Form::passesLeaveCheck;

  protected:
    void activated() override { ++activations; }

  private:
    bool check() {
        ++checks;
        if (withBox && !valid) {
            QDialog box(this);
            QTimer::singleShot(0, &box, &QDialog::accept);
            box.exec();
        }
        return valid;
    }
};

/// A press as the platform sends it: the window gets it before the focus moves.
void clickOnScreen(QWidget* control) {
    QWidget* window = control->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                      control->mapTo(window, control->rect().center()));
}

struct Leave {
    const char* name;
    std::function<void(EntryForm&)> act;
    bool judged;               // the check runs
    bool pressesWork = false;  // a passed check lets `work` or `tool` be pressed
};

const Leave kLeaves[] = {
    {"Tab", [](EntryForm& f) { QTest::keyClick(f.checked, Qt::Key_Tab); }, true},
    {"Backtab",
     [](EntryForm& f) {
         tabOrder({f.other, f.checked}), QTest::keyClick(f.checked, Qt::Key_Backtab);
     },
     true},
    {"Backtab to close", [](EntryForm& f) { QTest::keyClick(f.checked, Qt::Key_Backtab); }, false},
    {"Enter", [](EntryForm& f) { QTest::keyClick(f.checked, Qt::Key_Return); }, true},
    {"click in a field", [](EntryForm& f) { clickOnScreen(f.other); }, true},
    {"click in a list", [](EntryForm& f) { clickOnScreen(f.list->viewport()); }, true},
    {"click on the button", [](EntryForm& f) { clickOnScreen(f.work); }, true, true},
    {"press sent to the button", [](EntryForm& f) { QTest::mouseClick(f.work, Qt::LeftButton); }, true, true},
    {"button without focus", [](EntryForm& f) { QTest::mouseClick(f.tool, Qt::LeftButton); }, true, true},
    {"mnemonic of the button", [](EntryForm& f) { QTest::keyClick(f.checked, Qt::Key_I, Qt::AltModifier); },
     true, true},
    {"mnemonic of a label", [](EntryForm& f) { QTest::keyClick(f.checked, Qt::Key_D, Qt::AltModifier); },
     true},
    {"focus by a widget of the toolkit", [](EntryForm& f) { f.other->setFocus(Qt::TabFocusReason); }, true},
    {"focus by code", [](EntryForm& f) { f.other->setFocus(); }, false},
    {"click on a label", [](EntryForm& f) { clickOnScreen(f.label); }, false},
    {"click on close", [](EntryForm& f) { clickOnScreen(f.close); }, false},
    {"press sent to close", [](EntryForm& f) { QTest::mouseClick(f.close, Qt::LeftButton); }, false},
    {"mnemonic of close", [](EntryForm& f) { QTest::keyClick(f.checked, Qt::Key_C, Qt::AltModifier); },
     false},
    {"Escape", [](EntryForm& f) { QTest::keyClick(f.checked, Qt::Key_Escape); }, false},
    {"disabling", [](EntryForm& f) { f.checked->setEnabled(false); }, false},
    {"hiding", [](EntryForm& f) { f.checked->hide(); }, false},
    {"read-only", [](EntryForm& f) { f.checked->setReadOnly(true), QTest::keyClick(f.checked, Qt::Key_Tab); },
     false},
    {"closing the window", [](EntryForm& f) { f.QDialog::close(); }, false},
};

}  // namespace

TEST(FormLeaveCheck, RefusesTheMoveAndWhatItWouldPress) {
    for (const Leave& leave : kLeaves) {
        for (const bool withBox : {false, true}) {
            SCOPED_TRACE(leave.name);
            EntryForm form;
            form.withBox = withBox;
            form.open();
            leave.act(form);
            QCoreApplication::processEvents();
            EXPECT_EQ(form.checks, leave.judged ? 1 : 0);
            EXPECT_EQ(form.worked, 0);
            EXPECT_FALSE(form.work->isDown());
            if (!leave.judged) continue;
            form.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
            EXPECT_TRUE(form.checked->hasFocus());
            EXPECT_EQ(form.list->row(), -1);
        }
    }
}

TEST(FormLeaveCheck, PassesOnceAndPressesOnce) {
    for (const Leave& leave : kLeaves) {
        SCOPED_TRACE(leave.name);
        EntryForm form;
        form.valid = true;
        form.open();
        leave.act(form);
        EXPECT_TRUE(QTest::qWaitFor([&] { return form.worked == (leave.pressesWork ? 1 : 0); }));
        EXPECT_EQ(form.checks, leave.judged ? 1 : 0);
    }
}

TEST(FormLeaveCheck, ExemptButtonsWorkWhileTheFieldIsWrong) {
    for (const int way : {0, 1, 2, 3}) {
        EntryForm form;
        form.open();
        if (way == 0) clickOnScreen(form.close);
        if (way == 1) QTest::mouseClick(form.close, Qt::LeftButton);
        if (way == 2) QTest::keyClick(form.checked, Qt::Key_C, Qt::AltModifier);
        if (way == 3) QTest::keyClick(form.checked, Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([&] { return form.closed == 1; })) << way;
    }
}

TEST(FormLeaveCheck, ForgetsAnEarlierVerdictWhenTheTextChanges) {
    EntryForm form;
    form.valid = true;
    form.open();
    EXPECT_TRUE(form.passesLeaveCheck());
    form.valid = false;
    QTest::keyClicks(form.checked, QStringLiteral("x"));
    QTest::keyClick(form.checked, Qt::Key_Tab);
    EXPECT_EQ(form.checks, 2);
    EXPECT_TRUE(form.checked->hasFocus());
}

TEST(FormLeaveCheck, StaysSilentWhenAnotherWindowComesToTheFront) {
    EntryForm form;
    form.open();
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(form.checks, 0);
}

TEST(FormKeys, EnterFollowsTheTabOrderAndPressesOnlyTheFocusedButton) {
    EntryForm form;
    form.valid = true;
    form.open();
    for (QWidget* next :
         std::initializer_list<QWidget*>{form.other, form.option, form.tick, form.list, form.work}) {
        EXPECT_EQ(form.worked, 0);
        QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        EXPECT_EQ(form.focusWidget(), next);
    }
    QTest::keyClick(form.work, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(form.worked, 1);
    EXPECT_TRUE(form.work->hasFocus());
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.list->row(), -1) << "passing through a list chooses nothing";
    QTest::keyClick(form.work, Qt::Key_Escape);
    EXPECT_EQ(form.closed, 1);
    EXPECT_TRUE(form.isVisible());
}

TEST(FormKeys, AFieldIsMarkedWholeOnEveryWayIn) {
    EntryForm form;
    form.valid = true;
    form.other->setText(QStringLiteral("12,345"));
    form.open();
    EXPECT_EQ(form.checked->selectedText(), QStringLiteral("2003/4/1")) << "first focus of the screen";
    const std::function<void()> ways[] = {[&] { form.other->setFocus(); },
                                          [&] { QTest::keyClick(form.checked, Qt::Key_Tab); },
                                          [&] { QTest::keyClick(form.checked, Qt::Key_D, Qt::AltModifier); },
                                          [&] { clickOnScreen(form.other); }};
    for (const auto& way : ways) {
        form.checked->setFocus();
        form.other->deselect();
        way();
        EXPECT_EQ(form.other->selectedText(), QStringLiteral("12,345"));
    }
    clickOnScreen(form.other);
    EXPECT_FALSE(form.other->hasSelectedText()) << "a second click sets the caret";
}

TEST(FormChild, GivesControlBackAndDeletesTheChild) {
    EntryForm form;
    form.open();
    QPointer<Form> child = new Form(QStringLiteral("frmChild"), QStringLiteral("子画面"), &form);
    Qt::CursorShape under = Qt::ArrowCursor;
    QTimer::singleShot(0, child, [&] {
        under = form.cursor().shape();
        child->done(7);
    });
    EXPECT_EQ(form.showChild(child), 7);
    EXPECT_EQ(under, Qt::WaitCursor);
    EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
    EXPECT_TRUE(child.isNull());
    EXPECT_EQ(form.activations, 1);
    EXPECT_EQ(form.checks, 0);
    EXPECT_EQ(form.showChild(nullptr), 0);
}

TEST(FormPlace, StandsAtOneThirdOfTheFreeScreen) {
    EntryForm form;
    form.resize(400, 300);
    form.open();
    const QRect room = form.screen()->availableGeometry();
    EXPECT_NEAR(form.x() - room.x(), (room.width() - form.frameGeometry().width()) / 3.0, 1);
    EXPECT_NEAR(form.y() - room.y(), (room.height() - form.frameGeometry().height()) / 3.0, 1);
    form.move(5, 6);
    form.hide();
    form.show();
    EXPECT_EQ(form.pos(), QPoint(5, 6)) << "where the user has put it";
}

TEST(FormNames, TheBuddySaysItsLabelWithoutMnemonicAndColon) {
    EntryForm form;
    EXPECT_EQ(form.other->accessibleName(), QStringLiteral("基準日"));
    EXPECT_EQ(form.label->buddy(), form.other);
    EXPECT_EQ(form.label->objectName(), QStringLiteral("Label1"));
}

TEST(CodeListChoice, ComesOncePerChoiceByMouseAndKeyboard) {
    EntryForm form;
    form.open();
    CodeList& list = *form.list;
    QSignalSpy chosen(&list, &CodeList::chosen);
    const auto click = [&](int row) {
        const QRect line = list.visualRect(list.model()->index(row, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, line.center());
    };
    form.valid = true;
    list.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(list.boundText().isEmpty());
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(list.boundText(), QStringLiteral("01"));
    EXPECT_EQ(chosen.count(), 1);
    click(1);
    EXPECT_EQ(list.boundText() + list.text(), QStringLiteral("02冬季"));
    EXPECT_EQ(chosen.count(), 2);
    click(1);
    EXPECT_EQ(chosen.count(), 3) << "the same line again";
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {5, list.viewport()->height() - 2});
    EXPECT_EQ(chosen.count(), 3) << "below the last line";
    QTest::keyClick(&list, Qt::Key_Home);
    EXPECT_EQ(list.boundText(), QStringLiteral("01"));
    EXPECT_EQ(chosen.count(), 4);
    list.choose(-1);
    EXPECT_EQ(list.boundText() + list.text(), QString());
    EXPECT_FALSE(list.chooseCode(QStringLiteral("2")));
    EXPECT_EQ(chosen.count(), 4);
    EXPECT_TRUE(list.chooseCode(QStringLiteral("02")));
    EXPECT_EQ(chosen.count(), 5);
    list.setItems(
        {{QStringLiteral("A"), QStringLiteral("alpha")}, {QStringLiteral("B"), QStringLiteral("beta")}});
    EXPECT_EQ(list.row(), -1);
    EXPECT_EQ(chosen.count(), 5) << "new lines drop the choice silently";
    QTest::keyClick(&list, Qt::Key_B);
    EXPECT_EQ(list.boundText(), QStringLiteral("B")) << "typed first letter";
    EXPECT_EQ(chosen.count(), 6);
}

TEST(TableCopy, CopiesTheSelectionAsItStandsOnScreen) {
    Table table;
    RowsModel model({{QStringLiteral("番号")},
                     {QStringLiteral("氏名")},
                     {QStringLiteral("住所")},
                     {QStringLiteral("金額"), true}});
    model.setRows(3, [](int row, int column) {
        const QString cells[][4] = {
            {QStringLiteral("1"), QStringLiteral("青木"), QStringLiteral("x"), QStringLiteral("10,000")},
            {QStringLiteral("2"), QStringLiteral("石井\t一"), QStringLiteral("x"), QStringLiteral("20,000")},
            {QStringLiteral("3"), QStringLiteral("上田"), QStringLiteral("x"), QStringLiteral("30,000")}};
        return cells[row][column];
    });
    table.setModel(&model);
    table.setSelectionMode(QAbstractItemView::ExtendedSelection);
    table.setColumnHidden(2, true);
    table.horizontalHeader()->moveSection(3, 0);
    table.show();
    const auto pick = QItemSelectionModel::Select | QItemSelectionModel::Rows;
    table.selectionModel()->select(model.index(1, 0), pick);
    table.selectionModel()->select(model.index(0, 0), pick);
    QTest::keySequence(&table, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("10,000\t1\t青木\n20,000\t2\t石井 一"));
}

TEST(TableFit, AsksOnlyForRowsInSightAndLeavesDraggedWidthsAlone) {
    Table table;
    RowsModel model({{QStringLiteral("番号")}, {QStringLiteral("金額"), true}});
    int lowest = 0;
    model.setRows(30000, [&](int row, int) {
        lowest = std::max(lowest, row);
        return QString::number(row);
    });
    table.setModel(&model);
    table.resize(400, 300);
    table.show();
    table.grab();
    EXPECT_GT(lowest, 0);
    EXPECT_LT(lowest, 100);
    EXPECT_EQ(model.index(0, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight, int(Qt::AlignRight));
    EXPECT_GE(table.rowHeight(0), table.fontMetrics().height() + 8);
    table.horizontalHeader()->resizeSection(0, 99);
    table.resize(500, 300);
    model.refresh();
    EXPECT_EQ(table.columnWidth(0), 99);
}
