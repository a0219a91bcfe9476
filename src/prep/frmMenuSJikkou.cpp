#include "prep/frmMenuSJikkou.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "forms/global_record.h"
#include "forms/guard.h"
#include "prep/snapshot.h"
#include "store/date_text.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {
namespace {

using namespace Qt::StringLiterals;

const QString kCalculation = u"frmSHaibunjikkouK2"_s;

void setRunMode(forms::GlobalRecord& global) {
    global.haibun_sekkei_mode = false;
    global.haibun_jikkou_mode = true;
}
void setCorrectionMode(forms::GlobalRecord& global) {
    setRunMode(global);
    global.jikkou_syuusei_mode = true;
}
void setInputMode(forms::GlobalRecord& global) {
    setRunMode(global);
    global.jikkou_syuusei_mode = false;
}

int checkedIndex(const std::vector<QRadioButton*>& options) {
    const auto checked =
        std::find_if(options.begin(), options.end(), [](const QRadioButton* o) { return o->isChecked(); });
    return checked == options.end() ? -1 : int(checked - options.begin());
}

void checkIndex(const std::vector<QRadioButton*>& options, int index) {
    if (index >= 0) options[std::size_t(index)]->setChecked(true);
}

}  // namespace

std::vector<forms::MenuEntry> frmMenuSJikkou::entries(frmMenuSJikkou* menu) {
    return {
        {u"Command1"_s, u"対象者⇔配分基準の対応(&X)"_s, {}, u"frmSTaisyousya"_s, {}},
        {u"Command2"_s, u"評価結果の取込(&Z)"_s, setRunMode, u"frmSSanteishikiSub"_s, {}},
        {u"Command3"_s, u"自動入力(&A)"_s, {}, u"frmSHaibunjikkouK"_s, {}},
        {u"Command4"_s, u"修正(&S)"_s, setCorrectionMode, u"frmSSanteishitei"_s, {}},
        {u"Command5"_s, u"実行時入力(&Y)"_s, setInputMode, u"frmSSanteishitei"_s, {}},
        {.control = u"Command6"_s,
         .caption = u"基礎額・係数の入力状況チェック（Excel）"_s,
         .screen = u"frmSJCheck"_s,
         .output = Output::Excel},
        {u"Command7"_s, u"配分計算(&K)"_s, {}, kCalculation, [menu] { menu->Command7_Click(); }},
        {u"Command10"_s, u"人事評価メニューへ戻る(&B)"_s, {}, {}, {}},
        {u"Command11"_s,
         u"ヘルプ(&H)"_s,
         {},
         {},
         [menu] {
             if (menu->house_.help) menu->house_.help(menu->objectName());
         }},
    };
}

frmMenuSJikkou::frmMenuSJikkou(forms::House& house, QWidget* parent)
    : MenuForm(u"frmMenuSJikkou"_s, u"配分実行メニュー"_s, house, parent, entries(this)) {
    build();
    forms::guarded(this, [this] { loadSetting(); });
}

void frmMenuSJikkou::build() {
    auto* frame1 = new widgets::Card(this);
    frame1->setObjectName(u"Frame1"_s);
    auto* note = new QLabel(u"個人別計算と総額配分について、単位と端数処理を設定できます"_s, frame1);
    note->setWordWrap(true);
    widgets::setTone(note, widgets::Tone::Muted);
    frame1->body()->addWidget(note);
    auto* frame2 = buildOptions(u"Frame2"_s, u"単位"_s, u"Option1"_s,
                                {u"1円"_s, u"10円"_s, u"100円"_s, u"1000円"_s, u"10000円"_s}, Option1_);
    auto* frame3 = buildOptions(u"Frame3"_s, u"端数処理"_s, u"Option2"_s,
                                {u"四捨五入"_s, u"切り上げ"_s, u"切り捨て"_s}, Option2_);
    frame1->body()->addWidget(frame2);
    frame1->body()->addWidget(frame3);
    // The setting stands with the one command that stores it, below the steps that lead there.
    auto* command7 = findChild<QPushButton*>(u"Command7"_s);
    widgets::setPrimary(command7);
    frame1->body()->addWidget(command7);
    auto* column = static_cast<QVBoxLayout*>(layout());
    setMinimumWidth(77 * widgets::kGrid);
    auto* steps = findChild<QGridLayout*>();
    for (int i = 0; i < steps->columnCount(); ++i) steps->setColumnStretch(i, 1);
    column->insertWidget(column->count() - 2, frame1);

    std::vector<QWidget*> order;
    for (int i = 1; i <= 6; ++i) order.push_back(findChild<QWidget*>(u"Command%1"_s.arg(i)));
    order.insert(order.end(), Option1_.begin(), Option1_.end());
    order.insert(order.end(), Option2_.begin(), Option2_.end());
    for (const char16_t* name : {u"Command7", u"Command10", u"Command11"})
        order.push_back(findChild<QWidget*>(QString::fromUtf16(name)));
    for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

QGroupBox* frmMenuSJikkou::buildOptions(const QString& frame, const QString& title, const QString& option,
                                        const QStringList& captions, Options& options) {
    auto* box = make<QGroupBox>(frame, title);
    auto* row = new QHBoxLayout(box);
    row->setSpacing(2 * widgets::kGrid);
    for (const QString& caption : captions) {
        options.push_back(make<QRadioButton>(option + u'_' + QString::number(options.size()), caption));
        options.back()->setAccessibleName(title + u' ' + caption);
        row->addWidget(options.back());
    }
    row->addStretch(1);
    return box;
}

void frmMenuSJikkou::loadSetting() {
    const QDate kijunbi = store::requireDate(house_.global.kijunbi);
    setHeading(u"配分実行メニュー　基準日 %1　%2"_s.arg(house_.global.kijunbi,
                                                        bonusTextOf(*house_.global.cn_main, kijunbi)));
    setting_.emplace(*house_.global.cn_main, kijunbi);
    checkIndex(Option1_, setting_->unit());
    checkIndex(Option2_, setting_->rounding());
}

void frmMenuSJikkou::saveSetting() {
    if (!setting_) setting_.emplace(*house_.global.cn_main, store::requireDate(house_.global.kijunbi));
    setting_->save(checkedIndex(Option1_), checkedIndex(Option2_));
}

void frmMenuSJikkou::Command7_Click() {
    saveSetting();
    setHourglass();
    showChild(house_.screens.create(kCalculation, house_, this));
}

void frmMenuSJikkou::reject() {
    house_.global.setRunPanel(QString());
    MenuForm::reject();
}

}  // namespace prep
