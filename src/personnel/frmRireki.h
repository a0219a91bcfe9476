#pragma once
#include <array>

#include "forms/record_form.h"
#include "personnel/code_references.h"
#include "personnel/person_rules.h"
#include "personnel/ui_people_list.h"

class QGroupBox;

namespace personnel {

/// 履歴書: the employees, one at a time, with the searchable list of people beside them. Opened on all
/// current staff (rireki_zenin), on the selection in 社員絞込 (rireki_shinki) or on one person (syain_code),
/// who may be retired. People are added from all staff only. 異動, 家族 and 資格・免許 of the person open
/// from here.
///
/// A change of 社員Code reaches every table of the company's files, a removal takes the person's rows out of
/// them; a person with rows is asked about once more. After adding a person the first 異動 can be entered at
/// once: without one the person appears in no list of a date.
class frmRireki : public forms::RecordForm {
    Q_OBJECT
  public:
    frmRireki(forms::House& house, QWidget* parent);

  protected:
    store::TableQuery query() const override;
    QStringList keyColumns() const override { return {QStringLiteral("社員Code")}; }
    QList<QWidget*> fieldOrder() const override;
    QString nextKey() const override;
    bool mayAdd() const override { return whom_ == Whom::AllStaff; }
    bool checkUpdate() override;
    void updateBegins(bool renames) override;
    void removalBegins() override;
    void writeFailed() override;
    void keyRenamed() override;
    void rowWritten(store::RowEdit& row) override;
    void afterRow(const store::RowEdit& row) override;
    void updated(State was) override;
    bool confirmRemoval() override;
    void rowGoes() override;
    void rowsRead() override;
    void rowShown() override;
    void stateChanged() override;

    bool keepsKey(const QWidget* focused, int key) const override;

  private:
    enum class Whom { AllStaff, Selected, One };
    enum Text { Code, Shimei, Furigana, Seinengappi, Nyuusyabi, Yubin, Jyusyo1, Jyusyo2, Tel, Fax, kTexts };
    static constexpr int kCombos = 9;
    static constexpr int kOptions = 3;
    static constexpr int kSubtables = 3;
    struct Person {
        QString code, name, joined, born;
    };

    void chooseWhom();
    void makeControls();
    void makeSubtables();
    void bindFields();
    void connectMoves();
    QLayout* arrangeFields();
    QLayout* arrangePerson();
    QLayout* arrangeRest();
    bool checkCode();
    bool taken(const QString& code);
    CompanyDatabases databases();
    void setCommands();
    void showYears();
    Person shownPerson() const;
    void openSubtable(int index, const Person& person);
    void offerFirstTransfer();

    Whom whom_ = Whom::AllStaff;
    qint64 personRow_ = -1;  ///< of Whom::One: the code may be renamed
    Person added_;
    EntryItems items_;
    PeopleList* people_ = nullptr;
    std::array<QLineEdit*, kTexts> txtFields_{};
    std::array<widgets::CodeCombo*, kCombos> combo_{};
    std::array<widgets::OptionRow*, kOptions> options_{};
    std::array<QPushButton*, kSubtables> subtables_{};
    QWidget* readingForms_ = nullptr;
    QLabel* nenrei_ = nullptr;
    QLabel* kinzoku_ = nullptr;
};

}  // namespace personnel
