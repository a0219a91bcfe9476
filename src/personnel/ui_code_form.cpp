#include "personnel/ui_code_form.h"

#include <QLineEdit>

#include "forms/global_record.h"
#include "forms/own_copy.h"
#include "personnel/ui_code_change.h"
#include "schema/catalog.h"

namespace personnel {
namespace {

/// A number of digits alone, from 1 to `highest`.
std::optional<int> numberUpTo(const QString& text, int highest) {
    bool ok = false;
    const int number = text.toInt(&ok);
    if (!ok || number < 1 || number > highest || text.startsWith(u'+')) return {};
    return number;
}

/// "5" as it is stored: two digits or more.
QString paddedCode(int code) {
    return QStringLiteral("%1").arg(code, 2, 10, QChar(u'0'));
}

}  // namespace

CodeForm::CodeForm(Referent referent, const QString& name, const QString& caption, forms::House& house,
                   QWidget* parent)
    : RecordForm(name, caption, house, parent), entry_(domain::entryOf(referent)) {}

QStringList CodeForm::keyColumns() const {
    const auto column = [this](int position) {
        return entry_.table->columns[static_cast<std::size_t>(position)].name;
    };
    QStringList key{column(entry_.column)};
    if (entry_.parentColumn >= 0) key << column(entry_.parentColumn);
    return key;
}

CodeKey CodeForm::oldKey() const {
    const QStringList columns = keyColumns();
    return {oldText(columns[0]), columns.size() > 1 ? oldText(columns[1]) : QString()};
}

// ---- checks

bool CodeForm::refuseEmpty(const QString& caption) {
    return refuse(QStringLiteral("未入力は許されません。･･･") + caption);
}

bool CodeForm::checkNumber(QLineEdit* edit, int highest, const QString& caption) {
    if (edit->text().isEmpty()) return refuseEmpty(caption);
    return numberUpTo(edit->text(), highest) ||
           refuse(QStringLiteral("1～%1を入力してください。･･･").arg(highest) + caption);
}

bool CodeForm::checkCode(QLineEdit* edit, int highest) {
    const QString caption = keyColumns().first();
    if (edit->text().isEmpty() && !hasRows()) return true;
    if (!checkNumber(edit, highest, caption)) return false;
    // A longer code from elsewhere (0001) that is left as it is must not be renamed by the way.
    const bool kept = state() == State::Editing && edit->text().size() > 1 && typedKey() == oldKey();
    if (!kept) edit->setText(paddedCode(*numberUpTo(edit->text(), highest)));
    const bool same = state() == State::Editing && typedKey() == oldKey();
    return same || !isTaken() || refuse(caption + QStringLiteral("が重複しています。"));
}

bool CodeForm::isTaken() const {
    return entryStands(*house_.global.cn_main, entry_.refersTo, typedKey());
}

// ---- codes that other tables hold

CompanyDatabases CodeForm::company() {
    house_.global.kaisha_folder = house_.global.panels.folder;
    return {cn(), house_.global.dataDir(), house_.global.kaisha_folder};
}

void CodeForm::updateBegins(bool renames) {
    if (renames) {
        forms::keepOwnCopy(this, house_, QStringLiteral("コード変更の前"));
        announceRename(company(), entry_.refersTo, oldKey(), typedKey());
    } else if (state() == State::Adding)
        settleChange(company());
}

void CodeForm::removalBegins() {
    forms::keepOwnCopy(this, house_, QStringLiteral("データの削除の前"));
    announceRemoval(company(), entry_.refersTo, oldKey());
}

void CodeForm::writeFailed() {
    tellCutOffChange(company(), this);
}

void CodeForm::keyRenamed() {
    renameCode(company(), entry_.refersTo, oldKey(), typedKey());
}

bool CodeForm::mayRemove() {
    const auto uses = codeUsage(cn(), entry_.refersTo, oldKey());
    return uses.empty() ||
           refuse(uses.front().label + QStringLiteral("に使用中のデータがあるため削除できません。"),
                  QStringLiteral("削除制限"));
}

void CodeForm::rowGoes() {
    removeCode(company(), entry_.refersTo, oldKey());
}

}  // namespace personnel
