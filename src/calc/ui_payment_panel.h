#pragma once
#include <array>

#include "calc/payment_preview.h"
#include "calc/shikyuu_store.h"
#include "widgets/layout.h"

class QLabel;
class QLayout;
class QLineEdit;

namespace calc {

/// The panel 【支給係数シミュレーション】: each registered payment coefficient beside a box for the corrected
/// one, by grade or one for everybody, and below them what the corrections do to the total. It knows its
/// texts, nothing of tables. Controls Frame4, Label10 to Label17, Label23 to Label26, Text3, Text4.
class PaymentPanel : public widgets::Card {
    Q_OBJECT
  public:
    explicit PaymentPanel(QWidget* parent);

    /// Empties and hides the grade rows.
    void clearGrades();
    void showUniform(const UniformPanel& uniform);
    void showGrades(const std::vector<PanelGrade>& rows);

    /// The texts as they stand. `open` tells whether the panel is up: closed, nothing is simulated, though
    /// the texts are still what a run stores.
    PaymentSimulation simulation(bool open, const QString& hyougoType) const;

    /// Puts the focus in the first box; false when none is in sight.
    bool enter();
    /// All boxes, for the form's field checks.
    std::vector<QLineEdit*> boxes() const;
    /// The check of one box: empty becomes "1.000", a number from 0 to 999.999 is rewritten "##,##0.000";
    /// otherwise the message is told and false returned.
    bool check(QLineEdit* box);

    /// The total now and with the corrections, or "—" and why there is none.
    void showEffect(const PaymentEffect& effect);

  Q_SIGNALS:
    void edited();  ///< the text of a box changed, by the user or by the panel

  private:
    struct Row {
        QLabel* hyouka;
        QLabel* registered;
        QLineEdit* corrected;
        QLabel* hyoukaCode;

        void showUsed();  ///< what is empty takes no room
    };
    QLayout* makeEffect();
    QLabel* label(const QString& name, const QString& text = {});
    QLineEdit* box(const QString& name, const QString& accessibleName);

    std::array<Row, PaymentSimulation::kGrades> rows_{};
    QLabel* uniformHead_;
    QLabel* uniformRegistered_;
    QLineEdit* uniformCorrected_;
    std::array<QLabel*, 3> effect_{};
    QLabel* effectNote_ = nullptr;
};

}  // namespace calc
