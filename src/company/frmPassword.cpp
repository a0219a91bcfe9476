#include "company/frmPassword.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "company/opening_password.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kTitle = u"パスワードの確認"_s;

QLineEdit* makeHidden(QLineEdit* edit) {
    edit->setEchoMode(QLineEdit::Password);
    edit->setMaxLength(kLongestPassword);
    widgets::typeDirectly(edit);
    return edit;
}

/// Judges a try and tells what is wrong with it.
bool passwordHolds(widgets::Form* screen, store::Connection& cnMain, QLineEdit* field) {
    screen->setHourglass();
    const PasswordAnswer answer = tryOpeningPassword(cnMain, field->text(), QDateTime::currentDateTime());
    screen->setDefaultPointer();
    if (answer.right) return true;
    if (answer.wait > 0)
        forms::tell(screen, u"あと%1秒たってから、もう一度入力してください。"_s.arg(answer.wait), kTitle,
                    forms::BoxIcon::Warning);
    else
        forms::tell(screen, u"パスワードが違います。"_s, kTitle, forms::BoxIcon::Warning);
    field->clear();
    field->setFocus();
    return false;
}

}  // namespace

frmPassword::frmPassword(forms::House& house, QWidget* parent)
    : Form(u"frmPassword"_s, u"パスワードの設定"_s, parent), house_(house) {
    const bool open = house_.global.cn_main && house_.global.companyOpen();
    forms::guarded(this, [&] { has_ = open && hasOpeningPassword(*house_.global.cn_main); });
    build();
    now_->setEnabled(has_);
    for (QWidget* part : std::initializer_list<QWidget*>{new_, again_, set_}) part->setEnabled(open);
    remove_->setEnabled(has_);
    if (open) (has_ ? now_ : new_)->setFocus();
}

void frmPassword::build() {
    const bool open = house_.global.companyOpen();
    auto* title = make<QLabel>(u"Label1"_s, u"会社を開くときのパスワード"_s);
    auto* guide = make<QLabel>(
        u"Label2"_s,
        !open ? u"会社を開いてから設定します。"_s
        : has_ ? u"『%1』には、パスワードが設定されています。"_s.arg(house_.global.panels.company)
               : u"『%1』には、パスワードが設定されていません。"_s.arg(house_.global.panels.company));
    now_ = makeHidden(make<QLineEdit>(u"Text1"_s));
    new_ = makeHidden(make<QLineEdit>(u"Text2"_s));
    again_ = makeHidden(make<QLineEdit>(u"Text3"_s));
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, labelFor(u"Label3"_s, u"いまのパスワード(&P):"_s, now_), now_);
    widgets::addField(fields, labelFor(u"Label4"_s, u"新しいパスワード（8文字以上）(&N):"_s, new_), new_);
    widgets::addField(fields, labelFor(u"Label5"_s, u"新しいパスワードをもう一度(&A):"_s, again_), again_);
    auto* about = make<QLabel>(
        u"Label6"_s,
        u"このパスワードは、「会社指定」で会社を開くときに聞かれます。席を離れたときなどに、ほかの人が画面で"
        u"会社を開くのを防ぎます。\n"
        "ファイルそのものの暗号は、これまでと変わりません。ファイルを持ち出した人が特別なプログラムで読むこと"
        "や、"
        "会社のフォルダの削除は防げません。\n"
        "パスワードを忘れると、この会社も、そのあとのバックアップも開けなくなります。控えを安全な場所に保管してください。"_s);
    about->setWordWrap(true);
    about->setMinimumWidth(64 * widgets::kGrid);
    widgets::setTone(about, widgets::Tone::Muted);
    set_ = make<QPushButton>(u"Command1"_s, u"設定(&S)"_s);
    widgets::setPrimary(set_);
    remove_ = make<QPushButton>(u"Command2"_s, u"解除(&D)"_s);
    widgets::setDanger(remove_);
    auto* cancel = make<QPushButton>(u"Command3"_s, u"キャンセル(&C)"_s);
    setCancelButton(cancel);
    auto* help = make<QPushButton>(u"Command4"_s, u"ヘルプ(&H)"_s);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guide));
    column->addLayout(fields);
    column->addWidget(about);
    column->addStretch(1);
    column->addLayout(widgets::buttonRow({help, remove_}, {cancel, set_}));
    widgets::tabOrder({now_, new_, again_, set_, cancel, remove_, help});
    connect(set_, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(remove_, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
}

/// Whoever finds the company open must not change its password.
bool frmPassword::mayChange() {
    bool may = !has_;
    if (has_) forms::guarded(this, [&] { may = passwordHolds(this, *house_.global.cn_main, now_); });
    return may;
}

void frmPassword::Command1_Click() {
    const auto refuse = [this](const QString& text) {
        forms::tell(this, text, u"入力エラー"_s, forms::BoxIcon::Critical);
        new_->setFocus();
        new_->selectAll();
    };
    if (new_->text().size() < kShortestPassword)
        return refuse(u"パスワードは%1文字以上で入力してください。"_s.arg(kShortestPassword));
    if (new_->text() != again_->text()) return refuse(u"二つの新しいパスワードが一致しません。"_s);
    if (!mayChange()) return;
    const bool done = forms::guarded(this, [this] {
        setHourglass();
        store::Connection& cn = *house_.global.cn_main;
        store::Work work(cn, windowTitle());
        setOpeningPassword(cn, new_->text());
        work.commit();
    });
    if (done) finish(u"パスワードを設定しました。次に会社を開くときから聞かれます。"_s);
}

void frmPassword::Command2_Click() {
    if (!mayChange()) return;
    if (!forms::confirmLoss(this, u"パスワードを解除します。だれでもこの会社を開けるようになります。"_s,
                            kTitle, u"解除する(&D)"_s, u"解除しない(&B)"_s))
        return;
    const bool done = forms::guarded(this, [this] {
        store::Connection& cn = *house_.global.cn_main;
        store::Work work(cn, windowTitle());
        removeOpeningPassword(cn);
        work.commit();
    });
    if (done) finish(u"パスワードを解除しました。"_s);
}

void frmPassword::finish(const QString& told) {
    forms::tell(this, told, kTitle, forms::BoxIcon::Information);
    accept();
}

frmPasswordKakunin::frmPasswordKakunin(QWidget* parent, store::Connection& cnMain, const QString& company)
    : Form(u"frmPasswordKakunin"_s, u"パスワードの入力"_s, parent), cn_(cnMain) {
    auto* guide = make<QLabel>(u"Label1"_s, u"『%1』を開くパスワードを入力してください。"_s.arg(company));
    password_ = makeHidden(make<QLineEdit>(u"Text1"_s));
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, labelFor(u"Label2"_s, u"パスワード(&P):"_s, password_), password_);
    auto* open = make<QPushButton>(u"Command1"_s, u"開く(&S)"_s);
    widgets::setPrimary(open);
    auto* cancel = make<QPushButton>(u"Command2"_s, u"キャンセル(&C)"_s);
    setCancelButton(cancel);
    auto* column = widgets::columnOf(this);
    column->addWidget(guide);
    column->addLayout(fields);
    column->addLayout(widgets::buttonRow({}, {cancel, open}));
    widgets::tabOrder({password_, open, cancel});
    password_->setFocus();
    connect(open, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmPasswordKakunin::Command1_Click() {
    forms::guarded(this, [this] {
        if (passwordHolds(this, cn_, password_)) accept();
    });
}

}  // namespace company
