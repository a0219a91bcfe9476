#pragma once
#include <QMainWindow>
#include <array>

#include "forms/screens.h"
#include "help/help.h"

class QLabel;
class QMenu;
class QPushButton;

namespace help {
class HelpShelf;
}

namespace shell {

/// The main window. It stays on screen for the life of the process, behind everything; every way of closing
/// it leads to the exit question. Its status bar shows the panels of the global record, which are state.
class frmMain : public QMainWindow {
    Q_OBJECT
  public:
    frmMain(forms::House& house, help::HelpShelf& help);
    ~frmMain() override;

    /// The entries of ﾌｧｲﾙ, by their index.
    void mnuFileNo_Click(int index);
    /// The entries of ﾍﾙﾌﾟ, by their index.
    void mnuHelpNo_Click(int index);
    /// Asks, and ends the program with はい. The end of the desktop's session asks too; with いいえ it is
    /// called off.
    bool exitProgram();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void buildMenus();
    void buildStatusBar();
    QWidget* buildArea();
    void addEntry(QMenu* menu, const QString& array, int index, const QString& caption);
    void showPanels();
    void openScreen(const QString& name);
    void chooseCompany();
    void choosePlace();

    forms::House& house_;
    help::HelpShelf& help_;
    QPushButton* Command1_ = nullptr;
    std::array<QLabel*, 3> panels_{};
    QLabel* areaTitle_ = nullptr;
    QLabel* areaText_ = nullptr;
    QLabel* place_ = nullptr;
    QPushButton *open_ = nullptr, *make_ = nullptr, *elsewhere_ = nullptr;
};

}  // namespace shell
