#include "prep/ui_input_form.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QUndoStack>
#include <QVBoxLayout>

#include "forms/box.h"
#include "forms/global_record.h"
#include "prep/ui_input_grid.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {

// ---- The method in work

QString methodName(const forms::GlobalRecord& global) {
    return methodTable(global) == RunTable::SougakuHaibun ? QStringLiteral("総額配分")
                                                          : QStringLiteral("個人別計算");
}

RunTable methodTable(const forms::GlobalRecord& global) {
    return global.santei_houshiki == QStringLiteral("2") ? RunTable::SougakuHaibun : RunTable::KojinBetsu;
}

// ---- Form

InputGridForm::InputGridForm(const QString& name, forms::House& house, QWidget* parent)
    : Form(name, QString(), parent),
      house_(house),
      grid_(new InputGrid(this)),
      label8_(make<QLabel>(QStringLiteral("Label8"))),
      label5_(make<QLabel>(QStringLiteral("Label5"))),
      total_(make<QLabel>(QStringLiteral("LabelTotal"))),
      panels_(new QVBoxLayout) {
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("更新(&U)"));
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("キャンセル(&C)"));
    command3_ = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(command1_);
    setCancelButton(command2_);
    command1_->setEnabled(false);
    grid_->setPlaceholder(QStringLiteral("入力する社員はいません。"));
    grid_->mayLeave = [this] { return passesLeaveCheck(); };
    grid_->cellOpened = [this](QWidget* cell) {
        if (auto* edit = qobject_cast<QLineEdit*>(cell))
            validateOnLeave(edit, [this] { return grid_->judgeCell(); }, {command2_, command3_});
    };
    grid_->tell = [this](const QString& text, const QString& title, bool warning) {
        forms::tell(this, text, title, warning ? forms::BoxIcon::Warning : forms::BoxIcon::None);
    };
    connect(grid_, &InputGrid::changed, this, &InputGridForm::showTotal);
    connect(command1_, &QPushButton::clicked, this, &InputGridForm::Command1_Click);
    connect(command2_, &QPushButton::clicked, this, &InputGridForm::reject);
    connect(command3_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    build();
}

void InputGridForm::build() {
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(label8_, label5_));
    column->addWidget(grid_, 1);
    total_->setAlignment(Qt::AlignRight);
    column->addWidget(total_);
    column->addLayout(panels_);
    column->addLayout(widgets::buttonRow({command3_, makeEditMenu()}, {command2_, command1_}));
    setMinimumWidth(widgets::twips(10500));
}

QPushButton* InputGridForm::makeEditMenu() {
    auto* button = make<QPushButton>(QStringLiteral("cmdHensyu"), QStringLiteral("編集(&E)"));
    auto* menu = new QMenu(button);
    const auto add = [&](const QString& text, std::initializer_list<QKeySequence> keys, auto work) {
        QAction* action = menu->addAction(text, this, work);
        action->setShortcuts(keys);
        addAction(action);
        return action;
    };
    QUndoStack* stack = grid_->undoStack();
    QAction* undo = add(QStringLiteral("元に戻す(&U)"), {Qt::CTRL | Qt::Key_Z}, [this] { grid_->undo(); });
    QAction* redo = add(QStringLiteral("やり直す(&R)"),
                        {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}, [this] { grid_->redo(); });
    connect(stack, &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
    connect(stack, &QUndoStack::canRedoChanged, redo, &QAction::setEnabled);
    undo->setEnabled(false);
    redo->setEnabled(false);
    menu->addSeparator();
    add(QStringLiteral("選んだ行の値をコピー(&C)"), {Qt::CTRL | Qt::Key_C}, [this] { grid_->copy(); });
    add(QStringLiteral("見出しと社員も付けてコピー(&H)"), {Qt::CTRL | Qt::SHIFT | Qt::Key_C},
        [this] { grid_->copyWithHeads(); });
    add(QStringLiteral("貼り付け(&P)"), {Qt::CTRL | Qt::Key_V}, [this] { grid_->paste(); });
    button->setMenu(menu);
    return button;
}

void InputGridForm::enter(const QString& text) {
    grid_->enter(text);
}

std::vector<InputRow> InputGridForm::rows() const {
    return grid_->rows();
}

void InputGridForm::addPanel(QWidget* panel) {
    panels_->addWidget(panel);
}

void InputGridForm::load(CellRules rules, std::vector<InputRow> rows) {
    const auto count = rows.size();
    label5_->setText(rules.hint);
    label8_->setText(house_.global.haibun_kubun_mei + u'／' + house_.global.haibun_kijun_mei +
                     QStringLiteral("  %1人").arg(count));
    command1_->setEnabled(count > 0);
    grid_->setAccessibleName(windowTitle());
    grid_->setContent(std::move(rules), std::move(rows));
    if (count > 0) grid_->focusRow(0);
}

store::Connection& InputGridForm::cn() const {
    return *house_.global.cn_main;
}

void InputGridForm::showTotal() {
    const CellRules& rules = grid_->rules();
    QStringList parts;
    if (rules.number && rules.settle)
        parts << QStringLiteral("合計 %1円")
                     .arg(store::formatGrouped(store::Money::fromDouble(grid_->total())));
    else if (rules.number)
        parts << QStringLiteral("合計 %1").arg(store::formatCoefficient(grid_->total()));
    parts << QStringLiteral("入力 %1人／%2人").arg(grid_->filledRows()).arg(grid_->rowCount())
          << QStringLiteral("変更 %1人").arg(grid_->changedRows());
    total_->setText(parts.join(QStringLiteral("　")));
}

bool InputGridForm::refuses() {
    const auto& save = grid_->rules().save;
    for (int row = 0; save && row < grid_->rowCount(); ++row) {
        const auto refusal = save(grid_->text(row));
        if (!refusal) continue;
        grid_->focusRow(row);
        forms::tell(this, refusal->text, refusal->title);
        return true;
    }
    return false;
}

void InputGridForm::Command1_Click() {
    if (refuses()) return;
    std::optional<QString> difference;
    const bool worked = forms::guarded(this, [&] {
        setHourglass();
        store::Work work(cn(), windowTitle());
        difference = store();
        if (difference)
            work.rollback();
        else
            work.commit();
    });
    if (worked && difference)
        forms::tell(this, *difference, QStringLiteral("社員の不一致"), forms::BoxIcon::Warning);
    if (worked && !difference) accept();
    saveFailed_ |= !worked;
}

void InputGridForm::reject() {
    const int changes = grid_->changedRows();
    if (changes > 0 &&
        !forms::confirmLoss(
            this, QStringLiteral("更新していない入力が%1人分あります。更新せずに閉じますか？").arg(changes),
            QStringLiteral("終了の確認"), QStringLiteral("更新せずに閉じる(&D)"),
            QStringLiteral("入力に戻る(&B)")))
        return;
    done(saveFailed_ ? SaveFailed : Rejected);
}

}  // namespace prep
