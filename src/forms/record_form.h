#pragma once
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "domain/number_rule.h"
#include "forms/bound_fields.h"
#include "forms/guard.h"
#include "forms/record_rows.h"
#include "forms/screens.h"
#include "store/row_edit.h"
#include "widgets/code_combo.h"
#include "widgets/form.h"
#include "widgets/option_row.h"
#include "widgets/record_bar.h"
#include "widgets/table.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QLineEdit;

namespace forms {

/// The record form: the rows of one table, one at a time. It browses them, adds one or edits one; the fields
/// are locked while it browses. A subclass binds controls to columns, says which rows there are and what else
/// a rename or a removal has to reach, and nothing about states, buttons, keys or failures:
///
///     class frmMastaSample : public RecordForm {
///       public:
///         frmMastaSample(House& house, QWidget* parent)
///             : RecordForm(u"frmMastaSample"_s, u"見本マスタ"_s, house, parent) {
///             code_ = make<QLineEdit>(u"txtFields_0"_s);
///             name_ = make<QLineEdit>(u"txtFields_1"_s);
///             bind(code_, u"Code"_s, [this] { return checkCode(); });       // false keeps the focus
///             bind(name_, u"見本"_s, [this] { return check_field(this, name_->text(), 16, false, …); });
///             setGrid({{u"Code"_s, u"Code"_s, 750}, {u"見本"_s, u"見本"_s, 1875}});
///             auto* fields = widgets::fieldGrid();
///             widgets::addField(fields, labelFor(u"lblLabels_0"_s, u"Code:"_s, code_), code_);
///             …
///             arrange(u"見本マスタ"_s, fields, grid());
///             openRecords();                                                  // last
///         }
///       protected:
///         store::TableQuery query() const override { return {u"見本マスタ"_s, {}, {}, u"CodeKey(Code)"_s}; }
///         QStringList keyColumns() const override { return {u"Code"_s}; }
///         void keyRenamed() override { /* carry the code; runs in the transaction */ }
///         bool mayRemove() override { /* usage check; tells and answers false */ }
///         void rowGoes() override { /* what goes with the row; runs in the transaction */ }
///     };
///
/// What a refused update found wrong is told for the first field; all fields that would be refused are
/// marked.
/// Order of an update: checkRequired(), the checks of all entered fields, checkUpdate(), updateBegins(),
/// the work, keyRenamed() (Editing, key changed), the fields into the row, rowWritten() (all states), the
/// row into the table, afterRow(), its commit, the rows anew, then updated(): the row that was shown before
/// is shown again. Of a removal: mayRemove(), confirmRemoval(), removalBegins(), the work, rowGoes(), the
/// row, its commit, the rows anew, then removed(). A failure inside is told as "取消" and rolled back; the
/// form stays in its state with everything that was typed. The work reserves the files as it writes them, so
/// that a companion's file can be written by a connection of its own meanwhile: nothing in it may read a
/// table of the wage file through cn_main.
class RecordForm : public widgets::Form {
    Q_OBJECT
  public:
    enum class State { Browse, Adding, Editing };
    State state() const { return state_; }

    void reject() override;  ///< in Adding and Editing asks first where typed input would be lost

  protected:
    /// Told its own box and false, or true.
    using Check = std::function<bool()>;

    RecordForm(const QString& name, const QString& caption, House& house, QWidget* parent);

    // ---- what a subclass says

    virtual store::TableQuery query() const = 0;
    virtual QStringList keyColumns() const = 0;  ///< what names a row; the first one is "the code"
    virtual bool mayAdd() const { return true; }
    /// Before the transaction, after the checks of the fields (which run in the order of binding).
    virtual bool checkUpdate() { return true; }
    /// What an update asks before all other checks, told or silent. An empty first field (where it is a text
    /// box on the key) is told as "未入力は許されません。･･･<keyCaption>", and passed over in silence while
    /// there are no rows.
    virtual bool checkRequired();
    /// The key that a new row is offered: one more than the largest where keys are numbers, as wide as it;
    /// empty where there is none to offer.
    virtual QString nextKey() const;
    virtual QString keyCaption() const { return keyColumns().first(); }
    /// Before the work, all checks passed: what has to stand even if the update is cut off. `renames`:
    /// Editing with another key.
    virtual void updateBegins(bool renames) { Q_UNUSED(renames) }
    virtual void removalBegins() {}  ///< the same of a removal, after its question
    /// The update or removal failed, was told and rolled back.
    virtual void writeFailed() {}
    virtual void keyRenamed() {}
    /// The row has its fields; what no control is bound to (社員Code, 退職フラグ of a new row) is set here.
    virtual void rowWritten(store::RowEdit& row) { Q_UNUSED(row) }
    /// The row stands in the table, not yet committed.
    virtual void afterRow(const store::RowEdit& row) { Q_UNUSED(row) }
    virtual void updated(State was) { Q_UNUSED(was) }  ///< committed, Browse again, the row shown
    virtual bool mayRemove() { return true; }
    /// The question " <code> <name> を削除しますか？"; texts of the first two bound fields unless overridden.
    virtual QString removalQuestion() const;
    virtual bool confirmRemoval();
    virtual void rowGoes() {}
    virtual void removed() {}
    virtual void rowsRead() {}      ///< the rows were read anew: companions' rows are read here
    virtual void rowShown() {}      ///< the fields show another row (or none): age, subordinate commands
    virtual void stateChanged() {}  ///< after every change of state and at opening
    /// Keys that the focused control has for itself in Browse: Home and End in an editable text box.
    virtual bool keepsKey(const QWidget* focused, int key) const;
    /// The text of a cell of DataGrid1; the row's value unless overridden. `row` counts from 0.
    virtual QString gridText(int row, int column) const;

    // ---- what a subclass calls

    /// The control stands for the column. Fields are checked when they are left and before an update, in this
    /// order; the first one that is entered gets the focus in Adding and Editing. A text box over a date or a
    /// number is typed directly (widgets/key_filter.h).
    void bind(QLineEdit* edit, const QString& column, Check check = {});
    void bind(widgets::CodeCombo* combo, const QString& column, Check check = {});
    void bind(widgets::OptionRow* options, const QString& column);
    void bind(QCheckBox* box, const QString& column);  ///< of a Boolean; a new row starts unchecked
    /// The number of a column, shown with separated thousands. What is stored with more digits than the rule
    /// takes is shown whole and stays until it is typed over.
    void bind(QLineEdit* edit, const QString& column, const domain::NumberRule& rule);
    /// An item that the company does not enter: grey, out of the keyboard's way, never unlocked, not checked,
    /// not written.
    void setEntered(QWidget* control, bool entered);
    bool isEntered(const QWidget* control) const;

    struct GridColumn {
        QString heading;
        QString column;  ///< of query(); free for an own gridText()
        int width = 0;   ///< twips at the standard font
    };
    /// Makes DataGrid1, a table over the rows, shown in Browse. Only the cells in sight are asked for. A row
    /// that is opened is edited.
    widgets::Table* setGrid(std::vector<GridColumn> columns);
    widgets::Table* grid() const { return grid_; }
    void refreshGrid();  ///< the texts of gridText() changed
    /// A list of the subclass's own instead of DataGrid1: shown in Browse only. It calls goTo().
    void setList(QWidget* list);

    /// Title, fields (and beside them the list), moves, commands; help stands apart at the left.
    void arrange(const QString& title, QLayout* fields, QWidget* beside = nullptr);
    /// What Tab and Enter walk through before the buttons: the bound controls in the order of binding. A
    /// screen with more between them names all.
    virtual QList<QWidget*> fieldOrder() const;
    QBoxLayout* column() const { return column_; }  ///< the screen's column, after arrange()
    widgets::RecordBar& bar() { return bar_; }
    /// Reads the rows and stands on the first one. The last line of a subclass's constructor.
    void openRecords();
    /// Reads the rows again and stands on the row with that key, or on the first. Browse only.
    void rereadRecords(const QStringList& key = {});

    bool hasRows() const { return rowCount() > 0; }
    const store::Recordset& rows() const { return rows_.rows(); }  ///< after openRecords() without failure
    int rowCount() const { return rows_.count(); }
    /// What the table holds of the row that is shown, which there is.
    const store::Value& shown(const QString& column) const { return rows().valueAt(row_, column); }
    int row() const { return row_; }  ///< from 0; -1 for none
    void goTo(int row);               ///< Browse only
    /// What the shown row holds in the table, whatever is typed meanwhile: old_code, old_name, old_idoubi. In
    /// Adding empty.
    QString oldText(const QString& column) const;
    /// Tells and answers false, for checks.
    bool refuse(const QString& text, const QString& title = QStringLiteral("入力エラー"));
    store::Connection& cn();

    bool eventFilter(QObject* watched, QEvent* event) override;
    void place() override;  ///< where the menus stand
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    House& house_;

  private:
    void add(BoundField field, Check check);
    void orderTabs();
    bool mayLoseInput(const QString& act);
    void cmdAdd();
    void cmdEdit();
    void cmdUpdate();
    void cmdCancel();
    void leaveInput();  ///< back to Browse without an update
    void cmdDelete();
    void step(int by);
    void showFaults();  ///< after a refused update
    void clearFaults();
    bool keyDiffers() const;
    void writeRow();
    void forgetWrite();
    void requireRow() const;
    void set_buttons(bool browse);
    void setState(State state);
    void focusInBrowse();
    void showRow();
    void readRows();
    void standOn(const QStringList& key, int otherwise);
    QStringList keyOf(int row) const;
    QString shownText(const BoundField& field) const;
    bool takesKey(int key, bool control);

    BoundFields fields_;
    RecordRows rows_;
    widgets::RecordBar bar_;
    QPushButton* help_;
    QLabel* faults_;
    State state_ = State::Browse;
    int row_ = -1;
    QStringList savedKey_;  ///< saved_bookmark: the row to return to
    widgets::Table* grid_ = nullptr;
    std::vector<GridColumn> gridColumns_;
    QPointer<QWidget> list_;
    QBoxLayout* column_ = nullptr;
};

}  // namespace forms
