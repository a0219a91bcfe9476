#pragma once
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class QCheckBox;
class QLineEdit;
class QWidget;

namespace widgets {
class CodeCombo;
class OptionRow;
}  // namespace widgets

namespace forms {

/// A control that stands for a column of the row that a form shows. What it reads and writes is the text of
/// the column's value.
struct BoundField {
    QWidget* control = nullptr;
    QString column = {};
    std::function<QString()> read = {};
    std::function<void(const QString&)> write = {};
    std::function<void(bool)> lock = {};
    std::function<bool()> check = {};  ///< told its own box and false, or true; may be empty
    QString fresh = {};                ///< of a new row
    bool entered = true;               ///< false: never unlocked, not checked, not written
};

BoundField boundField(QLineEdit* edit, const QString& column);
/// A number, shown with separated thousands.
BoundField boundNumber(QLineEdit* edit, const QString& column);
BoundField boundField(widgets::CodeCombo* combo, const QString& column);
/// A new row has the first option.
BoundField boundField(widgets::OptionRow* options, const QString& column);
/// A Boolean; a new row is unchecked.
BoundField boundField(QCheckBox* box, const QString& column);

/// The fields of one row, in the order of binding. Those that are not entered are passed over by all that
/// checks, asks and unlocks.
class BoundFields {
  public:
    void add(BoundField field);  ///< locked
    auto begin() const { return fields_.begin(); }
    auto end() const { return fields_.end(); }
    const BoundField& first() const { return fields_.front(); }

    void setLocked(bool locked);
    void setEntered(QWidget* control, bool entered, bool locked);
    bool isEntered(const QWidget* control) const;
    /// To the first one that is entered.
    void focusFirst() const;

    void remember();       ///< what the controls hold now
    bool changed() const;  ///< something was typed or chosen since remember()

    /// The first one that is refused gets the focus and has told why.
    bool passChecks() const;
    /// Frames every field that would be refused, with its reason as tip; their names.
    QStringList markFaults() const;
    void clearFaults() const;

  private:
    std::vector<BoundField> fields_;
    QStringList remembered_;
};

}  // namespace forms
