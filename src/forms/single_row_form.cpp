#include "forms/single_row_form.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace forms {

SingleRowForm::SingleRowForm(const QString& name, const QString& caption, const QString& table, House& house,
                             QWidget* parent)
    : Form(name, caption, parent),
      house_(house),
      table_(table),
      command1_(make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("更新(&U)"))),
      command2_(make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("キャンセル(&C)"))),
      command3_(make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"))) {
    widgets::setPrimary(command1_);
    setCancelButton(command2_);
    connect(command1_, &QPushButton::clicked, this, &SingleRowForm::Command1_Click);
    connect(command2_, &QPushButton::clicked, this, [this] { reject(); });
    connect(command3_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    command1_->setEnabled(guarded(this, [&] { row_.emplace(cn().open({table, {}, {}, {}})); }));
}

void SingleRowForm::arrange(const QString& guidance, QLayout* fields) {
    auto* column = widgets::columnOf(this);
    auto* line = guidance.isEmpty() ? nullptr : make<QLabel>(QStringLiteral("lblGuidance"), guidance);
    column->addLayout(widgets::headerBlock(make<QLabel>(QStringLiteral("lblTitle"), windowTitle()), line));
    auto* card = new widgets::Card(this);
    card->body()->addLayout(fields);
    card->body()->addStretch(1);
    column->addWidget(card, 1);
    column->addLayout(widgets::buttonRow({command3_}, {command2_, command1_}));
    setTabOrder(command1_, command2_);
    setTabOrder(command2_, command3_);
    begun_ = entered();
}

QStringList SingleRowForm::entered() const {
    QStringList texts;
    for (const QLineEdit* edit : findChildren<QLineEdit*>()) texts << edit->text();
    for (const QCheckBox* box : findChildren<QCheckBox*>()) texts << QString::number(box->isChecked());
    return texts;
}

void SingleRowForm::reject() {
    if (entered() == begun_ || confirmInputLoss(this, QStringLiteral("更新せずに閉じる(&D)"))) Form::reject();
}

store::Value SingleRowForm::stored(const QString& column) const {
    return row_ && !row_->isEmpty() ? row_->value(column) : store::Value();
}

void SingleRowForm::rewrite(const std::function<void(store::RowEdit&)>& change) {
    if (!row_ || row_->isEmpty()) return;
    store::RowEdit row(cn(), *row_, 0);
    change(row);
    row.write();
    row_ = cn().open({table_, {}, {}, {}});
}

store::Connection& SingleRowForm::cn() {
    return *house_.global.cn_main;
}

void SingleRowForm::Command1_Click() {
    guarded(this, [this] {
        if (!mayUpdate()) return;
        if (!ask(this, QStringLiteral("内容を変更します。\nよろしいですか。"), QStringLiteral("更新の確認")))
            return;
        setHourglass();
        auto row = row_->isEmpty() ? store::RowEdit(cn(), *row_) : store::RowEdit(cn(), *row_, 0);
        fill(row);
        row.write();
        updated();
        accept();
    });
}

}  // namespace forms
