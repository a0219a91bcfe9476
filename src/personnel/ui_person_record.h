#pragma once
#include <QHash>
#include <QString>

#include "forms/record_form.h"
#include "personnel/code_choices.h"
#include "personnel/person_rules.h"

class QLabel;
class QGridLayout;

namespace personnel {

/// Tells a fault of a field, if there is one; true when there is none.
bool passes(QWidget* form, const Finding& finding);

/// What a combo over these codes offers.
std::vector<widgets::CodeList::Item> comboItems(const std::vector<CodeChoice>& choices);

/// A record form over one employee's rows of a table behind the employee record: the person is the one of
/// syain_code, shown in Label1 and Label2; a new row belongs to the person.
class PersonRecordForm : public forms::RecordForm {
    Q_OBJECT
  protected:
    PersonRecordForm(const QString& name, const QString& caption, const QString& table,
                     const QString& orderBy, forms::House& house, QWidget* parent);

    store::TableQuery query() const override;
    void rowWritten(store::RowEdit& row) override;

    /// 社員Code and 氏名 on the first line of the fields.
    void addPerson(QGridLayout* fields);
    /// DataGrid1 shows the names of these columns' codes in place of the codes.
    void nameCodes(const QStringList& columns);
    QString gridText(int row, int column) const override;
    /// Whether another row of the person has this value in `column`. The row being edited may keep its own.
    bool taken(const QString& column, const store::Value& value);

  private:
    QString table_;
    QString orderBy_;
    QHash<QString, QHash<QString, QString>> names_;  ///< by heading and code
};

}  // namespace personnel
