#pragma once
#include <QHash>
#include <QStringList>
#include <vector>

#include "forms/screens.h"
#include "prep/assignment.h"
#include "widgets/form.h"

class QComboBox;
class QLabel;
class QSortFilterProxyModel;

namespace widgets {
class RowsModel;
class Table;
}  // namespace widgets
namespace design {
class CriterionPicker;
}

namespace prep {

/// 対象者⇔配分基準の対応: everybody of the snapshot with the criterion of today and, until it is stored, the
/// new one. The selected people get a criterion in one action; storing is one transaction.
class frmSTaisyousya : public widgets::Form {
    Q_OBJECT
  public:
    frmSTaisyousya(forms::House& house, QWidget* parent);

  public Q_SLOTS:
    void reject() override;

  private:
    void makeControls();
    QWidget* makeList();
    QWidget* makeChoice();
    void tabOrder();
    void connectEvents();
    void Form_Load();

    void Command1_Click();  ///< 割り当てる
    void Command2_Click();  ///< 割り当てを外す
    void Command3_Click();  ///< 登録
    void plan(const Assignment& assignment);
    /// Nobody loses what was typed in or computed without having been asked.
    bool confirmLoss();
    bool store();

    void refilter();
    void showCounts();
    QString cell(int row, int column) const;
    QVariant sortKey(int row, int column) const;
    QString nameOf(const Assignment& assignment) const;
    QString nameIn(int row) const;
    const Assignment& future(int row) const;
    bool changed(int row) const;
    std::vector<int> changedRows() const;
    std::vector<int> selectedRows() const;

    class Filter;

    forms::House& house_;
    std::vector<Assignee> people_;
    QHash<int, Assignment> planned_;  ///< by row of people_
    QHash<QString, QString> names_;   ///< of criteria, by 配分区分 and 配分基準

    QLineEdit* search_ = nullptr;
    QComboBox* show_ = nullptr;
    widgets::Table* table_ = nullptr;
    widgets::RowsModel* model_ = nullptr;
    Filter* filter_ = nullptr;
    design::CriterionPicker* picker_ = nullptr;
    QLabel* unassigned_ = nullptr;
    QLabel* counts_ = nullptr;
    QLabel* selected_ = nullptr;
    QPushButton* assign_ = nullptr;
    QPushButton* release_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* close_ = nullptr;
};

}  // namespace prep
