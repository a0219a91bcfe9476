#pragma once
#include <vector>

#include "forms/screens.h"
#include "widgets/form.h"
#include "widgets/layout.h"

class QLabel;
class QPushButton;

namespace shell {

/// What a new company still lacks: the steps with what is done, the way to the next one, and a button that
/// puts the guide away for good. Not in sight where nothing is lacking.
class FirstSteps : public widgets::Card {
    Q_OBJECT
  public:
    FirstSteps(forms::House& house, widgets::Form* menu);
    /// Reads the tables anew.
    void refresh();

  private:
    forms::House& house_;
    widgets::Form* menu_;
    QLabel* steps_;
    QPushButton *next_, *dismiss_;
    QString screen_;
};

}  // namespace shell
