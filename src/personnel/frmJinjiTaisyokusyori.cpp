#include "personnel/frmJinjiTaisyokusyori.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "store/date_text.h"
#include "store/row_edit.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const QString kTaisyokubi = u"退職日"_s;

}  // namespace

frmJinjiTaisyokusyori::frmJinjiTaisyokusyori(forms::House& house, QWidget* parent)
    : Form(u"frmJinjiTaisyokusyori"_s, u"退職処理"_s, parent),
      house_(house),
      text1_(make<QLineEdit>(u"Text1"_s)) {
    makeButtons();
    command1_->setEnabled(forms::guarded(this, [this] { Form_Load(); }) && person_ && !person_->isEmpty());
    layOut();
    text1_->setText(stored(kTaisyokubi));
    text1_->setPlaceholderText(u"入力例： 2000/3/31"_s);
    widgets::typeDirectly(text1_);
    validateOnLeave(text1_, [this] { return checkDate(); }, {command2_, command3_});
    text1_->setFocus();
}

void frmJinjiTaisyokusyori::makeButtons() {
    command1_ = make<QPushButton>(u"Command1"_s, u"退職処理(&T)"_s);
    command2_ = make<QPushButton>(u"Command2"_s, u"キャンセル(&C)"_s);
    command3_ = make<QPushButton>(u"Command3"_s, u"ヘルプ(&H)"_s);
    widgets::setPrimary(command1_);
    setCancelButton(command2_);
    connect(command1_, &QPushButton::clicked, this,
            [this] { forms::guarded(this, [this] { Command1_Click(); }); });
    connect(command2_, &QPushButton::clicked, this, [this] { reject(); });
    connect(command3_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
}

void frmJinjiTaisyokusyori::layOut() {
    auto* fields = widgets::fieldGrid();
    auto* code = make<QLabel>(u"Label4"_s, stored(u"社員Code"_s));
    auto* name = make<QLabel>(u"Label5"_s, stored(u"氏名"_s));
    widgets::setTone(name, widgets::Tone::Heading);
    widgets::addField(fields, make<QLabel>(u"Label1"_s, u"社員Code:"_s), code);
    widgets::addField(fields, make<QLabel>(u"Label2"_s, u"氏名:"_s), name);
    widgets::addField(fields, labelFor(u"Label6"_s, u"退職日(&D):"_s, text1_), text1_);
    auto* card = new widgets::Card(this);
    card->body()->addLayout(fields);
    card->body()->addStretch(1);
    auto* column = widgets::columnOf(this);
    auto* guidance = make<QLabel>(u"Label3"_s, u"退職日を入力して「退職処理」ボタンを押してください。"_s);
    guidance->setMinimumWidth(guidance->fontMetrics().horizontalAdvance(guidance->text()));
    column->addLayout(widgets::headerBlock(make<QLabel>(u"lblTitle"_s, windowTitle()), guidance));
    column->addWidget(card, 1);
    column->addLayout(widgets::buttonRow({command3_}, {command2_, command1_}));
    widgets::tabOrder({text1_, command1_, command2_, command3_});
}

void frmJinjiTaisyokusyori::Form_Load() {
    person_.emplace(house_.global.cn_main->open(
        {u"履歴書テーブル"_s, u"社員Code = ?"_s, {house_.global.syain_code}, u"CodeKey(社員Code)"_s}));
    if (person_->isEmpty() || !person_->value(u"退職フラグ"_s).toBool()) return;
    forms::tell(parentWidget(), stored(u"氏名"_s) + u" は退職処理済です。"_s, u"退職処理済データ"_s,
                forms::BoxIcon::Information);
}

QString frmJinjiTaisyokusyori::stored(const QString& column) const {
    return person_ && !person_->isEmpty() ? person_->value(column).toText() : QString();
}

bool frmJinjiTaisyokusyori::checkDate() {
    const auto date = store::parseDate(text1_->text());
    const auto joined = store::parseDate(stored(u"入社日"_s));
    const bool early = date && joined && *date < *joined;
    if (date && !early) {
        text1_->setText(store::formatDate(*date));
        return true;
    }
    forms::tell(
        this, early ? u"入社日より古い日付はありえません。･･･退職日"_s : u"日付の入力が正しくありません。"_s,
        u"入力エラー"_s);
    text1_->setFocus();
    return false;
}

void frmJinjiTaisyokusyori::Command1_Click() {
    if (!checkDate()) return;
    const QString question = u"%1 の退職日を%2で登録します。\nよろしいですか。"_s;
    if (!forms::ask(this, question.arg(stored(u"氏名"_s), text1_->text()), u"更新の確認"_s)) return;
    const bool stands = forms::guarded(this, [this] {
        store::RowEdit person(*house_.global.cn_main, *person_, 0);
        person.set(u"退職フラグ"_s, true);
        person.set(kTaisyokubi, text1_->text());
        person.write();
    });
    if (!stands) return;
    forms::tell(this, u"処理が終了しました。"_s, u"処理終了確認"_s, forms::BoxIcon::Information);
    accept();
}

}  // namespace personnel
