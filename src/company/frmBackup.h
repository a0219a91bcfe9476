#pragma once
#include <functional>
#include <vector>

#include "company/backup.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace widgets {
class CodeList;
class RowsModel;
class Table;
}  // namespace widgets

namespace company {

/// Where a backup can go: a drive, or what a system has in its place.
struct Drive {
    QString root;
    QString caption;
};
std::vector<Drive> mountedDrives();

/// バックアップ: copies a company's folder, and brings one back (元に戻す). While the drive is the one that
/// was shown at first the copy goes under the program's BackupDB, otherwise into the chosen folder.
class frmBackup : public widgets::Form {
    Q_OBJECT
  public:
    frmBackup(forms::House& house, QWidget* parent,
              std::function<std::vector<Drive>()> drives = mountedDrives);

    /// Looks into a folder that stands anywhere and shows it among the backups.
    void addFolder(const QString& folder);

  private:
    QWidget* makeBackupPage();
    QWidget* makeRestorePage();
    void load();

    void Drive1_Change();
    void openFolder();
    void showFolders(const QString& folder);
    QString target() const;
    void cmdOK_Click();
    bool mayBackUp(const QString& name);

    void loadBackups();
    void showChosen();
    const Backup* chosen() const;
    void restore_Click();
    bool mayRestore(const Backup& backup, const QString& name);

    forms::House& house_;
    std::function<std::vector<Drive>()> drives_;
    QString driveAtLoad_, folder_;
    std::vector<Backup> backups_, added_;
    QComboBox *combo1_ = nullptr, *drive1_ = nullptr;
    widgets::CodeList* dir1_ = nullptr;
    QLabel *path_ = nullptr, *target_ = nullptr, *about_ = nullptr;
    widgets::Table* list_ = nullptr;
    widgets::RowsModel* rows_ = nullptr;
    QLineEdit* name_ = nullptr;
    QPushButton *ok_ = nullptr, *restore_ = nullptr;
};

}  // namespace company
