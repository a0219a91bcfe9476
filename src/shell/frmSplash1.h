#pragma once
#include <QWidget>
#include <chrono>

namespace shell {

/// The picture at start. Closing it is the delay: it stays for at least `wait`, and no message is handled
/// meanwhile.
class frmSplash1 : public QWidget {
    Q_OBJECT
  public:
    explicit frmSplash1(std::chrono::milliseconds wait = std::chrono::milliseconds(2000));

    /// Shows it and returns when it has been painted.
    void showPainted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    std::chrono::milliseconds wait_;
};

}  // namespace shell
