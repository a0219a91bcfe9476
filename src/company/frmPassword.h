#pragma once
#include "forms/screens.h"
#include "store/connection.h"
#include "widgets/form.h"

class QLineEdit;
class QPushButton;

namespace company {

/// パスワードの設定: sets, changes and takes away the password that is asked before the open company opens.
class frmPassword : public widgets::Form {
    Q_OBJECT
  public:
    frmPassword(forms::House& house, QWidget* parent);

  private:
    void build();
    bool mayChange();
    void Command1_Click();
    void Command2_Click();
    void finish(const QString& told);

    forms::House& house_;
    QLineEdit *now_ = nullptr, *new_ = nullptr, *again_ = nullptr;
    QPushButton *set_ = nullptr, *remove_ = nullptr;
    bool has_ = false;
};

/// Asks for the password of a company that is about to open; accepted when it was right.
class frmPasswordKakunin : public widgets::Form {
    Q_OBJECT
  public:
    frmPasswordKakunin(QWidget* parent, store::Connection& cnMain, const QString& company);

  private:
    void Command1_Click();

    store::Connection& cn_;
    QLineEdit* password_;
};

}  // namespace company
