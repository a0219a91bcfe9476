#include <QCheckBox>
#include <QLineEdit>
#include <QVBoxLayout>

#include "forms/record_form.h"
#include "support/house_screens.h"

// What a record form does with its fields whatever the table; the masters and the personnel screens stand on
// it.
namespace forms {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

/// Ages and their coefficients, or criteria and whether they are shown.
struct SmallForm : RecordForm {
    SmallForm(House& house, bool numbers)
        : RecordForm(u"frmSmall"_s, u"小"_s, house, nullptr), numbers_(numbers) {
        auto* key = make<QLineEdit>(u"txtFields_0"_s);
        bind(key, keyColumns().first());
        auto* fields = new QVBoxLayout;
        fields->addWidget(key);
        if (numbers) {
            auto* number = make<QLineEdit>(u"txtFields_1"_s);
            bind(number, u"係数"_s, {.label = u"係数"_s, .most = 99999, .decimals = 3});
            fields->addWidget(number);
        } else {
            auto* box = make<QCheckBox>(u"Check1"_s);
            bind(box, u"表示"_s);
            fields->addWidget(box);
        }
        arrange(u"小"_s, fields);
        openRecords();
    }
    store::TableQuery query() const override {
        return {numbers_ ? u"S係数年齢2"_s : u"S配分区分"_s, {}, {}, u"ID"_s};
    }
    QStringList keyColumns() const override { return {numbers_ ? u"年齢"_s : u"Code"_s}; }
    using RecordForm::rereadRecords;
    bool numbers_;
};

struct RecordForms : OverMain {
    RecordForms() { global_.cn_main = company_.open(); }
    QStringList read(const QString& sql) { return textRows(*global_.cn_main, sql); }
};

TEST_F(RecordForms, BindNumbersAndCheckBoxes) {
    global_.cn_main->execute(u"insert into S係数年齢2(年齢,係数) values('20',12345.0625),('21',1)"_s);
    global_.cn_main->execute(u"insert into S配分区分(Code,表示) values('01',null),('02',-1)"_s);
    SmallForm numbers(house_, true);
    driver_.run(numbers, [&](QDialog& form) {
        EXPECT_EQ(text(form, u"txtFields_1"_s), u"12,345.0625"_s);
        click(form, u"cmdEdit"_s);
        type(form, u"txtFields_0"_s, u"22"_s, Qt::Key_Tab);
        numbers.rereadRecords();   // what is being edited stays
        press(form, Qt::Key_Tab);  // more digits than the rule takes: untouched, it may stay
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(read(u"select 年齢,係数 from S係数年齢2"_s), (QStringList{u"22|12345.0625"_s, u"21|1"_s}));
        click(form, u"cmdEdit"_s);
        driver_.expectBox(u"小数点以下は3桁までです。･･･係数"_s, u"入力エラー"_s);
        type(form, u"txtFields_1"_s, u"1.0625"_s, Qt::Key_Tab);
        EXPECT_EQ(focused(form), u"txtFields_1"_s);
        type(form, u"txtFields_1"_s, u"12,345.5"_s, Qt::Key_Tab);
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(text(form, u"txtFields_1"_s), u"12,345.5"_s);
        form.reject();
    });
    EXPECT_EQ(read(u"select 年齢,係数 from S係数年齢2"_s), (QStringList{u"22|12345.5"_s, u"21|1"_s}));
    SmallForm flags(house_, false);
    driver_.run(flags, [&](QDialog& form) {
        const auto shown = [&] { return checked(form, u"Check1"_s); };
        EXPECT_FALSE(shown() || enabled(form, u"Check1"_s));
        click(form, u"cmdEdit"_s);
        type(form, u"txtFields_0"_s, u"03"_s, Qt::Key_Tab);
        click(form, u"cmdUpdate"_s);
        click(form, u"cmdNext"_s);
        EXPECT_TRUE(shown());
        click(form, u"cmdEdit"_s);
        click(form, u"Check1"_s);
        click(form, u"cmdUpdate"_s);
        click(form, u"cmdAdd"_s);
        EXPECT_FALSE(shown());
        type(form, u"txtFields_0"_s, u"04"_s);
        click(form, u"Check1"_s);
        click(form, u"cmdUpdate"_s);
        form.reject();
    });
    // No flag stays none where nobody touched it.
    EXPECT_EQ(read(u"select Code,表示 from S配分区分"_s),
              (QStringList{u"03|-"_s, u"02|False"_s, u"04|True"_s}));
}

}  // namespace
}  // namespace forms
