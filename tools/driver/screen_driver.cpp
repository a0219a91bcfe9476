#include "screen_driver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QTextEdit>

namespace support {
namespace {

constexpr char kOperated[] = "screenDriverOperates";
constexpr int kPatience = 1000;  ///< milliseconds that an unfinished click or close may take

ScreenDriver::FailureSink& sink() {
    static ScreenDriver::FailureSink theSink;
    return theSink;
}

[[noreturn]] void give_up(const QString& why) {
    throw std::runtime_error(why.toStdString());
}

QString nameOf(const QObject& object) {
    return object.objectName().isEmpty() ? QString::fromLatin1(object.metaObject()->className())
                                         : object.objectName();
}

QString told(const forms::BoxRequest& box) {
    return u'[' + box.title + QStringLiteral("] ") + box.text;
}

/// A modal screen over `widget`'s window keeps the user from it.
bool covered(const QWidget& widget) {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && modal != widget.window() && !modal->isAncestorOf(&widget);
}

void requireUsable(const QWidget& widget) {
    const QString name = nameOf(widget);
    if (!widget.isVisible()) give_up(name + QStringLiteral(" is hidden"));
    if (!widget.isEnabled()) give_up(name + QStringLiteral(" is disabled"));
    if (covered(widget)) {
        give_up(name + QStringLiteral(" is covered by ") + nameOf(*QApplication::activeModalWidget()));
    }
}

void bringForward(QWidget& form) {
    QWidget* window = form.window();
    // A screen that was closed just now hands the focus to its parent, a little later than it went.
    QCoreApplication::processEvents();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window, kPatience))
        give_up(nameOf(form) + QStringLiteral(" stays behind"));
}

void typeInto(QWidget& target, const QString& text) {
    for (const char32_t c : text.toUcs4()) {
        const int key = c < 0x80 ? QChar(static_cast<char16_t>(c)).toUpper().unicode() : int(Qt::Key_unknown);
        const QString typed = QString::fromUcs4(&c, 1);
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(kind, key, Qt::NoModifier, typed);
            QApplication::sendEvent(&target, &event);
        }
    }
}

void focusOn(QWidget& form, QWidget& input) {
    bringForward(form);
    input.setFocus(Qt::TabFocusReason);
    QWidget* focus = QApplication::focusWidget();
    if (focus != &input && !(focus && input.isAncestorOf(focus))) {
        give_up(nameOf(input) + QStringLiteral(" does not get the focus"));
    }
}

void chooseInCombo(QComboBox& combo, int row) {
    if (row < 0 || row >= combo.count()) give_up(nameOf(combo) + QStringLiteral(" has no such row"));
    combo.setCurrentIndex(row);
    Q_EMIT combo.activated(row);
    Q_EMIT combo.textActivated(combo.itemText(row));
}

int firstColumn(const QAbstractItemView& view) {
    if (const auto* list = qobject_cast<const QListView*>(&view)) return list->modelColumn();
    if (const auto* table = qobject_cast<const QTableView*>(&view)) {
        return std::max(0, table->horizontalHeader()->logicalIndexAt(0));
    }
    return 0;
}

void chooseInView(QAbstractItemView& view, int row, bool extend) {
    if (!view.model() || row < 0 || row >= view.model()->rowCount(view.rootIndex())) {
        give_up(nameOf(view) + QStringLiteral(" has no row %1").arg(row));
    }
    const QPersistentModelIndex index(view.model()->index(row, firstColumn(view), view.rootIndex()));
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, extend ? Qt::ControlModifier : Qt::NoModifier,
                      view.visualRect(index).center());
}

QStringList comboTexts(const QComboBox& combo) {
    QStringList texts;
    for (int row = 0; row < combo.count(); ++row) texts << combo.itemText(row);
    return texts;
}

}  // namespace

void ScreenDriver::setFailureSink(FailureSink newSink) {
    sink() = std::move(newSink);
}

void ScreenDriver::fail(const QString& text) {
    if (sink()) {
        sink()(text);
    } else {
        qWarning("%s", qUtf8Printable(text));
    }
}

ScreenDriver::ScreenDriver() {
    qApp->installEventFilter(this);
    forms::setBoxHandler([this](const forms::BoxRequest& request) { return answerBox(request); });
}

ScreenDriver::~ScreenDriver() {
    forms::setBoxHandler({});
    verify();
}

void ScreenDriver::onScreen(const QString& name, Step step) {
    screenSteps_.add({name, std::move(step)});
}

int ScreenDriver::run(QDialog& form, Step step) {
    onScreen(nameOf(form), std::move(step));
    return form.exec();
}

void ScreenDriver::attempt(const std::function<void()>& step) {
    try {
        step();
    } catch (const std::exception& error) {
        fail(QString::fromUtf8(error.what()));
    }
}

void ScreenDriver::expectBox(const QString& text, const QString& title, forms::BoxAnswer answer,
                             std::optional<forms::BoxIcon> icon) {
    boxAnswers_.add({{text, title}, icon, answer});
}

void ScreenDriver::answerFreely(std::function<forms::BoxAnswer(const forms::BoxRequest&)> answer) {
    free_ = std::move(answer);
}

void ScreenDriver::useRealBoxes() {
    forms::setBoxHandler({});
}

bool ScreenDriver::verify() {
    const bool nothingLeft = screenSteps_.empty() && boxAnswers_.empty();
    while (const auto step = screenSteps_.take()) fail(QStringLiteral("never shown: ") + step->name);
    while (const auto box = boxAnswers_.take()) fail(QStringLiteral("never said: ") + told(box->request));
    return nothingLeft;
}

forms::BoxAnswer ScreenDriver::answerBox(const forms::BoxRequest& request) {
    using forms::BoxAnswer;
    boxes_.push_back(request);
    // As behind a real box: what waits comes in, and every window is painted as it is now.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible()) window->grab();
    const bool question = request.buttons == forms::BoxButtons::YesNo;
    if (boxAnswers_.empty()) {
        if (free_) return free_(request);
        fail(QStringLiteral("unexpected box: ") + told(request));
        return question ? BoxAnswer::No : BoxAnswer::Ok;
    }
    const AwaitedBox awaited = *boxAnswers_.take();
    if (awaited.request.text != request.text || awaited.request.title != request.title) {
        fail(QStringLiteral("box says: %1\nexpected: %2").arg(told(request), told(awaited.request)));
    }
    if (awaited.icon && *awaited.icon != request.icon) {
        fail(QStringLiteral("another icon on: ") + told(request));
    }
    if (question == (awaited.answer == BoxAnswer::Ok)) {
        fail(QStringLiteral("no such button on: ") + told(request));
        return question ? BoxAnswer::No : BoxAnswer::Ok;
    }
    return awaited.answer;
}

bool ScreenDriver::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show) return false;
    auto* form = qobject_cast<QDialog*>(watched);
    if (!form || !form->isModal() || form->property(kOperated).toBool()) return false;
    if (qobject_cast<QProgressDialog*>(form))
        return false;  // comes where a machine is slow, and goes by itself
    form->setProperty(kOperated, true);
    connect(form, &QDialog::finished, this, [form] { form->setProperty(kOperated, false); });
    const QPointer<QDialog> shown(form);
    // Queued: the step runs in the screen's own event loop, after the screen is fully there.
    QMetaObject::invokeMethod(
        this, [this, shown] { operate(shown); }, Qt::QueuedConnection);
    return false;
}

void ScreenDriver::operate(const QPointer<QDialog>& form) {
    if (!form || !form->isVisible()) return;
    const QString name = nameOf(*form);
    screens_ << name;
    if (screenSteps_.empty() || screenSteps_.front().name != name) {
        const QString awaited = screenSteps_.empty() ? QStringLiteral("none") : screenSteps_.front().name;
        fail(QStringLiteral("unexpected screen %1, awaited: %2").arg(name, awaited));
        form->QDialog::done(QDialog::Rejected);
        return;
    }
    const Step step = screenSteps_.take()->step;
    const auto outerScreens = screenSteps_.enter();
    const auto outerBoxes = boxAnswers_.enter();
    attempt([&] { step(*form); });
    screenSteps_.leave(outerScreens);
    boxAnswers_.leave(outerBoxes);
    // A mnemonic presses its button for a moment before it clicks.
    const auto closed = [&form] { return !form || !form->isVisible(); };
    if (QTest::qWaitFor(closed, kPatience)) return;
    fail(name + QStringLiteral(" is still open after its step"));
    form->QDialog::done(QDialog::Rejected);
}

QWidget& control(QWidget& form, const QString& name) {
    for (QWidget* found : form.findChildren<QWidget*>(name)) {
        if (found->window() == form.window()) return *found;
    }
    give_up(nameOf(form) + QStringLiteral(" has no control ") + name);
}

void click(QWidget& form, const QString& name) {
    if (auto* action = form.findChild<QAction*>(name)) {
        if (!action->isVisible() || !action->isEnabled()) give_up(name + QStringLiteral(" cannot be chosen"));
        if (covered(form)) give_up(nameOf(form) + QStringLiteral(" is covered by a modal screen"));
        action->trigger();
        return;
    }
    QWidget& target = control(form, name);
    requireUsable(target);
    bringForward(form);
    const bool marked = qobject_cast<QRadioButton*>(&target) || qobject_cast<QCheckBox*>(&target);
    // Beside an option's text a click meets nothing, so the mark is hit.
    const QPoint spot = marked ? QPoint(8, target.height() / 2) : target.rect().center();
    QTest::mouseClick(&target, Qt::LeftButton, Qt::NoModifier, spot);
}

void type(QWidget& form, const QString& name, const QString& text, Qt::Key leave) {
    QWidget& input = control(form, name);
    requireUsable(input);
    focusOn(form, input);
    if (auto* line = qobject_cast<QLineEdit*>(&input)) {
        line->selectAll();
    } else {
        QTest::keyClick(&input, Qt::Key_A, Qt::ControlModifier);
    }
    if (text.isEmpty()) {
        QTest::keyClick(&input, Qt::Key_Delete);
    } else {
        typeInto(input, text);
    }
    if (leave != Qt::Key_unknown) press(form, leave);
}

void press(QWidget& form, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    bringForward(form);
    const QPointer<QWidget> window(form.window());
    QWidget* target = window->focusWidget() ? window->focusWidget() : window.data();
    QTest::keyClick(target, key, modifiers);
    if (!(modifiers & Qt::AltModifier)) return;
    // A mnemonic holds its button down for a moment before it clicks.
    const auto released = [&window] {
        if (!window) return true;
        const auto buttons = window->findChildren<QAbstractButton*>();
        return std::none_of(buttons.begin(), buttons.end(), [](auto* button) { return button->isDown(); });
    };
    if (!QTest::qWaitFor(released, kPatience)) give_up(QStringLiteral("a button stays down"));
}

void choose(QWidget& form, const QString& name, int row, bool extend) {
    QWidget& target = control(form, name);
    requireUsable(target);
    bringForward(form);
    if (auto* combo = qobject_cast<QComboBox*>(&target)) {
        chooseInCombo(*combo, row);
    } else {
        chooseInView(control<QAbstractItemView>(form, name), row, extend);
    }
}

void chooseText(QWidget& form, const QString& name, const QString& text) {
    const auto row = rows(form, name).indexOf(text);
    if (row < 0) give_up(name + QStringLiteral(" has no line ") + text);
    choose(form, name, static_cast<int>(row));
}

QString text(QWidget& form, const QString& name) {
    QWidget& shown = control(form, name);
    if (auto* label = qobject_cast<QLabel*>(&shown)) return label->text();
    if (auto* line = qobject_cast<QLineEdit*>(&shown)) return line->text();
    if (auto* button = qobject_cast<QAbstractButton*>(&shown)) return button->text();
    if (auto* combo = qobject_cast<QComboBox*>(&shown)) return combo->currentText();
    if (auto* group = qobject_cast<QGroupBox*>(&shown)) return group->title();
    if (auto* edit = qobject_cast<QTextEdit*>(&shown)) return edit->toPlainText();
    if (auto* edit = qobject_cast<QPlainTextEdit*>(&shown)) return edit->toPlainText();
    const auto& view = control<QAbstractItemView>(form, name);
    return view.currentIndex().siblingAtColumn(firstColumn(view)).data().toString();
}

QStringList rows(QWidget& form, const QString& name, int column) {
    if (auto* combo = qobject_cast<QComboBox*>(&control(form, name))) return comboTexts(*combo);
    const auto& view = control<QAbstractItemView>(form, name);
    QStringList texts;
    for (int row = 0; view.model() && row < view.model()->rowCount(view.rootIndex()); ++row) {
        texts << view.model()->index(row, column, view.rootIndex()).data().toString();
    }
    return texts;
}

bool visible(QWidget& form, const QString& name) {
    return control(form, name).isVisible();
}

bool enabled(QWidget& form, const QString& name) {
    if (auto* action = form.findChild<QAction*>(name)) return action->isEnabled();
    return control(form, name).isEnabled();
}

bool checked(QWidget& form, const QString& name) {
    return control<QAbstractButton>(form, name).isChecked();
}

QString focused(QWidget& form) {
    const QWidget* focus = form.window()->focusWidget();
    return focus ? focus->objectName() : QString();
}

bool shot(QWidget& widget, const QString& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    return widget.grab().save(path);
}

}  // namespace support
