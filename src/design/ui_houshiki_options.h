#pragma once
#include <QFrame>
#include <optional>
#include <vector>

#include "design/criteria.h"

class QRadioButton;

namespace design {

/// The choice of the 算定方式, options side by side: Option1_0 個人別計算, Option1_1 総額配分, Option1_2
/// 金一封, Option1_3 特別加算金. Hidden as a whole it keeps its place, so that what stands around it does not
/// jump.
class HoushikiOptions : public QFrame {
    Q_OBJECT
  public:
    /// The first `count` of the four stand there.
    HoushikiOptions(const QString& name, QWidget* parent, int count = kHoushikiCount);

    /// The line stands in from the edge, its options apart, and keeps its height without any of them.
    void indent();
    /// Shows what is offered and chooses 個人別計算, else 総額配分, else nothing.
    void offer(const PaymentFlags& offered);
    /// Whether the two payments that are typed in per person can be chosen.
    void enableTyped(bool enabled);

    /// Chosen by the program: tells nobody.
    void choose(std::optional<Houshiki> houshiki);
    std::optional<Houshiki> chosen() const;
    QString captionOf(Houshiki houshiki) const;

  Q_SIGNALS:
    void picked(design::Houshiki houshiki);  ///< by the user

  private:
    std::vector<QRadioButton*> options_;
};

}  // namespace design
