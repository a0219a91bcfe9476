#include "personnel/frmJinjiSiborikomi.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "forms/box.h"
#include "personnel/code_choices.h"
#include "personnel/person_rules.h"
#include "personnel/ui_person_output.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const QString kDigits = u"0123456789"_s;

const std::vector<SelectionMode>& modes() {
    using enum SelectionMode::Deed;
    using G = forms::GlobalRecord;
    static const std::vector<SelectionMode> all = {
        {.flag = &G::jinji_mode_joukenn,
         .deed = OpenScreen,
         .purpose = u"履歴書を追加・編集する人を選びます。"_s,
         .screen = u"frmRireki"_s},
        {.flag = &G::jinji_mode_daichou,
         .deed = Print,
         .purpose = u"社員台帳に載せる人を選びます。"_s,
         .title = u"社員台帳"_s},
        {.flag = &G::jinji_mode_taisyoku,
         .deed = OpenScreen,
         .purpose = u"退職処理をする人を選びます。"_s,
         .screen = u"frmJinjiTaisyokusyori"_s,
         .oneOnly = true},
        {.flag = &G::jinji_mode_yoteisya,
         .deed = Print,
         .purpose = u"退職予定者一覧に載せる人を選びます。はじめに、今日以降に退職する人が出ています。"_s,
         .title = u"退職予定者一覧"_s,
         .leavingFirst = true},
        {.flag = &G::jinji_mode_excel,
         .deed = Sheet,
         .purpose = u"社員データをExcelに送る人を選びます。"_s,
         .list = PersonList::StaffSheet,
         .title = u"社員データ"_s},
        {.flag = &G::jinji_mode_kazoku,
         .deed = Print,
         .purpose = u"家族情報を確認する人を選びます。"_s,
         .list = PersonList::Family,
         .title = u"家族情報一覧"_s},
        {.flag = &G::jinji_mode_kazoku_excel,
         .deed = Sheet,
         .purpose = u"家族情報をExcelに送る人を選びます。"_s,
         .list = PersonList::Family,
         .title = u"家族情報"_s},
        {.flag = &G::jinji_mode_shikaku,
         .deed = Print,
         .purpose = u"資格・免許の保有状況を確認する人を選びます。"_s,
         .list = PersonList::Qualifications,
         .title = u"資格・免許保有状況一覧"_s},
        {.flag = &G::jinji_mode_shikaku_excel,
         .deed = Sheet,
         .purpose = u"資格・免許の保有状況をExcelに送る人を選びます。"_s,
         .list = PersonList::Qualifications,
         .title = u"資格・免許"_s}};
    return all;
}

QString itemOf(std::size_t index) {
    return QString::fromUtf16(kPositionItems[index]);
}

}  // namespace

frmJinjiSiborikomi::frmJinjiSiborikomi(forms::House& house, const reports::SheetFolder& sheets,
                                       QWidget* parent)
    : SelectionForm({u"frmJinjiSiborikomi"_s, u"検索条件"_s, u"Label18"_s}, modes(), house, sheets, parent) {
    makeTexts();
    arrange(makeConditions());
    connectEvents();
    text1_->setText(today());
    txtFields_[0]->setFocus();
    offerLeaving();
}

// ---- The screen's parts

void frmJinjiSiborikomi::makeTexts() {
    txtFields_ = makeArray<QLineEdit, 2>(u"txtFields"_s, {});
    for (std::size_t i = 0; i < combo_.size(); ++i)
        combo_[i] = make<widgets::CodeCombo>(u"DataCombo1_%1"_s.arg(i));
    text1_ = make<QLineEdit>(u"Text1"_s);
    for (std::size_t i = 0; i < years_.size(); ++i) {
        years_[i] = make<QLineEdit>(u"Text%1"_s.arg(i + 2));
        years_[i]->setAlignment(Qt::AlignRight);
        years_[i]->setFixedWidth(fontMetrics().horizontalAdvance(u"00,000"_s) + 3 * widgets::kGrid);
        widgets::admitOnly(years_[i], kDigits);
    }
    widgets::admitOnly(txtFields_[0], kDigits);
}

QLayout* frmJinjiSiborikomi::makeConditions() {
    auto* grid = widgets::fieldGrid();
    const auto field = [&](const QString& name, const QString& text, QWidget* edit) {
        widgets::addField(grid, labelFor(name, text, edit), edit);
    };
    field(u"lblLabels_0"_s, u"社員Code(&N):"_s, txtFields_[0]);
    field(u"lblLabels_1"_s, u"フリガナ(&R):"_s, txtFields_[1]);
    grid->addWidget(new QLabel(u"性別:"_s, this), grid->rowCount(), 0);
    grid->addLayout(makeSex(), grid->rowCount() - 1, 1);
    makePosition(grid);
    const int row = grid->rowCount() + 1;
    grid->addWidget(labelFor(u"Label2"_s, u"基準日(&D):"_s, text1_), row - 1, 0);
    grid->addLayout(withHint(text1_, u"入力例： 2000/4/1"_s), row - 1, 1);
    grid->addWidget(labelFor(u"Label3"_s, u"年齢(&A):"_s, years_[0]), row, 0);
    grid->addLayout(range(years_[0], u"歳～"_s, years_[1], u"歳"_s), row, 1);
    grid->addWidget(labelFor(u"Label4"_s, u"勤続年数(&K):"_s, years_[2]), row + 1, 0);
    grid->addLayout(range(years_[2], u"年～"_s, years_[3], u"年"_s), row + 1, 1);
    years_[1]->setAccessibleName(u"年齢（まで）"_s);
    years_[3]->setAccessibleName(u"勤続年数（まで）"_s);
    return grid;
}

QLayout* frmJinjiSiborikomi::makeSex() {
    sex_ = new QButtonGroup(this);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * widgets::kGrid);
    int code = 0;
    for (const QString& caption : {u"－"_s, u"男"_s, u"女"_s}) {
        auto* option = make<QRadioButton>(u"Option%1"_s.arg(++code), caption);
        sex_->addButton(option, code);
        row->addWidget(option);
    }
    row->addStretch(1);
    // Between the reading and the first list, as they stand on the screen.
    widgets::tabOrder({txtFields_[1], sex_->button(1), sex_->button(2), sex_->button(3), combo_[0]});
    return row;
}

void frmJinjiSiborikomi::makePosition(QGridLayout* grid) {
    for (std::size_t i = 0; i < combo_.size(); ++i)
        widgets::addField(
            grid, labelFor(u"lblLabels_%1"_s.arg(i + 2), u"%1(&%2):"_s.arg(itemOf(i)).arg(i + 1), combo_[i]),
            combo_[i]);
}

QLayout* frmJinjiSiborikomi::range(QLineEdit* from, const QString& between, QLineEdit* to,
                                   const QString& behind) {
    auto* row = new QHBoxLayout;
    row->setSpacing(widgets::kGrid);
    row->addWidget(from);
    row->addWidget(new QLabel(between, this));
    row->addWidget(to);
    row->addWidget(new QLabel(behind, this));
    row->addStretch(1);
    return row;
}

void frmJinjiSiborikomi::connectEvents() {
    connect(txtFields_[0], &QLineEdit::textChanged, this, [this] { txtFields_Change(); });
    validateOnLeave(txtFields_[0], [this] { return txtFields_LostFocus(); });
    validateOnLeave(
        text1_, [this] { return checkDate(text1_, false); }, exempt());
    for (QLineEdit* edit : years_)
        validateOnLeave(
            edit, [this, edit] { return years_LostFocus(edit); }, exempt());
    for (std::size_t i = 0; i < combo_.size(); ++i)
        connect(combo_[i], &widgets::CodeCombo::entered, this, [this, i] { DataCombo1_GotFocus(i); });
    // A 所属小 means something under its 所属大 only.
    connect(combo_[1], &widgets::CodeCombo::chosen, this, [this] {
        combo_[2]->setCode({});
        combo_[2]->setItems({});
    });
}

// ---- Entering values

void frmJinjiSiborikomi::txtFields_Change() {
    const bool byCode = !txtFields_[0]->text().isEmpty();
    if (byCode == byCode_) return;
    byCode_ = byCode;
    if (byCode) clearOthers();
    for (QWidget* other :
         std::initializer_list<QWidget*>{txtFields_[1], text1_, years_[0], years_[1], years_[2], years_[3],
                                         combo_[0], combo_[1], combo_[2], combo_[3], combo_[4], combo_[5]})
        other->setEnabled(!byCode);
    for (QAbstractButton* option : sex_->buttons()) option->setEnabled(!byCode);
}

bool frmJinjiSiborikomi::txtFields_LostFocus() {
    txtFields_[0]->setText(paddedSyainCode(txtFields_[0]->text()));
    return true;
}

bool frmJinjiSiborikomi::years_LostFocus(QLineEdit* edit) {
    if (edit->text().isEmpty()) return true;
    if (!store::parseNumber(edit->text())) {
        forms::tell(this, u"数字以外は許されません。 "_s, u"入力エラー"_s, forms::BoxIcon::Critical);
        return false;
    }
    return forms::guarded(
        this, [edit] { edit->setText(store::formatGrouped(store::Money::fromText(edit->text()))); });
}

void frmJinjiSiborikomi::DataCombo1_GotFocus(std::size_t index) {
    forms::guarded(this, [&] {
        const QDate date = store::parseDate(text1_->text()).value_or(QDate());
        const QString syozokuDai = combo_[1]->code();
        const std::vector<CodeChoice> choices = codeChoicesAt(cn(), itemOf(index), date, syozokuDai);
        std::vector<widgets::CodeList::Item> items{{QString(), u"（指定しない）"_s}};
        for (const CodeChoice& choice : choices) items.push_back({choice.code, choice.name});
        combo_[index]->setItems(items);
        // What may no longer be chosen must not go on asking unseen.
        if (combo_[index]->currentIndex() < 0) combo_[index]->setCode({});
        if (combo_[1]->code().isEmpty()) combo_[2]->setCode({});
        const bool underNothing = itemOf(index) == u"所属小"_s && syozokuDai.isEmpty();
        if (choices.empty() && !underNothing)
            forms::tell(this, u"条件に合致するデータはありません。"_s, u"入力エラー"_s,
                        forms::BoxIcon::Information);
    });
}

void frmJinjiSiborikomi::clearOthers() {
    txtFields_[1]->clear();
    // An exclusive group lets none of its options go.
    sex_->setExclusive(false);
    for (QAbstractButton* option : sex_->buttons()) option->setChecked(false);
    sex_->setExclusive(true);
    for (widgets::CodeCombo* combo : combo_) combo->setCode({});
    text1_->clear();
    for (QLineEdit* edit : years_) edit->clear();
}

void frmJinjiSiborikomi::clearConditions() {
    txtFields_[0]->clear();
    clearOthers();
    txtFields_[0]->setFocus();
    offerLeaving();
}

// ---- Finding and sending on

/// A registered retirement takes a person out of the staff at once, so that no search finds who is meant.
void frmJinjiSiborikomi::offerLeaving() {
    if (!mode().leavingFirst) return;
    const QDate today = house_.global.clock();
    offer([this, today] { return selectLeaving(cn(), today); }, PersonList::Retired,
          u"今日以降に退職する人はいません。\nほかの人を選ぶときは、条件を入力して、\n"
          "「対象者リストの表示」を押してください。"_s);
}

SelectionConditions frmJinjiSiborikomi::conditions() const {
    SelectionConditions asked;
    asked.syainCode = paddedSyainCode(txtFields_[0]->text());
    asked.furigana = txtFields_[1]->text();
    if (sex_->checkedId() > 0) asked.seibetsu = QString::number(sex_->checkedId());
    for (std::size_t i = 0; i < combo_.size(); ++i) asked.position[i] = combo_[i]->code();
    asked.ageFrom = years_[0]->text();
    asked.ageTo = years_[1]->text();
    asked.tenureFrom = years_[2]->text();
    asked.tenureTo = years_[3]->text();
    return asked;
}

QDate frmJinjiSiborikomi::referenceDate() {
    if (text1_->text().isEmpty()) text1_->setText(today());
    return store::requireDate(text1_->text());
}

QString frmJinjiSiborikomi::printedDate() {
    return dateLine(referenceDate());
}

SelectionForm::Query frmJinjiSiborikomi::query() {
    if (!checkDate(text1_, true)) return {};
    SelectionConditions asked = conditions();
    asked.kijunbi = referenceDate();
    return [this, asked] { return selectPeople(cn(), asked); };
}

}  // namespace personnel
