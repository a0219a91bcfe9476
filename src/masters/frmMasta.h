#pragma once
#include <QHash>

#include "masters/master_kinds.h"
#include "personnel/ui_code_form.h"

class QGridLayout;

namespace masters {

/// The editor of a code master: one class for all nineteen. A code that people use cannot be removed; a
/// changed code is carried through every table of the company's files, and a removed one takes with it what
/// refers to it.
class frmMasta : public personnel::CodeForm {
    Q_OBJECT
  public:
    frmMasta(const MasterKind& kind, forms::House& house, QWidget* parent);

  protected:
    store::TableQuery query() const override;
    personnel::CodeKey typedKey() const override;
    bool checkRequired() override;
    bool checkUpdate() override;
    QString removalQuestion() const override;
    void rowsRead() override;
    QString gridText(int row, int column) const override;

  private:
    QLineEdit* addText(QGridLayout* fields, int number, const QString& caption, const QString& hint = {});
    void addOther(QGridLayout* fields);
    void bindFields(QGridLayout* fields);
    void addGrid();
    bool checkOther();
    bool checkDate();

    const MasterKind& kind_;
    QString caption_;  ///< of the name
    QLineEdit* code_ = nullptr;
    QLineEdit* name_ = nullptr;
    QLineEdit* date_ = nullptr;
    QLineEdit* age_ = nullptr;
    widgets::CodeCombo* other_ = nullptr;
    QHash<QString, QString> otherNames_;
    std::vector<int> shown_;  ///< the columns of the table that the grid shows
};

}  // namespace masters
