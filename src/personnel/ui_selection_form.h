#pragma once
#include <QString>
#include <functional>

#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/screens.h"
#include "personnel/person_lists.h"
#include "personnel/selection.h"
#include "widgets/code_list.h"
#include "widgets/form.h"

class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace reports {
struct ListTitle;
class SentSheet;
class SheetFolder;
}  // namespace reports

namespace personnel {

/// What a menu entry wants done with the people it selects.
struct SelectionMode {
    enum class Deed { OpenScreen, Print, Sheet, Restore };

    bool forms::GlobalRecord::*flag;
    Deed deed;
    QString purpose;                      ///< the line under the title
    QString screen = {};                  ///< of OpenScreen
    PersonList list = PersonList::Staff;  ///< of Print and Sheet
    QString title = {};                   ///< of the print, or the name of the sheet
    bool oneOnly = false;                 ///< no whole list
    bool leavingFirst = false;            ///< who is about to leave is listed before a search
};

/// What both selection screens share: the list of the people found with its count, and the two ways to send
/// them on, all of them or the chosen one, to where the menu entry's mode says. A subclass has the fields of
/// the conditions and finds the people.
class SelectionForm : public widgets::Form {
    Q_OBJECT
  protected:
    struct Names {
        QString screen;
        QString caption;
        QString count;  ///< the label with the number of people found
    };
    SelectionForm(const Names& names, const std::vector<SelectionMode>& modes, forms::House& house,
                  const reports::SheetFolder& sheets, QWidget* parent);

    // ---- what a subclass says

    /// Finds the people that meet the conditions as they are typed now, whenever it is called; null after a
    /// box of its own.
    using Query = std::function<FoundPeople()>;
    virtual Query query() = 0;
    virtual void clearConditions() = 0;
    /// The date at which positions are shown; an empty field takes today first.
    virtual QDate referenceDate() = 0;
    virtual QString printedDate() = 0;  ///< the line with it, on paper
    /// Deed::Restore; in a guarded procedure.
    virtual void restore(const QString& code) { Q_UNUSED(code) }

    // ---- what a subclass calls

    /// Title and purpose, the conditions with their buttons beside the people found, the row of buttons.
    void arrange(QLayout* conditions);
    /// The field of a date with its example beside it.
    QLayout* withHint(QLineEdit* edit, const QString& hint);
    /// Lists people before anything was asked, to be sent on as `list`; a search takes the mode's list again.
    void offer(Query query, PersonList list, const QString& nobody);
    /// Finds again what was found last, silently: someone else changed the people. The choice stays on the
    /// same person, else in the same place.
    void refresh();
    QString today() const;
    /// A text that is a date or may be empty (`mayBeEmpty`) is written as yyyy/m/d; otherwise the box.
    bool checkDate(QLineEdit* edit, bool mayBeEmpty);
    /// The buttons that a field with a fault does not hold back.
    QList<QPushButton*> exempt() const;
    const SelectionMode& mode() const { return *mode_; }
    store::Connection& cn() const { return *house_.global.cn_main; }

    forms::House& house_;

  private:
    void makeButtons();
    QWidget* makeFound();
    void search();
    void showPeople(const FoundPeople& people);
    void send(bool all);
    void handOver(const QStringList& codes, bool all);
    void openScreen(const QString& code, bool all);
    void print();
    void sendSheet();
    reports::ListTitle listTitle();

    const reports::SheetFolder& sheets_;
    const SelectionMode* mode_;
    Query query_;        ///< of the people found
    PersonList listed_;  ///< what Print and Sheet make of them
    FoundPeople people_;
    widgets::CodeList* list_ = nullptr;
    QLabel* count_;
    QLabel* told_ = nullptr;  ///< who is missing in a printed list
    reports::SentSheet* sent_ = nullptr;
    QPushButton *command1_ = nullptr, *command2_ = nullptr, *command3_ = nullptr, *command4_ = nullptr,
                *command5_ = nullptr, *command6_ = nullptr;
};

}  // namespace personnel
