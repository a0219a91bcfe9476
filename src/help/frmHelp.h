#pragma once
#include <QPointer>
#include <QUrl>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

#include "help/help.h"

class QAbstractButton;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTextBrowser;

namespace forms {
struct GlobalRecord;
}

namespace help {

/// The window of one help book: the list of pages, a search over all books, and the page. It belongs to no
/// other window and is never modal, so it stays usable beside a modal screen.
class frmHelp : public QWidget {
    Q_OBJECT
  public:
    /// A page of another book that was chosen here, with the search that led to it.
    using OtherBook = std::function<void(HelpFile file, int number, const QString& search)>;
    frmHelp(HelpFile file, const std::vector<HelpPage>& pages, OtherBook otherBook);

    /// A number without a page shows the start page.
    void showPage(int number);
    int page() const { return number_; }
    void setSearch(const QString& words);

  protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* buildContents();
    QWidget* buildReader();
    QAbstractButton* addTool(const QString& name, const QString& text, const QString& hint);
    void fillContents();
    void markCurrent();
    void openItem(QListWidgetItem* item);
    void openLink(const QUrl& url);
    void highlight();
    void applyStyle();
    void sourceChanged(const QUrl& url);
    void resizeText(int steps);

    const HelpFile file_;
    const std::vector<HelpPage>& pages_;
    OtherBook otherBook_;
    int number_ = 0;
    bool styling_ = false;
    QLineEdit* search_ = nullptr;
    QListWidget* contents_ = nullptr;
    QTextBrowser* browser_ = nullptr;
};

/// The help windows of the program, one per book at most, opened by the rule help_bunya.
class HelpShelf : public HelpWindows {
  public:
    /// Pages come from the program's resources.
    explicit HelpShelf(forms::GlobalRecord& global);
    ~HelpShelf() override;

    /// The topic of a screen (frmSDatatorikomi).
    /// The page of a topic; the start page of the first book without one.
    void helpOn(std::optional<HelpTopic> topic);
    /// The start page of a book.
    void open(HelpFile file);
    frmHelp* window(HelpFile file) const;  ///< null while the book is closed
    const std::vector<HelpPage>& pages() const { return pages_; }

    void closeAll(HelpFile file) override;
    void showTopic(HelpFile file, int number) override;
    void showStartPage(HelpFile file) override { showTopic(file, 0); }

  private:
    frmHelp& bring(HelpFile file);
    void openFromOther(HelpFile file, int number, const QString& search);

    forms::GlobalRecord& global_;
    std::vector<HelpPage> pages_;
    std::map<HelpFile, QPointer<frmHelp>> windows_;
    QRect lastPlace_;
};

}  // namespace help
