#include "personnel/frmJinjiKazoku.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "forms/global_record.h"
#include "personnel/dependent_rules.h"
#include "widgets/layout.h"
#include "widgets/reading_capture.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

struct Options {
    QString column;
    std::array<QString, 3> captions;
};
const std::array<Options, 4> kOptions = {{{u"性別"_s, {u"－"_s, u"男"_s, u"女"_s}},
                                          {u"扶養"_s, {u"－"_s, u"扶養"_s, u"非扶養"_s}},
                                          {u"同居"_s, {u"－"_s, u"同居"_s, u"別居"_s}},
                                          {u"障害"_s, {u"－"_s, u"有"_s, u"無"_s}}}};

}  // namespace

frmJinjiKazoku::frmJinjiKazoku(forms::House& house, QWidget* parent)
    : PersonRecordForm(u"frmJinjiKazoku"_s, u"家族情報"_s, u"家族テーブル"_s, u"CodeKey(続柄)"_s, house,
                       parent) {
    makeControls();
    bindFields();
    setGrid({{u"社員Code"_s, u"社員Code"_s, 900},
             {u"フリガナ"_s, u"フリガナ"_s, 1500},
             {u"氏名"_s, u"氏名"_s, 1500},
             {u"続柄"_s, u"続柄"_s, 1000},
             {u"性別"_s, u"性別"_s, 600},
             {u"生年月日"_s, u"生年月日"_s, 1200},
             {u"扶養"_s, u"扶養"_s, 800},
             {u"同居"_s, u"同居"_s, 700},
             {u"障害"_s, u"障害"_s, 600}});
    arrange(u"家族情報"_s, arrangeFields());
    grid()->setMinimumHeight(widgets::twips(2700));
    column()->insertWidget(1, grid(), 1);
    openRecords();
}

void frmJinjiKazoku::makeControls() {
    shimei_ = make<QLineEdit>(u"txtFields_2"_s);
    furigana_ = make<QLineEdit>(u"txtFields_3"_s);
    auto* capture = new widgets::ReadingCapture(shimei_, furigana_);
    readingForms_ = widgets::makeReadingForms(capture, this);
    zokugara_ = make<widgets::CodeCombo>(u"DataCombo1"_s);
    options_[0] = make<widgets::OptionRow>(u"Frame1_0"_s, 0, kOptions[0].captions);
    seinengappi_ = make<QLineEdit>(u"txtFields_4"_s);
    seinengappi_->setPlaceholderText(u"入力例： 2000/4/1"_s);
    for (int i = 1; i < 4; ++i)
        options_[std::size_t(i)] =
            make<widgets::OptionRow>(u"Frame1_%1"_s.arg(i), i, kOptions[std::size_t(i)].captions);
    forms::guarded(this, [this] {
        nameCodes({u"続柄"_s, u"性別"_s, u"扶養"_s, u"同居"_s, u"障害"_s});
        zokugara_->setItems(comboItems(codeChoices(cn(), u"続柄"_s)));
    });
}

void frmJinjiKazoku::bindFields() {
    const auto text = [this](QLineEdit* edit, const QString& column) {
        bind(edit, column,
             [this, edit, column] { return passes(this, checkKazokuText(column, edit->text())); });
    };
    text(shimei_, u"氏名"_s);
    text(furigana_, u"フリガナ"_s);
    bind(zokugara_, u"続柄"_s, [this] { return checkZokugaraField(); });
    bind(options_[0], kOptions[0].column);
    bind(seinengappi_, u"生年月日"_s, [this] {
        return passes(this, checkKazokuSeinengappi(seinengappi_->text(), house_.global.clock()));
    });
    for (std::size_t i = 1; i < options_.size(); ++i) bind(options_[i], kOptions[i].column);
    forms::guarded(this, [this] {
        const auto without =
            itemsNotEntered(cn(), {u"氏名"_s, u"フリガナ"_s, u"性別"_s, u"生年月日"_s, u"同居"_s, u"障害"_s});
        setEntered(shimei_, !without.contains(u"氏名"_s));
        setEntered(furigana_, !without.contains(u"フリガナ"_s));
        setEntered(seinengappi_, !without.contains(u"生年月日"_s));
        for (std::size_t i = 0; i < options_.size(); ++i)
            setEntered(options_[i], !without.contains(kOptions[i].column));
        readingForms_->setEnabled(isEntered(furigana_));
    });
}

QLayout* frmJinjiKazoku::arrangeFields() {
    auto* fields = widgets::fieldGrid();
    addPerson(fields);
    int label = 0;
    const auto addOne = [&](const QString& caption, QWidget* control) {
        widgets::addField(fields, labelFor(u"lblLabels_%1"_s.arg(label++), caption + u':', control), control);
    };
    addOne(u"氏名"_s, shimei_);
    addOne(u"フリガナ"_s, furigana_);
    widgets::addField(fields, nullptr, readingForms_);
    addOne(u"続柄"_s, zokugara_);
    addOne(kOptions[0].column, options_[0]);
    addOne(u"生年月日"_s, seinengappi_);
    for (std::size_t i = 1; i < options_.size(); ++i) addOne(kOptions[i].column, options_[i]);
    return fields;
}

QList<QWidget*> frmJinjiKazoku::fieldOrder() const {
    QList<QWidget*> order{shimei_, furigana_, readingForms_, zokugara_, options_[0], seinengappi_};
    for (std::size_t i = 1; i < options_.size(); ++i) order << options_[i];
    return order;
}

QString frmJinjiKazoku::removalQuestion() const {
    return u" %1 %2 を削除しますか？"_s.arg(zokugara_->text(), shimei_->text());
}

bool frmJinjiKazoku::checkZokugaraField() {
    if (!passes(this, checkZokugara(zokugara_->text()))) return false;
    return !taken(u"続柄"_s, zokugara_->code()) || passes(this, duplicateZokugara());
}

}  // namespace personnel
