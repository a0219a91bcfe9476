#pragma once
#include <QWidget>
#include <vector>

#include "design/criteria.h"
#include "forms/screens.h"
#include "widgets/code_list.h"

class QGridLayout;
class QHBoxLayout;
class QLabel;

namespace design {

/// The two lists that open every run screen: 配分区分 and, once one is chosen, its 配分基準. Controls Label1,
/// DataList1, Label2, DataList2.
class CriterionPicker : public QWidget {
    Q_OBJECT
  public:
    CriterionPicker(forms::House& house, QWidget* parent);

    /// One list above the other, for a narrow column.
    void setStacked();
    /// Step numbers before the two prompts.
    void setMarkers(QLabel* first, QLabel* second);

    /// Fills DataList1; DataList2 is empty and disabled, Label2 hidden. May throw store::Error.
    void load();
    /// Fills DataList2 with the criteria of the chosen 配分区分 and enables it. May throw store::Error.
    void loadKijun();

    widgets::CodeList* kubunList() const { return kubun_; }
    widgets::CodeList* kijunList() const { return kijun_; }
    /// Label2, shown with the second list.
    QLabel* kijunLabel() const { return kijunLabel_; }

    /// Copies codes and names of both lists to the global record.
    void takeSelection();
    /// takeSelection, then the two refusals: "配分区分を指定してください。" and
    /// "配分基準を指定してください。", the focus in the list concerned. True when both are chosen.
    bool requireSelection();
    /// Tells "設定した配分基準はありません。" when nothing is chosen in the second list.
    bool refuseEmptyKijun();

  Q_SIGNALS:
    void kubunChosen();
    void kijunChosen();  ///< also for a click into a list without entries: nothing is chosen then

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool refuse(widgets::CodeList* list, const QString& text, const QString& title);
    forms::House& house_;
    widgets::CodeList* kubun_;
    widgets::CodeList* kijun_;
    QLabel* kijunLabel_;
    QGridLayout* grid_;
    QHBoxLayout* kubunLine_;
    QHBoxLayout* kijunLine_;
    bool stacked_ = false;
};

/// The run that the global record names. Throws store::Error when its date is none.
domain::RunKey currentRun(const forms::GlobalRecord& global);

/// The words that tell that nobody falls under the criterion.
inline const QString kNoEmployees = QStringLiteral("この配分基準に対応する社員はいません。");

}  // namespace design
