#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QHeaderView>
#include <QInputMethodEvent>
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

#include "widgets/code_combo.h"
#include "widgets/form.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/platform_messages.h"
#include "widgets/table.h"

using namespace Qt::StringLiterals;
using namespace widgets;

namespace {

/// A checked field between other controls, in the order of the focus chain.
struct EntryForm : Form {
    QLineEdit* checked = make<QLineEdit>(u"Text1_0"_s);
    QLineEdit* other = make<QLineEdit>(u"Text1_1"_s);
    QRadioButton* option = make<QRadioButton>(u"Option1_0"_s, u"金一封"_s);
    QCheckBox* tick = make<QCheckBox>(u"Check1"_s, u"含む"_s);
    CodeList* list = make<CodeList>(u"DataList1"_s);
    QPushButton* work = make<QPushButton>(u"Command1"_s, u"取込(&I)"_s);
    QPushButton* tool = make<QPushButton>(u"Command9"_s, u"表"_s);
    QPushButton* close = make<QPushButton>(u"Command2"_s, u"閉じる(&Ｃ)"_s);
    QLabel* label = labelFor(u"Label1"_s, u"基準日(&D)："_s, other);
    int checks = 0, worked = 0, closed = 0, activations = 0;
    bool valid, withBox;  // what the check answers, and whether a refusal says so in a box

    explicit EntryForm(bool isValid = false, bool hasBox = false)
        : Form(u"frmEntry"_s, u"入力"_s, nullptr), valid(isValid), withBox(hasBox) {
        QVBoxLayout* column = columnOf(this);
        for (QWidget* control :
             std::initializer_list<QWidget*>{label, checked, other, option, tick, list, work, tool, close})
            column->addWidget(control);
        tool->setFocusPolicy(Qt::NoFocus);
        list->setItems({{u"01"_s, u"夏季"_s}, {u"02"_s, u"冬季"_s}});
        for (QPushButton* button : {work, tool})
            connect(button, &QPushButton::clicked, this, [this] { ++worked; });
        connect(close, &QPushButton::clicked, this, [this] { ++closed; });
        setCancelButton(close);
        checked->setText(u"2003/4/1"_s);
        validateOnLeave(checked, [this] { return check(); }, {close});
    }

    void open() {
        show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        checked->setFocus();
        ASSERT_TRUE(checked->hasFocus());
    }

    using Form::passesLeaveCheck;
    using Form::setOutput;

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

using Act = std::function<void(EntryForm&)>;
Act key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    return [=](EntryForm& f) { QTest::keyClick(f.checked, key, modifiers); };
}
template <class W>
Act click(W* EntryForm::*control) {
    return [=](EntryForm& f) { clickOnScreen(f.*control); };
}
/// A press that reaches the button without passing the window.
Act press(QPushButton* EntryForm::*button) {
    return [=](EntryForm& f) { QTest::mouseClick(f.*button, Qt::LeftButton); };
}

enum class Presses { Nothing, Work, Close };  // Work: `work` or `tool`, after a passed check only
using F = EntryForm;
const struct {
    const char* name;
    Act act;
    bool judged;  // the check runs
    Presses presses = Presses::Nothing;
} kLeaves[] = {
    {"Tab", key(Qt::Key_Tab), true},
    {"Backtab",
     [](F& f) {
         tabOrder({f.other, f.checked}), key(Qt::Key_Backtab)(f);
     },
     true},
    {"Backtab to close", key(Qt::Key_Backtab), false},
    {"Enter", key(Qt::Key_Return), true},
    {"click in a field", click(&F::other), true},
    {"click in a list", [](F& f) { clickOnScreen(f.list->viewport()); }, true},
    {"click on the button", click(&F::work), true, Presses::Work},
    {"press sent to the button", press(&F::work), true, Presses::Work},
    {"button without focus", press(&F::tool), true, Presses::Work},
    {"mnemonic of the button", key(Qt::Key_I, Qt::AltModifier), true, Presses::Work},
    {"mnemonic of a label", key(Qt::Key_D, Qt::AltModifier), true},
    {"focus by a widget of the toolkit", [](F& f) { f.other->setFocus(Qt::TabFocusReason); }, true},
    {"focus by code", [](F& f) { f.other->setFocus(); }, false},
    {"click on a label", click(&F::label), false},
    {"click on close", click(&F::close), false, Presses::Close},
    {"press sent to close", press(&F::close), false, Presses::Close},
    {"mnemonic of close", key(Qt::Key_C, Qt::AltModifier), false, Presses::Close},
    {"Escape", key(Qt::Key_Escape), false, Presses::Close},
    {"disabling", [](F& f) { f.checked->setEnabled(false); }, false},
    {"hiding", [](F& f) { f.checked->hide(); }, false},
    {"read-only", [](F& f) { f.checked->setReadOnly(true), key(Qt::Key_Tab)(f); }, false},
    {"closing the window", [](F& f) { f.QDialog::close(); }, false},
};

}  // namespace

TEST(FormLeaveCheck, RefusesTheMoveAndWhatItWouldPressOrPassesBothOnce) {
    const struct { bool valid, withBox; } answers[] = {{false, false}, {false, true}, {true, false}};
    for (const auto& leave : kLeaves)
        for (const auto& [valid, withBox] : answers) {
            SCOPED_TRACE(leave.name);
            EntryForm form(valid, withBox);
            form.open();
            leave.act(form);
            QCoreApplication::processEvents();
            const int worked = valid && leave.presses == Presses::Work ? 1 : 0;
            const int closed = leave.presses == Presses::Close ? 1 : 0;
            EXPECT_TRUE(QTest::qWaitFor([&] { return form.worked == worked && form.closed == closed; }));
            EXPECT_EQ(form.checks, leave.judged ? 1 : 0);
            if (valid) continue;
            EXPECT_FALSE(form.work->isDown());
            if (!leave.judged) continue;
            form.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
            EXPECT_TRUE(form.checked->hasFocus());
            EXPECT_EQ(form.list->row(), -1);
        }
}

TEST(FormLeaveCheck, ForgetsAnEarlierVerdictWhenTheTextChanges) {
    EntryForm form(true);
    form.open();
    EXPECT_TRUE(form.passesLeaveCheck());
    form.valid = false;
    QTest::keyClicks(form.checked, u"x"_s);
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
    EntryForm form(true);
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
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(form.work, &held);
    EXPECT_EQ(form.worked, 1) << "held down, it goes no further";
    QTest::keyClick(form.work, Qt::Key_Escape);
    EXPECT_EQ(form.closed, 1);
    EXPECT_TRUE(form.isVisible());
}

TEST(FormKeys, AFieldIsMarkedWholeOnEveryWayIn) {
    EntryForm form(true);
    form.other->setText(u"12,345"_s);
    EXPECT_EQ(form.other->accessibleName(), u"基準日"_s) << "its label's text without mnemonic and colon";
    form.open();
    EXPECT_EQ(form.checked->selectedText(), u"2003/4/1"_s) << "first focus of the screen";
    const Act ways[] = {[](F& f) { f.other->setFocus(); }, key(Qt::Key_Tab), key(Qt::Key_D, Qt::AltModifier),
                        click(&F::other)};
    for (const Act& way : ways) {
        form.checked->setFocus();
        form.other->deselect();
        way(form);
        EXPECT_EQ(form.other->selectedText(), u"12,345"_s);
    }
    clickOnScreen(form.other);
    EXPECT_FALSE(form.other->hasSelectedText()) << "a second click sets the caret";
}

TEST(FormKeys, AFieldOfDigitsTakesThemFromTheInputMethodToo) {
    EntryForm form;
    form.open();
    admitOnly(form.other, u"0123456789."_s);
    const auto composed = [](const QString& text) {
        return [text](QLineEdit* edit) {
            QInputMethodEvent composing(text, {}), end;
            end.setCommitString(text);
            QApplication::sendEvent(edit, &composing);
            QApplication::sendEvent(edit, &end);
        };
    };
    const auto typed = [](const QString& text) {
        return [text](QLineEdit* edit) {
            for (QChar c : text) {
                QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
                QApplication::sendEvent(edit, &key);
            }
        };
    };
    const auto pasted = [](const QString& text) {
        return [text](QLineEdit* edit) {
            QApplication::clipboard()->setText(text);
            edit->paste();
        };
    };
    const std::pair<std::function<void(QLineEdit*)>, QString> ways[] = {
        {composed(u"１２３４"_s), u"5123467"_s},
        {typed(u"１２３４"_s), u"5123467"_s},
        {pasted(u"１２．３"_s), u"512.367"_s},
        {typed(u"x1あＡ2"_s), u"51267"_s},
        {composed(u"あ"_s), u"5あ67"_s}};
    for (const auto& [act, left] : ways) {
        form.other->setReadOnly(true);
        form.other->setReadOnly(false);  // the toolkit switches the input method on
        form.other->setText(u"567"_s);
        form.other->setCursorPosition(1);
        act(form.other);
        EXPECT_EQ(form.other->text(), left);
        EXPECT_EQ(form.other->cursorPosition(), left.size() - 2);
        EXPECT_FALSE(form.other->testAttribute(Qt::WA_InputMethodEnabled));
    }
    form.other->setText(u"1,234,567"_s);
    form.other->setCursorPosition(3);
    typed(u"98"_s)(form.other);  // the caret stays where it types when separators go
    EXPECT_EQ(form.other->text(), u"129834567"_s);
}

TEST(FormChild, GivesControlBackAndDeletesTheChild) {
    EntryForm form;
    form.open();
    QPointer<Form> child = new Form(u"frmChild"_s, u"子画面"_s, &form);
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

TEST(FormPlace, AFormThatGrowsStaysOnTheScreenAndItsDataAreNoMarkUp) {
    EntryForm form;
    form.label->setText(u"<b>甲社</b>"_s);
    form.open();
    const QRect room = form.screen()->availableGeometry();
    form.move(room.bottomRight() - QPoint(form.width(), form.height()));
    for (const QSize& more : {QSize(40, 90), QSize(9999, 9999)}) {
        form.resize(form.size() + more);
        EXPECT_TRUE(room.contains(form.frameGeometry()));
    }
    EXPECT_EQ(form.label->textFormat(), Qt::PlainText);
    form.move(room.bottomRight() * 3);
    form.resize(form.size() - QSize(1, 1));
    EXPECT_EQ(form.pos(), room.bottomRight() * 3) << "moved away on purpose, under a child";
}

TEST(CodeListChoice, ComesOncePerChoiceByMouseAndKeyboard) {
    EntryForm form;
    form.open();
    CodeList& list = *form.list;
    QSignalSpy chosen(&list, &CodeList::chosen);
    const auto clickAt = [&](const QPoint& at) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
    };
    const auto state = [&] { return u"%1%2 %3"_s.arg(list.boundText(), list.text()).arg(chosen.count()); };
    const QPoint second = list.visualRect(list.model()->index(1, 0)).center();
    form.valid = true;
    list.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(state(), u" 0"_s);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(state(), u"01夏季 1"_s);
    clickAt(second);
    EXPECT_EQ(state(), u"02冬季 2"_s);
    clickAt(second);
    EXPECT_EQ(state(), u"02冬季 3"_s) << "the same line again";
    clickAt({5, list.viewport()->height() - 2});
    EXPECT_EQ(state(), u"02冬季 3"_s) << "below the last line";
    QTest::keyClick(&list, Qt::Key_Home);
    EXPECT_EQ(state(), u"01夏季 4"_s);
    list.choose(-1);
    EXPECT_FALSE(list.chooseCode(u"2"_s));
    EXPECT_EQ(state(), u" 4"_s);
    QTest::keyClick(&list, Qt::Key_End);
    EXPECT_EQ(state(), u"02冬季 5"_s);
    list.choose(-1);
    EXPECT_TRUE(list.chooseCode(u"02"_s));
    list.setItems({{u"A"_s, u"alpha"_s}, {u"B"_s, u"beta"_s}});
    EXPECT_EQ(state(), u" 6"_s) << "new lines drop the choice silently";
    QTest::keyClick(&list, Qt::Key_B);
    EXPECT_EQ(state(), u"Bbeta 7"_s) << "typed first letter";
    QSignalSpy opened(&list, &CodeList::opened);
    QTest::keyClick(&list, Qt::Key_Return);
    clickAt(second);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, second);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&list, &held);
    EXPECT_EQ(opened.count(), 2);
}

TEST(CodeComboChoice, ByDeleteAndByTheWheelOnlyWhereItIsMeant) {
    EntryForm form;
    auto* combo = new CodeCombo(&form);
    combo->setItems({{u"01"_s, u"夏季"_s}, {u"02"_s, u"冬季"_s}});
    form.open();
    const auto wheel = [&] {
        QWheelEvent turn({}, {}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(combo, &turn);
    };
    QSignalSpy chosen(combo, &CodeCombo::chosen);
    for (const bool locked : {true, false}) {
        combo->setCode(u"01"_s);
        combo->setLocked(locked);
        wheel();
        QTest::keyClick(combo, Qt::Key_Delete);
        EXPECT_EQ(combo->code(), locked ? u"01"_s : QString());
    }
    EXPECT_EQ(chosen.count(), 1);
    combo->setCode(u"01"_s);
    form.valid = true;
    combo->setFocus();
    wheel();
    EXPECT_EQ(combo->code(), u"02"_s);
}

TEST(FormKeys, TheKeyOfAnOutputPressesItsButtonAndGoesRoundAmongSeveral) {
    EntryForm form;
    form.setOutput(form.work, Form::Output::Excel);
    form.open();
    for (const bool valid : {false, true}) {
        form.valid = valid;
        QTest::keyClick(form.checked, Qt::Key_E, Qt::ControlModifier);
        EXPECT_EQ(form.worked, valid) << "not past a field that is wrong";
    }
    form.setOutput(form.close, Form::Output::Excel);
    for (QPushButton* button : {form.work, form.close, form.work}) {
        QTest::keyClick(form.focusWidget(), Qt::Key_E, Qt::ControlModifier);
        EXPECT_TRUE(button->hasFocus());
    }
    EXPECT_EQ(form.worked + form.closed, 1);
}

TEST(TableCopy, CopiesTheSelectionAsItStandsOnScreen) {
    Table table;
    RowsModel model({{u"番号"_s}, {u"氏名"_s}, {u"住所"_s}, {u"金額"_s, true}});
    const QStringList cells[] = {{u"1"_s, u"青木"_s, u"x"_s, u"10,000"_s},
                                 {u"2"_s, u"石井\t一"_s, u"x"_s, u"20,000"_s},
                                 {u"3"_s, u"上田"_s, u"x"_s, u"30,000"_s}};
    model.setRows(3, [&](int row, int column) { return cells[row][column]; });
    table.setModel(&model);
    table.setSelectionMode(QAbstractItemView::ExtendedSelection);
    table.setColumnHidden(2, true);
    table.horizontalHeader()->moveSection(3, 0);
    table.show();
    for (const int row : {1, 0})
        table.selectionModel()->select(model.index(row, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTest::keySequence(&table, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"10,000\t1\t青木\n20,000\t2\t石井 一"_s);
}
