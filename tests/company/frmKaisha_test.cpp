#include "company/frmKaisha.h"

#include "company/backup.h"
#include "support/house_screens.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

TEST_F(OverMain, TheCompanyGetsItsNameAndTheNamesOfItsAttributes) {
    global_.cn_main = company_.open();
    global_.setFolderPanel(company_.company());
    auto& cn = *global_.cn_main;
    cn.execute(u"update 会社テーブル set 自由マスタ1 = '組合', 自由マスタ2 = '勤務地'"_s);
    cn.execute(u"insert into 自由マスタ1(Code,自由1) values('01','加入')"_s);
    const QString update = u"内容を変更します。\nよろしいですか。"_s;
    frmKaisha screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        EXPECT_EQ(form.pos(), main_.pos() + QPoint(3, 40));
        const struct {
            int field;
            QString typed, box, title;
        } refused[] = {
            {0, u"x"_s.repeated(31), u"項目の長さ(31)が制限(30)を越えています。 ･･･会社名"_s,
             u"入力のエラー"_s},
            {0, forms::kNoCompanyPrompt,
             u"「処理する会社を指定してください」は会社名に使用できません。 ･･･会社名"_s, u"入力エラー"_s},
            {2, u"a'"_s, u"項目中に ' を含むことはできません。 ･･･所在地１"_s, u"入力のエラー"_s},
            {7, {}, u"使用中のデータがあるため未設定は許されません。"_s, u"入力エラー"_s},
            {7, u"未設定"_s, u"使用中のデータがあるため未設定は許されません。"_s, u"入力エラー"_s}};
        for (const auto& [field, typed, box, title] : refused) {
            driver_.expectBox(box, title, forms::BoxAnswer::Ok, forms::BoxIcon::Critical);
            type(form, u"txtFields_%1"_s.arg(field), typed, Qt::Key_Tab);
            EXPECT_EQ(focused(form), u"txtFields_%1"_s.arg(field));
            type(form, u"txtFields_%1"_s.arg(field), field == 7 ? u"労働組合"_s : u"甲乙"_s, Qt::Key_Tab);
        }
        type(form, u"txtFields_6"_s, u"x"_s.repeated(30), Qt::Key_Tab);
        type(form, u"txtFields_8"_s, {}, Qt::Key_Tab);
        EXPECT_EQ(text(form, u"txtFields_8"_s), u"未設定"_s);
        driver_.expectBox(update, u"更新の確認"_s, forms::BoxAnswer::No);
        click(form, u"Command1"_s);
        EXPECT_TRUE(checked(form, u"Check1"_s));
        click(form, u"Check1"_s);
        driver_.expectBox(update, u"更新の確認"_s, forms::BoxAnswer::Yes);
        click(form, u"Command1"_s);
    });
    EXPECT_FALSE(keepCopy(global_.places(), u"甲社"_s, u"取込の前"_s)) << "not wanted any more";
    EXPECT_EQ(global_.panels.company, u"甲乙"_s);
    const auto row = cn.query(u"select 会社名,所在地１,代表者名,自由マスタ1,自由マスタ2 from 会社テーブル"_s);
    QStringList stored;
    for (int i = 0; i < row.fieldCount(); ++i) stored << row.value(i).toText();
    EXPECT_EQ(stored.join(u' '), u"甲乙 甲乙 "_s + u"x"_s.repeated(30) + u" 労働組合 未設定"_s);
    frmKaisha again(house_, &main_);
    driver_.run(again, [&](QDialog& form) {
        type(form, u"txtFields_0"_s, {}, Qt::Key_Tab);
        driver_.expectBox(update, u"更新の確認"_s, forms::BoxAnswer::Yes);
        click(form, u"Command1"_s);
    });
    EXPECT_EQ(global_.panels.company, u"甲社"_s);
    frmKaisha untouched(house_, &main_);
    driver_.run(untouched, [&](QDialog& form) { press(form, Qt::Key_Escape); });
}

}  // namespace
}  // namespace company
