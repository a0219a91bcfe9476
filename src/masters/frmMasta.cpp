#include "masters/frmMasta.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "domain/field_rules.h"
#include "forms/box.h"
#include "forms/field_check.h"
#include "forms/global_record.h"
#include "forms/own_copy.h"
#include "personnel/ui_code_change.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace masters {
namespace {

constexpr int kNameBytes = 16;
constexpr int kHighestAge = 99;
const QString kDigits = QStringLiteral("0123456789");
const QString kEmpty = QStringLiteral("未入力は許されません。･･･");

/// A number of digits alone, from 1 to `highest`.
std::optional<int> numberUpTo(const QString& text, int highest) {
    bool ok = false;
    const int number = text.toInt(&ok);
    if (!ok || number < 1 || number > highest || text.startsWith(u'+')) return {};
    return number;
}

QString rangeText(int highest, const QString& caption) {
    return QStringLiteral("1～%1を入力してください。･･･").arg(highest) + caption;
}

QString titleOf(const MasterKind& kind, store::Connection& cn) {
    return kind.attribute ? captionOf(kind, attributeNames(cn)) : kind.tableName();
}

/// The master whose codes the column `other` holds: 所属大マスタ, 続柄グループマスタ.
QString otherMaster(const MasterKind& kind) {
    return kind.column(kind.other) + QStringLiteral("マスタ");
}

}  // namespace

frmMasta::frmMasta(const MasterKind& kind, forms::House& house, QWidget* parent)
    : RecordForm(kind.screen, titleOf(kind, *house.global.cn_main), house, parent),
      kind_(kind),
      caption_(captionOf(kind, attributeNames(*house.global.cn_main))) {
    auto* fields = widgets::fieldGrid();
    bindFields(fields);
    addGrid();
    arrange(windowTitle(), fields, grid());
    openRecords();
}

QLineEdit* frmMasta::addText(QGridLayout* fields, int number, const QString& caption, const QString& hint) {
    auto* edit = make<QLineEdit>(QStringLiteral("txtFields_%1").arg(number));
    auto* label =
        labelFor(QStringLiteral("lblLabels_%1").arg(number), widgets::asCaption(caption) + u':', edit);
    widgets::addField(fields, label, edit);
    if (!hint.isEmpty()) {
        auto* note = new QLabel(hint, this);
        widgets::setTone(note, widgets::Tone::Muted);
        fields->addWidget(note, fields->rowCount(), 1);
    }
    return edit;
}

void frmMasta::addOther(QGridLayout* fields) {
    other_ = make<widgets::CodeCombo>(QStringLiteral("DataCombo1"));
    const QString caption = kind_.column(kind_.other);
    widgets::addField(fields, labelFor(QStringLiteral("lblLabels_3"), caption + u':', other_), other_);
    bind(other_, caption, [this] { return checkOther(); });
}

void frmMasta::bindFields(QGridLayout* fields) {
    if (kind_.underOther) addOther(fields);
    code_ = addText(fields, 0, kind_.column(kind_.code), QStringLiteral("数字で1～%1").arg(kind_.highest));
    widgets::admitOnly(code_, kDigits);
    bind(code_, kind_.column(kind_.code), [this] { return checkCode(); });
    name_ = addText(fields, 1, caption_);
    bind(name_, kind_.nameColumn(), [this] {
        return forms::check_field(this, name_->text(), kNameBytes, false, QStringLiteral("･･･") + caption_);
    });
    if (kind_.date >= 0) {
        date_ = addText(fields, 2, kind_.column(kind_.date), QStringLiteral("入力例： 2000/4/1"));
        bind(date_, kind_.column(kind_.date), [this] { return checkDate(); });
    }
    if (kind_.age >= 0) {
        age_ = addText(fields, 2, kind_.column(kind_.age), QStringLiteral("数字で1～%1").arg(kHighestAge));
        widgets::admitOnly(age_, kDigits);
        bind(age_, kind_.column(kind_.age), [this] { return checkAge(); });
    }
    if (kind_.other >= 0 && !kind_.underOther) addOther(fields);
}

void frmMasta::addGrid() {
    constexpr int kCodeWidth = 750;
    constexpr int kNameWidth = 1875;
    if (kind_.underOther) shown_.push_back(kind_.other);
    shown_.insert(shown_.end(), {kind_.code, kind_.name});
    for (const int position : {kind_.date, kind_.age, kind_.underOther ? -1 : kind_.other})
        if (position >= 0) shown_.push_back(position);
    std::vector<GridColumn> columns;
    for (const int position : shown_) {
        const QString column = kind_.column(position);
        columns.push_back({position == kind_.name ? caption_ : column, column,
                           position == kind_.code ? kCodeWidth : kNameWidth});
    }
    setGrid(std::move(columns))->setMinimumHeight(widgets::twips(2355));
    grid()->setPlaceholder(QStringLiteral("まだ登録がありません。［追加］で登録してください。"));
}

store::TableQuery frmMasta::query() const {
    const QString order = kind_.underOther
                              ? QStringLiteral("CodeKey(%1),CodeKey(Code)").arg(kind_.column(kind_.other))
                              : QStringLiteral("CodeKey(Code)");
    return {kind_.tableName(), {}, {}, order};
}

QStringList frmMasta::keyColumns() const {
    QStringList key{kind_.column(kind_.code)};
    if (kind_.underOther) key << kind_.column(kind_.other);
    return key;
}

void frmMasta::rowsRead() {
    if (!other_) return;
    const auto rows = cn().query(QStringLiteral("select Code,%1 from %2 Order by CodeKey(Code)")
                                     .arg(kind_.column(kind_.other), otherMaster(kind_)));
    std::vector<widgets::CodeList::Item> items;
    otherNames_.clear();
    for (int row = 0; row < rows.recordCount(); ++row) {
        items.push_back({rows.valueAt(row, 0).toText(), rows.valueAt(row, 1).toText()});
        otherNames_.insert(items.back().code, items.back().text);
    }
    other_->setItems(items);
}

QString frmMasta::gridText(int row, int column) const {
    const int position = shown_.at(static_cast<std::size_t>(column));
    const store::Value& value = rows().valueAt(row, position);
    if (position == kind_.other) return otherNames_.value(value.toText());
    if (position == kind_.date && !value.isNull())
        return value.toDate().toString(QStringLiteral("yyyy/MM/dd"));
    return value.toText();
}

// ---- checks

bool frmMasta::checkRequired() {
    const auto empty = [&](QLineEdit* edit, const QString& caption) {
        edit->setFocus(Qt::OtherFocusReason);
        return refuse(kEmpty + caption);
    };
    if (other_ && kind_.underOther && other_->text().isEmpty()) return checkOther();
    if (code_->text().isEmpty() && !hasRows()) {
        code_->setFocus(Qt::OtherFocusReason);
        return false;
    }
    if (code_->text().isEmpty()) return empty(code_, kind_.column(kind_.code));
    if (name_->text().isEmpty()) return empty(name_, caption_);
    return true;
}

bool frmMasta::checkCode() {
    const QString caption = kind_.column(kind_.code);
    if (code_->text().isEmpty()) return !hasRows() || refuse(kEmpty + caption);
    const auto number = numberUpTo(code_->text(), kind_.highest);
    if (!number) return refuse(rangeText(kind_.highest, caption));
    // A longer code from elsewhere (0001) that is left as it is must not be renamed by the way.
    const bool kept = state() == State::Editing && code_->text().size() > 1 && typedKey() == oldKey();
    if (!kept) code_->setText(paddedCode(*number));
    const bool same = state() == State::Editing && typedKey() == oldKey();
    return same || !isTaken(code_->text()) || refuse(caption + QStringLiteral("が重複しています。"));
}

bool frmMasta::isTaken(const QString& code) {
    QString sql = QStringLiteral("select 1 from %1 where Code = ?").arg(kind_.tableName());
    store::Binds binds{code};
    if (kind_.underOther) {
        sql += QStringLiteral(" and %1 = ?").arg(kind_.column(kind_.other));
        binds.push_back(other_->code());
    }
    return !cn().query(sql, binds).isEmpty();
}

bool frmMasta::checkOther() {
    if (!kind_.underOther || !other_->text().isEmpty()) return true;
    const QString caption = kind_.column(kind_.other);
    other_->setFocus(Qt::OtherFocusReason);
    return refuse(caption + QStringLiteral("を選択してください。"), caption + QStringLiteral("の選択"));
}

bool frmMasta::checkDate() {
    const QString caption = kind_.column(kind_.date);
    if (date_->text().isEmpty()) return refuse(kEmpty + caption);
    return store::parseDate(date_->text()) ||
           refuse(QStringLiteral("日付の入力が正しくありません。･･･") + caption);
}

bool frmMasta::checkAge() {
    const QString caption = kind_.column(kind_.age);
    if (age_->text().isEmpty()) return refuse(kEmpty + caption);
    return numberUpTo(age_->text(), kHighestAge) || refuse(rangeText(kHighestAge, caption));
}

/// A section of which people hold positions stays where it is: moving it would rewrite their history.
bool frmMasta::checkUpdate() {
    if (!kind_.underOther || state() != State::Editing || typedKey().parent == oldKey().parent) return true;
    if (personnel::codeUsage(cn(), kind_.referent, oldKey()).empty()) return true;
    other_->setFocus(Qt::OtherFocusReason);
    return refuse(
        QStringLiteral("使用中のデータがあるため%1は変更できません。").arg(kind_.column(kind_.other)));
}

// ---- codes that other tables hold

personnel::CodeKey frmMasta::oldKey() const {
    return {oldText(kind_.column(kind_.code)),
            kind_.underOther ? oldText(kind_.column(kind_.other)) : QString()};
}

personnel::CodeKey frmMasta::typedKey() const {
    return {code_->text(), kind_.underOther ? other_->code() : QString()};
}

personnel::CompanyDatabases frmMasta::company() {
    house_.global.kaisha_folder = house_.global.panels.folder;
    return {cn(), house_.global.dataDir(), house_.global.kaisha_folder};
}

void frmMasta::updateBegins(bool renames) {
    if (renames) {
        forms::keepOwnCopy(this, house_, QStringLiteral("コード変更の前"));
        personnel::announceRename(company(), kind_.referent, oldKey(), typedKey());
    } else if (state() == State::Adding)
        personnel::settleChange(company());
}

void frmMasta::removalBegins() {
    forms::keepOwnCopy(this, house_, QStringLiteral("データの削除の前"));
    personnel::announceRemoval(company(), kind_.referent, oldKey());
}

void frmMasta::writeFailed() {
    personnel::tellCutOffChange(company(), this);
}

void frmMasta::keyRenamed() {
    personnel::renameCode(company(), kind_.referent, oldKey(), typedKey());
}

bool frmMasta::mayRemove() {
    const auto uses = personnel::codeUsage(cn(), kind_.referent, oldKey());
    return uses.empty() ||
           refuse(uses.front().label + QStringLiteral("に使用中のデータがあるため削除できません。"),
                  QStringLiteral("削除制限"));
}

QString frmMasta::removalQuestion() const {
    return QStringLiteral(" %1 %2 を削除しますか？").arg(code_->text(), name_->text());
}

void frmMasta::rowGoes() {
    personnel::removeCode(company(), kind_.referent, oldKey());
}

}  // namespace masters
