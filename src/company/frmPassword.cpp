#include "company/frmPassword.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextDocument>
#include <QVBoxLayout>

#include "company/key_change.h"
#include "company/ui_company_opening.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/progress.h"
#include "store/work.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kTitle = u"パスワードの確認"_s;

/// Judges a try and tells what is wrong with it.
bool passwordHolds(widgets::Form* screen, const PasswordTry& attempt, QLineEdit* field) {
    screen->setHourglass();
    const PasswordAnswer answer = attempt(field->text(), QDateTime::currentDateTime());
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

QLineEdit* makeHidden(QLineEdit* edit) {
    edit->setEchoMode(QLineEdit::Password);
    edit->setMaxLength(kLongestPassword);
    widgets::typeDirectly(edit);
    return edit;
}

frmPassword::frmPassword(forms::House& house, QWidget* parent)
    : Form(u"frmPassword"_s, u"パスワードの設定"_s, parent), house_(house) {
    const bool open = house_.global.cn_main && house_.global.companyOpen();
    forms::guarded(this, [&] {
        locked_ = open && filesLocked(folder());
        has_ = locked_ || (open && hasOpeningPassword(*house_.global.cn_main));
    });
    build();
    now_->setEnabled(has_);
    lock_->setChecked(locked_);
    for (QWidget* part : std::initializer_list<QWidget*>{new_, again_, lock_, set_}) part->setEnabled(open);
    remove_->setEnabled(has_);
    if (open) (has_ ? now_ : new_)->setFocus();
}

QString frmPassword::folder() const {
    return house_.global.dataDir() + u'/' + house_.global.panels.folder;
}

void frmPassword::build() {
    const QString company = house_.global.panels.company;
    auto* title = make<QLabel>(u"Label1"_s, u"会社を開くときのパスワード"_s);
    auto* guide = make<QLabel>(
        u"Label2"_s, !house_.global.companyOpen() ? u"会社を開いてから設定します。"_s
                     : locked_
                         ? u"『%1』には、パスワードとファイルの暗号化が設定されています。"_s.arg(company)
                     : has_ ? u"『%1』には、パスワードが設定されています。"_s.arg(company)
                            : u"『%1』には、パスワードが設定されていません。"_s.arg(company));
    now_ = makeHidden(make<QLineEdit>(u"Text1"_s));
    new_ = makeHidden(make<QLineEdit>(u"Text2"_s));
    again_ = makeHidden(make<QLineEdit>(u"Text3"_s));
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, labelFor(u"Label3"_s, u"いまのパスワード(&P):"_s, now_), now_);
    widgets::addField(fields, labelFor(u"Label4"_s, u"新しいパスワード（8文字以上）(&N):"_s, new_), new_);
    widgets::addField(fields, labelFor(u"Label5"_s, u"新しいパスワードをもう一度(&A):"_s, again_), again_);
    lock_ = make<QCheckBox>(u"Check1"_s, u"ファイルも暗号化する(&E)"_s);
    auto* about = make<QLabel>(u"Label6"_s,
                               u"パスワードは、「会社指定」で会社を開くときに聞かれます。席を離れたときなどに"
                               u"、ほかの人が画面で会社を開く"
                               u"のを防ぎます。ファイルを持ち出した人が特別なプログラムで読むことや、会社のフ"
                               u"ォルダの削除は防げません。\n"
                               "パスワードを忘れると、この会社も、そのあとのバックアップも開けなくなります。"
                               "控えを安全な場所に保管して"
                               "ください。"_s);
    auto* aboutLock = make<QLabel>(u"Label7"_s, kAboutLock);
    for (QLabel* label : {about, aboutLock}) {
        label->setWordWrap(true);
        label->setMinimumWidth(72 * widgets::kGrid);
        widgets::setTone(label, widgets::Tone::Muted);
    }
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
    column->addWidget(lock_);
    column->addWidget(aboutLock);
    column->addStretch(1);
    column->addLayout(widgets::buttonRow({help, remove_}, {cancel, set_}));
    widgets::tabOrder({now_, new_, again_, lock_, set_, cancel, remove_, help});
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
    const auto attempt = [this](const QString& typed, const QDateTime& now) {
        return locked_ ? tryKey(house_.global.places(), folder(), typed, now)
                       : tryOpeningPassword(*house_.global.cn_main, typed, now);
    };
    if (has_) forms::guarded(this, [&] { may = passwordHolds(this, attempt, now_); });
    return may;
}

bool frmPassword::newPasswordHolds() {
    const QString fault = newPasswordFault(new_->text(), again_->text());
    if (fault.isEmpty()) return true;
    forms::tell(this, fault, u"入力エラー"_s, forms::BoxIcon::Critical);
    new_->setFocus();
    new_->selectAll();
    return false;
}

void frmPassword::Command1_Click() {
    if (!newPasswordHolds() || !mayChange()) return;
    if (lock_->isChecked() && !locked_) return lockFiles();
    QString told = u"パスワードを設定しました。次に会社を開くときから聞かれます。"_s;
    const bool stays = lock_->isChecked() == locked_;
    const bool done = forms::guarded(this, [&] {
        setHourglass();
        if (lock_->isChecked()) {
            changeKeyPassword(folder(), new_->text());
            told = u"パスワードを変更しました。これまでのバックアップは、前のパスワードで開きます。"_s;
            return;
        }
        // Where the files are locked it counts from their unlocking on.
        store::Work work(*house_.global.cn_main, windowTitle());
        setOpeningPassword(*house_.global.cn_main, new_->text());
        work.commit();
    });
    if (!done) return;
    if (stays) return finish(told);
    unlockFiles(u"ファイルの暗号化をやめ、パスワードを設定しました。"_s);
}

void frmPassword::Command2_Click() {
    if (!mayChange()) return;
    if (!forms::confirmLoss(
            this,
            locked_
                ? u"パスワードを解除し、ファイルの暗号化をやめます。だれでもこの会社を開けるようになります。"_s
                : u"パスワードを解除します。だれでもこの会社を開けるようになります。"_s,
            kTitle, u"解除する(&D)"_s, u"解除しない(&B)"_s))
        return;
    const bool done = forms::guarded(this, [this] {
        store::Work work(*house_.global.cn_main, windowTitle());
        removeOpeningPassword(*house_.global.cn_main);
        work.commit();
    });
    if (!done) return;
    if (locked_) return unlockFiles(u"パスワードを解除し、ファイルの暗号化をやめました。"_s);
    finish(u"パスワードを解除しました。"_s);
}

void frmPassword::lockFiles() {
    std::optional<OwnKey> own;
    if (!forms::guarded(this, [&] {
            setHourglass();
            own.emplace(new_->text());
        }))
        return;
    const QString company = house_.global.panels.folder;
    if (showChild(new frmFukkyuKey(this, company, own->recoveryCode())) != Accepted || !changeFiles(&*own))
        return;
    finish(
        u"『%1』のファイルを暗号化し、会社を閉じました。\n「会社指定」で、新しいパスワードを入力して開いてください。\n\nこれまでのバックアップは、暗号化されていません。いらないものは消してください。"_s
            .arg(company));
}

void frmPassword::unlockFiles(const QString& told) {
    if (changeFiles(nullptr)) finish(told + u"\n会社を閉じました。「会社指定」で開いてください。"_s);
}

bool frmPassword::changeFiles(const OwnKey* own) {
    bool done = false;
    forms::guarded(this, [&] {
        setHourglass();
        const auto lock = std::move(house_.global.company_lock);
        closeForHouse(house_, this);
        forms::ProgressBox progress(this, u"『%1』のファイルを書き直しています。"_s.arg(lock->company()));
        done = changeKey(*lock, own, progress.step());
    });
    if (!done) reject();  // the company is closed, and as it was
    return done;
}

void frmPassword::finish(const QString& told) {
    forms::tell(this, told, kTitle, forms::BoxIcon::Information);
    accept();
}

// ---- Asking for it

frmPasswordKakunin::frmPasswordKakunin(QWidget* parent, const QString& company, bool recovery,
                                       PasswordTry attempt)
    : Form(u"frmPasswordKakunin"_s, u"パスワードの入力"_s, parent), attempt_(std::move(attempt)) {
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
    if (recovery) {
        auto* forgotten = make<QLabel>(u"Label3"_s, u"忘れたときは、印刷した復旧キーを入力します。"_s);
        widgets::setTone(forgotten, widgets::Tone::Muted);
        column->addWidget(forgotten);
    }
    column->addLayout(widgets::buttonRow({}, {cancel, open}));
    widgets::tabOrder({password_, open, cancel});
    password_->setFocus();
    connect(open, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmPasswordKakunin::Command1_Click() {
    forms::guarded(this, [this] {
        if (passwordHolds(this, attempt_, password_)) accept();
    });
}

// ---- The recovery code

frmFukkyuKey::frmFukkyuKey(QWidget* parent, const QString& company, const QString& code)
    : Form(u"frmFukkyuKey"_s, u"復旧キー"_s, parent), company_(company), code_(code) {
    auto* title = make<QLabel>(u"Label1"_s, u"復旧キーを印刷してください。"_s);
    auto* guide = make<QLabel>(
        u"Label2"_s,
        u"パスワードを忘れたときに、『%1』を開くただ一つの手段です。あとから表示することはできません。"_s.arg(
            company));
    auto* shown = make<QLabel>(u"lblCode"_s, code);
    QFont large = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    large.setPointSizeF(font().pointSizeF() * 1.8);
    shown->setFont(large);
    shown->setAlignment(Qt::AlignCenter);
    shown->setAccessibleName(u"復旧キー"_s);
    auto* card = new widgets::Card(this);
    card->body()->addWidget(shown);
    auto* print = make<QPushButton>(u"Command1"_s, u"印刷(&P)..."_s);
    auto* kept = make<QCheckBox>(u"Check1"_s, u"印刷して、または書き写して、安全な場所に保管します(&K)"_s);
    auto* go = make<QPushButton>(u"Command2"_s, u"暗号化する(&S)"_s);
    widgets::setPrimary(go);
    go->setEnabled(false);
    auto* cancel = make<QPushButton>(u"Command3"_s, u"キャンセル(&C)"_s);
    setCancelButton(cancel);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guide));
    column->addWidget(card);
    column->addWidget(kept);
    column->addLayout(widgets::buttonRow({print}, {cancel, go}));
    widgets::tabOrder({print, kept, go, cancel});
    print->setFocus();
    connect(kept, &QCheckBox::toggled, go, &QWidget::setEnabled);
    connect(print, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(go, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

std::unique_ptr<QTextDocument> frmFukkyuKey::sheet() const {
    auto document = std::make_unique<QTextDocument>();
    document->setHtml(
        u"<h1>復旧キー　『%1』</h1><p>作成日　%2</p>"
        "<p style='font-size:22pt; font-family:monospace'><b>%3</b></p>"
        "<p>"
        "パスワードを忘れたときに、この会社のファイルを開くただ一つの手段です。「会社指定」で会社を選び、パス"
        "ワードの代わりに入力します。"
        "開いたら、「パスワードの設定」で新しいパスワードを決めてください。</p>"
        "<p>この紙を持つ人は、会社のデータを開けます。鍵のかかる場所に保管してください。"
        "暗号化をやめて、もう一度暗号化したときは、新しい復旧キーに替わります。それまでのバックアップには、この紙が必要です。</p>"_s
            .arg(company_.toHtmlEscaped(), QDate::currentDate().toString(u"yyyy/M/d"_s), code_));
    return document;
}

void frmFukkyuKey::Command1_Click() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) sheet()->print(&printer);
}

}  // namespace company
