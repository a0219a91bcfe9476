#include "personnel/ui_person_record.h"

#include <QGridLayout>
#include <QLabel>

#include "forms/box.h"
#include "forms/global_record.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace personnel {

using namespace Qt::StringLiterals;

bool passes(QWidget* form, const Finding& finding) {
    if (!finding) return true;
    const bool shared = finding->title == u"入力のエラー"_s;
    forms::tell(form, finding->text, finding->title,
                shared ? forms::BoxIcon::Critical : forms::BoxIcon::None);
    return false;
}

std::vector<widgets::CodeList::Item> comboItems(const std::vector<CodeChoice>& choices) {
    std::vector<widgets::CodeList::Item> items;
    for (const CodeChoice& choice : choices) items.push_back({choice.code, choice.name});
    return items;
}

PersonRecordForm::PersonRecordForm(const QString& name, const QString& caption, const QString& table,
                                   const QString& orderBy, forms::House& house, QWidget* parent)
    : RecordForm(name, caption, house, parent), table_(table), orderBy_(orderBy) {}

store::TableQuery PersonRecordForm::query() const {
    return {table_, u"社員Code = ?"_s, {house_.global.syain_code}, orderBy_};
}

void PersonRecordForm::rowWritten(store::RowEdit& row) {
    row.set(u"社員Code"_s, house_.global.syain_code);
}

void PersonRecordForm::addPerson(QGridLayout* fields) {
    auto* code = make<QLabel>(u"Label1"_s, house_.global.syain_code);
    auto* name = make<QLabel>(u"Label2"_s, house_.global.syain_mei);
    widgets::setTone(code, widgets::Tone::Muted);
    widgets::setTone(name, widgets::Tone::Heading);
    auto* both = new QWidget(this);
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(widgets::kGrid);
    row->addWidget(code);
    row->addWidget(name, 1);
    widgets::addField(fields, make<QLabel>(u"lblPerson"_s, u"社員:"_s), both);
}

void PersonRecordForm::nameCodes(const QStringList& columns) {
    for (const QString& column : columns)
        for (const CodeChoice& choice : codeChoices(cn(), column))
            names_[column].insert(choice.code, choice.name);
}

QString PersonRecordForm::gridText(int row, int column) const {
    const QString text = RecordForm::gridText(row, column);
    const QString heading = grid()->model()->headerData(column, Qt::Horizontal).toString();
    return names_.contains(heading) ? names_[heading].value(text) : text;
}

bool PersonRecordForm::taken(const QString& column, const store::Value& value) {
    auto others =
        cn().prepare(u"SELECT count(*) FROM %1 WHERE 社員Code = ? AND %2 = ?"_s.arg(table_, column));
    others.bindAll({house_.global.syain_code, value});
    others.step();
    const bool own = state() == State::Editing && row() >= 0 && shown(column) == value;
    return !own && others.toInteger(0) > 0;
}

}  // namespace personnel
