#pragma once
#include <QComboBox>
#include <QString>
#include <vector>

#include "widgets/code_list.h"

namespace widgets {

/// A combo over a list of codes, bound to one code. The code need not stand in the list: then nothing is
/// shown, and code() still answers what was set until the user chooses. Delete and Backspace choose nothing.
/// Locked it reads like a locked text box: no popup, no wheel, no keys, but the text stays fully legible.
class CodeCombo : public QComboBox {
    Q_OBJECT
  public:
    explicit CodeCombo(QWidget* parent = nullptr);

    void setItems(const std::vector<CodeList::Item>& items);  ///< keeps code()
    void setCode(const QString& code);                        ///< silent: chosen() is not emitted
    QString code() const { return code_; }
    QString text() const { return currentText(); }  ///< empty when nothing or an unknown code is chosen
    void setLocked(bool locked);
    bool isLocked() const { return locked_; }

  Q_SIGNALS:
    void chosen();   ///< by the user, once a choice
    void entered();  ///< got the focus unlocked, before its list drops down: the place to fill it anew

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    QString code_;
    bool locked_ = false;
};

}  // namespace widgets
