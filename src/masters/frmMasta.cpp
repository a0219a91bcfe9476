#include "masters/frmMasta.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "domain/field_rules.h"
#include "forms/box.h"
#include "forms/field_check.h"
#include "forms/global_record.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace masters {
namespace {

constexpr int kNameBytes = 16;
constexpr int kHighestAge = 99;
const QString kDigits = QStringLiteral("0123456789");

QString titleOf(const MasterKind& kind, store::Connection& cn) {
    return kind.attribute ? captionOf(kind, attributeNames(cn)) : kind.tableName();
}

/// The master whose codes the column `other` holds: 所属大マスタ, 続柄グループマスタ.
QString otherMaster(const MasterKind& kind) {
    return kind.column(kind.other) + QStringLiteral("マスタ");
}

}  // namespace

frmMasta::frmMasta(const MasterKind& kind, forms::House& house, QWidget* parent)
    : CodeForm(kind.referent, kind.screen, titleOf(kind, *house.global.cn_main), house, parent),
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
    bind(code_, kind_.column(kind_.code), [this] { return checkCode(code_, kind_.highest); });
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
        bind(age_, kind_.column(kind_.age),
             [this] { return checkNumber(age_, kHighestAge, kind_.column(kind_.age)); });
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
        return refuseEmpty(caption);
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

bool frmMasta::checkOther() {
    if (!kind_.underOther || !other_->text().isEmpty()) return true;
    const QString caption = kind_.column(kind_.other);
    other_->setFocus(Qt::OtherFocusReason);
    return refuse(caption + QStringLiteral("を選択してください。"), caption + QStringLiteral("の選択"));
}

bool frmMasta::checkDate() {
    const QString caption = kind_.column(kind_.date);
    if (date_->text().isEmpty()) return refuseEmpty(caption);
    return store::parseDate(date_->text()) ||
           refuse(QStringLiteral("日付の入力が正しくありません。･･･") + caption);
}

/// A section of which people hold positions stays where it is: moving it would rewrite their history.
bool frmMasta::checkUpdate() {
    if (!kind_.underOther || state() != State::Editing || typedKey().parent == oldKey().parent) return true;
    if (personnel::codeUsage(cn(), kind_.referent, oldKey()).empty()) return true;
    other_->setFocus(Qt::OtherFocusReason);
    return refuse(
        QStringLiteral("使用中のデータがあるため%1は変更できません。").arg(kind_.column(kind_.other)));
}

personnel::CodeKey frmMasta::typedKey() const {
    return {code_->text(), kind_.underOther ? other_->code() : QString()};
}

QString frmMasta::removalQuestion() const {
    return QStringLiteral(" %1 %2 を削除しますか？").arg(code_->text(), name_->text());
}

}  // namespace masters
