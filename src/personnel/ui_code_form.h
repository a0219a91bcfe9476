#pragma once
#include "forms/record_form.h"
#include "personnel/code_references.h"

namespace personnel {

/// The record form of what others name by a code: an entry of a master, a 配分区分, a 配分基準. A code is a
/// number from 1, stored with two digits or more, and free where it stands. A changed code is carried through
/// every table of the company's files; one that is in use can't be removed, and one that is removed takes
/// with it what refers to it. Copied before either, announced where the companions' files are reached
/// (code_change.h).
class CodeForm : public forms::RecordForm {
    Q_OBJECT
  protected:
    CodeForm(Referent referent, const QString& name, const QString& caption, forms::House& house,
             QWidget* parent);

    /// What the fields name now.
    virtual CodeKey typedKey() const = 0;
    /// The row that is shown, as the table names it.
    CodeKey oldKey() const;
    /// The check of the code's field.
    bool checkCode(QLineEdit* edit, int highest);
    /// The same for another number; false was told.
    bool checkNumber(QLineEdit* edit, int highest, const QString& caption);
    bool refuseEmpty(const QString& caption);

    QStringList keyColumns() const override;
    void updateBegins(bool renames) override;
    void removalBegins() override;
    void writeFailed() override;
    void keyRenamed() override;
    bool mayRemove() override;
    void rowGoes() override;

  private:
    CompanyDatabases company();
    bool isTaken() const;

    const domain::Reference entry_;  ///< where the code stands
};

}  // namespace personnel
