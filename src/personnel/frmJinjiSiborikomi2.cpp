#include "personnel/frmJinjiSiborikomi2.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "forms/box.h"
#include "store/date_text.h"
#include "widgets/layout.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const std::vector<SelectionMode>& modes() {
    using enum SelectionMode::Deed;
    using G = forms::GlobalRecord;
    static const std::vector<SelectionMode> all = {{.flag = &G::jinji_mode_taisyokusya,
                                                    .deed = Print,
                                                    .purpose = u"退職者一覧に載せる人を選びます。"_s,
                                                    .list = PersonList::Retired,
                                                    .title = u"退職者一覧"_s},
                                                   {.flag = &G::jinji_mode_fukkatsu,
                                                    .deed = Restore,
                                                    .purpose = u"退職を取り消して復活させる人を選びます。"_s,
                                                    .oneOnly = true}};
    return all;
}

}  // namespace

frmJinjiSiborikomi2::frmJinjiSiborikomi2(forms::House& house, const reports::SheetFolder& sheets,
                                         QWidget* parent)
    : SelectionForm({u"frmJinjiSiborikomi2"_s, u"退職者検索"_s, u"Label1"_s}, modes(), house, sheets, parent),
      text1_(make<QLineEdit>(u"Text1"_s)),
      text2_(make<QLineEdit>(u"Text2"_s)) {
    arrange(makeConditions());
    text2_->setText(today());
    validateOnLeave(
        text1_, [this] { return checkDate(text1_, true); }, exempt());
    validateOnLeave(
        text2_, [this] { return checkDate(text2_, false); }, exempt());
    text1_->setFocus();
}

QLayout* frmJinjiSiborikomi2::makeConditions() {
    auto* grid = widgets::fieldGrid();
    const QString hint = u"入力例： 2001/3/31"_s;
    grid->addWidget(labelFor(u"Label2"_s, u"退職日(&D):"_s, text1_), 0, 0);
    grid->addLayout(withHint(text1_, hint), 0, 1);
    grid->addWidget(labelFor(u"Label3"_s, u"から(&T)"_s, text2_), 1, 0);
    grid->addLayout(withHint(text2_, hint), 1, 1);
    text1_->setAccessibleName(u"退職日から"_s);
    text2_->setAccessibleName(u"退職日まで"_s);
    auto* column = new QVBoxLayout;
    column->addLayout(grid);
    auto* until = make<QLabel>(u"Label4"_s, u"までに退職した社員をリストアップします"_s);
    until->setWordWrap(true);
    column->addWidget(until);
    return column;
}

void frmJinjiSiborikomi2::clearConditions() {
    text1_->clear();
    text2_->clear();
    text1_->setFocus();
}

QDate frmJinjiSiborikomi2::referenceDate() {
    if (text2_->text().isEmpty()) text2_->setText(today());
    return store::requireDate(text2_->text());
}

QString frmJinjiSiborikomi2::printedDate() {
    return asked_;
}

SelectionForm::Query frmJinjiSiborikomi2::query() {
    if (!checkDate(text1_, true) || !checkDate(text2_, true)) return {};
    const QDate from = store::parseDate(text1_->text()).value_or(QDate());
    const QDate to = referenceDate();
    // The fields may change before the list is printed; its people stay those of this question.
    asked_ = u"%1～%2の退職者"_s.arg(text1_->text(), text2_->text());
    return [this, from, to] { return selectRetired(cn(), from, to); };
}

void frmJinjiSiborikomi2::restore(const QString& code) {
    const QString title = u"復活の確認"_s;
    auto person = cn().prepare(u"SELECT 氏名,退職フラグ FROM 履歴書テーブル WHERE 社員Code = ?"_s);
    person.bind(1, code);
    if (!person.step() || !person.toBool(1))
        return forms::tell(this, u"復活処理済です。"_s, title, forms::BoxIcon::Information);
    const QString name = person.toText(0);
    person.reset();
    if (!forms::askLoss(this, u" %1 %2 を復活させますか？"_s.arg(code, name), title)) return;
    cn().execute(u"UPDATE 履歴書テーブル SET 退職日 = NULL, 退職フラグ = 0 WHERE 社員Code = ?"_s, {code});
    forms::tell(this, u"処理が終了しました。"_s, u"処理終了確認"_s, forms::BoxIcon::Information);
    refresh();
}

}  // namespace personnel
