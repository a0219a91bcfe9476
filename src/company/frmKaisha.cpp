#include "company/frmKaisha.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "company/backup.h"
#include "company/profile_fields.h"
#include "forms/box.h"
#include "forms/field_check.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/menu_form.h"
#include "schema/catalog.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

namespace t = schema::tables::会社テーブル;
const ProfileField& item(int index) {
    return kProfileFields[std::size_t(index)];
}

}  // namespace

frmKaisha::frmKaisha(forms::House& house, QWidget* parent)
    : forms::SingleRowForm(u"frmKaisha"_s, u"会社情報"_s, QString::fromUtf16(t::kName), house, parent) {
    for (int i = 0; i < kFields; ++i) {
        auto* edit = txtFields_[std::size_t(i)] = make<QLineEdit>(u"txtFields_%1"_s.arg(i));
        edit->setText(stored(item(i).column).toText());
        const QString widest(item(i).bytes / 2, u'漢');
        edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(widest) + 4 * widgets::kGrid);
        validateOnLeave(edit,
                        [this, i] {
                            bool passed = false;
                            return forms::guarded(this, [&] { passed = checkField(i); }) && passed;
                        },
                        {cancel()});
    }
    for (const int number : {t::郵便番号, t::tel, t::fax})
        widgets::typeDirectly(txtFields_[std::size_t(number)]);
    arrange({}, arrangeFields());
    setTabOrder(txtFields_.back(), copies_);
    setTabOrder(copies_, findChild<QWidget*>(u"Command1"_s));
    txtFields_.front()->setFocus();
}

QLayout* frmKaisha::arrangeFields() {
    auto* fields = widgets::fieldGrid();
    for (int i = 0; i < kFields; ++i) {
        auto* edit = txtFields_[std::size_t(i)];
        if (i == t::自由マスタ1) {
            auto* heading = make<QLabel>(u"Label1"_s, u"自由ﾏｽﾀ名を設定する欄"_s);
            widgets::setTone(heading, widgets::Tone::Heading);
            fields->addWidget(heading, fields->rowCount(), 0, 1, 2);
        }
        widgets::addField(fields, labelFor(u"lblLabels_%1"_s.arg(i), item(i).column + u':', edit), edit);
    }
    const auto& global = house_.global;
    copies_ = make<QCheckBox>(u"Check1"_s, u"大きな変更の前に、自動でバックアップする(&A)"_s);
    copies_->setChecked(ownCopiesWanted(global.places(), global.panels.folder));
    fields->addWidget(copies_, fields->rowCount(), 0, 1, 2);
    return fields;
}

void frmKaisha::place() {
    forms::placeAsMenu(this);
}

bool frmKaisha::masterInUse(int number) {
    return !cn().query(u"select Code from 自由マスタ%1"_s.arg(number)).isEmpty();
}

bool frmKaisha::checkField(int index) {
    auto* edit = txtFields_[std::size_t(index)];
    if (!forms::check_field(this, edit->text(), item(index).bytes, true, item(index).label)) return false;
    if (index == t::会社名 && edit->text() == forms::kNoCompanyPrompt) {
        // The status bar shows it while no company is open; that is how the program tells the two apart.
        forms::tell(this, u"「%1」は会社名に使用できません。 ･･･会社名"_s.arg(forms::kNoCompanyPrompt),
                    u"入力エラー"_s, forms::BoxIcon::Critical);
        return false;
    }
    if (index < t::自由マスタ1 || !(edit->text().isEmpty() || edit->text() == kUnusedName)) return true;
    if (masterInUse(index - t::自由マスタ1 + 1)) {
        forms::tell(this, u"使用中のデータがあるため未設定は許されません。"_s, u"入力エラー"_s,
                    forms::BoxIcon::Critical);
        return false;
    }
    edit->setText(kUnusedName);
    return true;
}

bool frmKaisha::mayUpdate() {
    for (int i = 0; i < kFields; ++i) {
        if (checkField(i)) continue;
        txtFields_[std::size_t(i)]->setFocus();
        return false;
    }
    return true;
}

void frmKaisha::fill(store::RowEdit& row) {
    for (int i = 0; i < kFields; ++i) row.set(item(i).column, txtFields_[std::size_t(i)]->text());
}

void frmKaisha::updated() {
    auto& global = house_.global;
    const QString name = txtFields_[t::会社名]->text();
    wantOwnCopies(global.places(), global.panels.folder, copies_->isChecked());
    global.setCompanyPanel(name.isEmpty() ? global.panels.folder : name);
}

}  // namespace company
