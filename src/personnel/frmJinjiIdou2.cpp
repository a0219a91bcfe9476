#include "personnel/frmJinjiIdou2.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>

#include "forms/box.h"
#include "forms/global_record.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const std::array<QString, 7> kItems = {u"異動事由"_s, u"社員区分"_s, u"所属大"_s, u"所属小"_s,
                                       u"役職"_s,     u"職種"_s,     u"コース"_s};
enum Field { Idoubi, Comment, Tokyu };
enum Column { Date, InForce, FirstItem };
const QString kInputError = u"入力エラー"_s;
const QString kReminder =
    u"「新しく異動履歴を追加したとき」「異動日を過去の日付に変更したとき」は、これらの項目について今一度必ず確認してください。"_s;

}  // namespace

frmJinjiIdou2::frmJinjiIdou2(forms::House& house, QWidget* parent)
    : PersonRecordForm(u"frmJinjiIdou2"_s, u"異動履歴"_s, u"異動テーブル"_s, u"異動日 DESC"_s, house,
                       parent) {
    forms::guarded(this, [this] { items_ = EntryItems::read(cn()); });
    for (std::size_t i = 0; i < masters_.size(); ++i)
        forms::guarded(this, [&] { masters_[i] = codeChoices(cn(), kItems[i]); });
    makeControls();
    bindFields();
    setGrid({{u"異動日"_s, {}, 1200},
             {u"現在"_s, {}, 600},
             {kItems[SyozokuDai], {}, 1800},
             {kItems[Yakusyoku], {}, 1500},
             {u"等級"_s, {}, 700},
             {kItems[Jiyuu], {}, 1500}});
    arrange(u"異動履歴"_s, arrangeFields(), grid());
    auto* reminder = make<QLabel>(u"Label6"_s, kReminder);
    reminder->setWordWrap(true);
    widgets::setTone(reminder, widgets::Tone::Muted);
    column()->insertWidget(1, reminder);
    openRecords();
}

void frmJinjiIdou2::makeControls() {
    for (std::size_t i = 0; i < txtFields_.size(); ++i)
        txtFields_[i] = make<QLineEdit>(u"txtFields_%1"_s.arg(i));
    txtFields_[Idoubi]->setPlaceholderText(u"入力例： 2000/4/1"_s);
    txtFields_[Tokyu]->setPlaceholderText(u"1～20"_s);
    widgets::admitOnly(txtFields_[Tokyu], u"0123456789"_s);
    for (std::size_t i = 0; i < kCombos; ++i) {
        auto* combo = combo_[i] = make<widgets::CodeCombo>(u"DataCombo1_%1"_s.arg(i));
        connect(combo, &widgets::CodeCombo::entered, this,
                [this, i] { forms::guarded(this, [this, i] { enterCombo(i); }); });
    }
    connect(combo_[SyozokuDai], &widgets::CodeCombo::chosen, this,
            [this] { forms::guarded(this, [this] { dropSyozokuSyou(); }); });
    for (std::size_t i = 0; i < kept_.size(); ++i) kept_[i] = make<QLabel>(u"Label3_%1"_s.arg(i));
}

void frmJinjiIdou2::bindFields() {
    bind(txtFields_[Idoubi], u"異動日"_s, [this] { return checkIdoubiField(); });
    for (std::size_t i = 0; i < kCombos; ++i) bind(combo_[i], kItems[i], [this, i] { return checkCombo(i); });
    bind(txtFields_[Tokyu], u"等級"_s, [this] { return checkTokyuField(); });
    bind(txtFields_[Comment], u"コメント"_s,
         [this] { return passes(this, checkComment(txtFields_[Comment]->text())); });
    setEntered(combo_[SyozokuSyou], items_.entered(u"所属小"_s));
    setEntered(combo_[Course], items_.entered(u"コース"_s));
    setEntered(txtFields_[Comment], items_.entered(u"コメント"_s));
    setEntered(txtFields_[Tokyu], items_.entered(u"等級"_s));
}

QLayout* frmJinjiIdou2::arrangeFields() {
    auto* fields = widgets::fieldGrid();
    addPerson(fields);
    const auto addEdit = [&](Field field, const QString& caption) {
        widgets::addField(fields, labelFor(u"lblLabels_%1"_s.arg(field), caption, txtFields_[field]),
                          txtFields_[field]);
    };
    addEdit(Idoubi, u"異動日:"_s);
    for (std::size_t i = 0; i < kCombos; ++i)
        widgets::addField(fields, labelFor(u"lblCombo_%1"_s.arg(i), kItems[i] + u':', combo_[i]), combo_[i]);
    addEdit(Tokyu, u"等級:"_s);
    widgets::addField(fields, make<QLabel>(u"Label4_0"_s, u"号俸:"_s), kept_[0]);
    widgets::addField(fields, make<QLabel>(u"Label4_1"_s, u"評語:"_s), kept_[1]);
    addEdit(Comment, u"コメント:"_s);
    return fields;
}

// ---- rows

void frmJinjiIdou2::rowsRead() {
    const QDate today = house_.global.clock();
    inForce_ = -1;
    // The newest stand first: the first row that has come into force is the one.
    for (int row = 0; row < rows().recordCount() && inForce_ < 0; ++row) {
        const store::Value& date = rows().valueAt(row, u"異動日"_s);
        if (!date.isNull() && date.toDate() <= today) inForce_ = row;
    }
}

QString frmJinjiIdou2::nameOf(std::size_t index, const QString& code, const QString& parent) const {
    const auto& master = masters_[index];
    const auto found = std::find_if(master.begin(), master.end(), [&](const CodeChoice& choice) {
        return choice.code == code && (index != SyozokuSyou || choice.parent == parent);
    });
    return found == master.end() ? QString() : found->name;
}

QString frmJinjiIdou2::gridText(int row, int column) const {
    const auto text = [&](const QString& name) { return rows().valueAt(row, name).toText(); };
    switch (column) {
        case 0:
            return text(u"異動日"_s);
        case 1:
            return row == inForce_ ? u"●"_s : QString();
        case 2: {
            const QString dai = text(kItems[SyozokuDai]);
            const QString syou = nameOf(SyozokuSyou, text(kItems[SyozokuSyou]), dai);
            return nameOf(SyozokuDai, dai, {}) + (syou.isEmpty() ? QString() : u'　' + syou);
        }
        case 3:
            return nameOf(Yakusyoku, text(kItems[Yakusyoku]), {});
        case 4:
            return text(u"等級"_s);
        default:
            return nameOf(Jiyuu, text(kItems[Jiyuu]), {});
    }
}

void frmJinjiIdou2::rowShown() {
    showWholeLists();
    const bool shown = row() >= 0;
    kept_[0]->setText(shown ? this->shown(u"号俸"_s).toText() : QString());
    kept_[1]->setText(shown ? this->shown(u"評語"_s).toText() : QString());
}

void frmJinjiIdou2::stateChanged() {
    if (state() != State::Adding) return;
    for (QLabel* label : kept_) label->clear();
}

/// A 所属小 of the former 所属大 does not survive, not even where the company does not enter it any more.
void frmJinjiIdou2::rowWritten(store::RowEdit& row) {
    PersonRecordForm::rowWritten(row);
    if (combo_[SyozokuSyou]->code().isEmpty()) row.set(kItems[SyozokuSyou], store::Value());
}

void frmJinjiIdou2::showWholeLists() {
    const QString dai = combo_[SyozokuDai]->code();
    for (std::size_t i = 0; i < kCombos; ++i) {
        std::vector<CodeChoice> choices = masters_[i];
        // A 所属小 is named under its 所属大 only.
        if (i == SyozokuSyou) std::erase_if(choices, [&](const CodeChoice& c) { return c.parent != dai; });
        combo_[i]->setItems(comboItems(choices));
    }
}

QString frmJinjiIdou2::removalQuestion() const {
    return u" %1 %2 を削除しますか？"_s.arg(txtFields_[Idoubi]->text(), combo_[Jiyuu]->text());
}

// ---- what may be entered

QDate frmJinjiIdou2::enteredDate() const {
    return store::parseDate(txtFields_[Idoubi]->text()).value_or(QDate());
}

bool frmJinjiIdou2::checkIdoubiField() {
    const QDate joined = store::parseDate(house_.global.syain_nyuusyabi).value_or(QDate());
    if (!passes(this, checkIdoubi(txtFields_[Idoubi]->text(), joined))) return false;
    return !taken(u"異動日"_s, enteredDate()) || passes(this, duplicateIdoubi());
}

bool frmJinjiIdou2::checkTokyuField() {
    if (!passes(this, checkTokyu(txtFields_[Tokyu]->text()))) return false;
    txtFields_[Tokyu]->setText(tokyuText(txtFields_[Tokyu]->text()));
    return true;
}

bool frmJinjiIdou2::listHasRows(std::size_t index) {
    if (index == SyozokuSyou)
        return !codeChoicesAt(cn(), kItems[index], enteredDate(), combo_[SyozokuDai]->code()).empty();
    return !masters_[index].empty();
}

bool frmJinjiIdou2::checkCombo(std::size_t index) {
    return passes(this,
                  checkTransferChoice(items_, kItems[index], combo_[index]->text(), listHasRows(index)));
}

// ---- what is offered

void frmJinjiIdou2::enterCombo(std::size_t index) {
    if (index == Jiyuu) return;
    if (!passes(this, checkIdoubi(txtFields_[Idoubi]->text(), {}))) {
        txtFields_[Idoubi]->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (index == SyozokuSyou) {
        house_.global.syozoku_dai_code = combo_[SyozokuDai]->code();
        if (house_.global.syozoku_dai_code.isEmpty()) {
            forms::tell(this, u"先に所属大を選択してください。"_s, u"所属小選択エラー"_s);
            combo_[SyozokuDai]->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
    if (index == Course && masters_[Course].empty()) {
        forms::tell(this, u"コースマスタが未設定です。"_s, kInputError);
        done(Rejected);
        return;
    }
    if (!offer(index)) sendBackToDate(u"この異動日以前に設定された%1はありません。"_s.arg(kItems[index]));
}

bool frmJinjiIdou2::offer(std::size_t index) {
    const auto choices = codeChoicesAt(cn(), kItems[index], enteredDate(),
                                       index == SyozokuSyou ? combo_[SyozokuDai]->code() : QString());
    combo_[index]->setItems(comboItems(choices));
    return !choices.empty();
}

void frmJinjiIdou2::sendBackToDate(const QString& text) {
    forms::tell(this, text, kInputError);
    txtFields_[Idoubi]->setFocus(Qt::OtherFocusReason);
}

void frmJinjiIdou2::dropSyozokuSyou() {
    combo_[SyozokuSyou]->setCode({});
    offer(SyozokuSyou);
}

}  // namespace personnel
