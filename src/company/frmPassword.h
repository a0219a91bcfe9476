#pragma once
#include <functional>
#include <memory>

#include "company/opening_password.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QTextDocument;

namespace company {

/// What it means to lock the files, for the user.
inline const QString kAboutLock = QStringLiteral(
    "「ファイルも暗号化する」と、ファイルもパスワードがないと読めなくなります。ほかのプログラム（賃金の設計や"
    "人事"
    "評価など）からも、この会社を開けません。忘れたときのために、復旧キーを印刷します。");
/// Makes a field one for a password.
QLineEdit* makeHidden(QLineEdit* edit);

/// パスワードの設定: sets, changes and takes away the password that is asked before the open company opens,
/// and locks its files with a key of its own or with the shared one again.
class frmPassword : public widgets::Form {
    Q_OBJECT
  public:
    frmPassword(forms::House& house, QWidget* parent);

  private:
    void build();
    QString folder() const;
    bool mayChange();
    bool newPasswordHolds();
    void Command1_Click();
    void Command2_Click();
    void lockFiles();
    void unlockFiles(const QString& told);
    /// Closes the company and writes its files under another key.
    bool changeFiles(const class OwnKey* own);
    void finish(const QString& told);

    forms::House& house_;
    QLineEdit *now_ = nullptr, *new_ = nullptr, *again_ = nullptr;
    QCheckBox* lock_ = nullptr;
    QPushButton *set_ = nullptr, *remove_ = nullptr;
    bool has_ = false, locked_ = false;
};

/// Judges what was typed at a time.
using PasswordTry = std::function<PasswordAnswer(const QString& typed, const QDateTime& now)>;

/// Asks for the password of a company; accepted when it was right.
class frmPasswordKakunin : public widgets::Form {
    Q_OBJECT
  public:
    /// `recovery`: the recovery code is taken too.
    frmPasswordKakunin(QWidget* parent, const QString& company, bool recovery, PasswordTry attempt);

  private:
    void Command1_Click();

    PasswordTry attempt_;
    QLineEdit* password_;
};

/// Shows the recovery code of a company that is about to be locked, once, to be printed or written down;
/// accepted when the user says that it was.
class frmFukkyuKey : public widgets::Form {
    Q_OBJECT
  public:
    frmFukkyuKey(QWidget* parent, const QString& company, const QString& code);
    /// The sheet that is printed.
    std::unique_ptr<QTextDocument> sheet() const;

  private:
    void Command1_Click();

    QString company_, code_;
};

}  // namespace company
