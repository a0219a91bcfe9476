#pragma once
#include <QString>
#include <functional>
#include <optional>

#include "forms/screens.h"
#include "store/row_edit.h"
#include "widgets/form.h"

class QLayout;
class QPushButton;

namespace forms {

/// A screen over the one row of a table: Command1 更新 asks, writes and closes, Command2 キャンセル closes as
/// it is, Command3 is help. A table without its row gets it with the first update. A subclass reads stored()
/// into its controls and writes them in fill().
class SingleRowForm : public widgets::Form {
    Q_OBJECT
  public:
    void reject() override;  ///< asks first where something was entered

  protected:
    SingleRowForm(const QString& name, const QString& caption, const QString& table, House& house,
                  QWidget* parent);

    virtual bool mayUpdate() { return true; }    ///< tells what is wrong and answers false
    virtual void fill(store::RowEdit& row) = 0;  ///< what was entered goes into the row
    virtual void updated() {}                    ///< written, about to close

    /// Title and `guidance` (may be empty), the fields, the buttons. Called once, with the row in the
    /// controls.
    void arrange(const QString& guidance, QLayout* fields);
    /// What the column holds; Null without the row or when it could not be read.
    store::Value stored(const QString& column) const;
    /// Writes the row as `change` leaves it, without a question; nothing without the row.
    void rewrite(const std::function<void(store::RowEdit&)>& change);
    QPushButton* cancel() const { return command2_; }
    store::Connection& cn();

    House& house_;

  private:
    void Command1_Click();
    QStringList entered() const;  ///< what the text and check boxes hold

    QString table_;
    std::optional<store::Recordset> row_;
    QStringList begun_;  ///< entered() when the screen was arranged
    QPushButton* command1_;
    QPushButton* command2_;
    QPushButton* command3_;
};

}  // namespace forms
