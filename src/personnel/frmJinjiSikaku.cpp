#include "personnel/frmJinjiSikaku.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "forms/global_record.h"
#include "personnel/dependent_rules.h"
#include "widgets/layout.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const QString kShikaku = u"資格・免許"_s;
const QString kHitsuyousei = u"業務必要性"_s;
const QString kSyutokubi = u"取得年月日"_s;

}  // namespace

frmJinjiSikaku::frmJinjiSikaku(forms::House& house, QWidget* parent)
    : PersonRecordForm(u"frmJinjiSikaku"_s, u"資格・免許保有状況"_s, u"資格・免許テーブル"_s,
                       u"CodeKey(資格・免許)"_s, house, parent) {
    makeControls();
    bindFields();
    setGrid({{u"社員Code"_s, u"社員Code"_s, 900},
             {kShikaku, kShikaku, 2400},
             {kHitsuyousei, kHitsuyousei, 1200},
             {kSyutokubi, kSyutokubi, 1400}});
    arrange(u"資格・免許保有状況"_s, arrangeFields(), grid());
    openRecords();
}

void frmJinjiSikaku::makeControls() {
    shikaku_ = make<widgets::CodeCombo>(u"DataCombo1"_s);
    hitsuyousei_ = make<widgets::OptionRow>(u"Frame1"_s, 0, std::array{u"－"_s, u"有"_s, u"無"_s});
    text1_ = make<QLineEdit>(u"Text1"_s);
    text1_->setPlaceholderText(u"入力例： 2000/4/1"_s);
    forms::guarded(this, [this] {
        nameCodes({kShikaku, kHitsuyousei});
        shikaku_->setItems(comboItems(codeChoices(cn(), kShikaku)));
    });
}

void frmJinjiSikaku::bindFields() {
    bind(shikaku_, kShikaku, [this] { return checkShikakuField(); });
    bind(hitsuyousei_, kHitsuyousei);
    bind(text1_, kSyutokubi,
         [this] { return passes(this, checkSyutokubi(text1_->text(), house_.global.syain_seinengappi)); });
    forms::guarded(this, [this] { setEntered(text1_, itemsNotEntered(cn(), {kSyutokubi}).isEmpty()); });
}

QLayout* frmJinjiSikaku::arrangeFields() {
    auto* fields = widgets::fieldGrid();
    addPerson(fields);
    widgets::addField(fields, make<QLabel>(u"lblLabels_0"_s, u"生年月日:"_s),
                      make<QLabel>(u"Label4"_s, house_.global.syain_seinengappi));
    widgets::addField(fields, labelFor(u"lblLabels_1"_s, kShikaku + u':', shikaku_), shikaku_);
    widgets::addField(fields, labelFor(u"lblLabels_2"_s, kHitsuyousei + u':', hitsuyousei_), hitsuyousei_);
    widgets::addField(fields, labelFor(u"lblLabels_3"_s, kSyutokubi + u':', text1_), text1_);
    return fields;
}

QString frmJinjiSikaku::removalQuestion() const {
    return u" %1 %2 を削除しますか？"_s.arg(shikaku_->text(), text1_->text());
}

bool frmJinjiSikaku::checkShikakuField() {
    if (!passes(this, checkShikaku(shikaku_->text()))) return false;
    return !taken(kShikaku, shikaku_->code()) || passes(this, duplicateShikaku());
}

}  // namespace personnel
