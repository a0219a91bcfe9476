#pragma once
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "forms/help_topic.h"

/// Help: the pages, which window may be open beside which, and the search over all pages. Which page belongs
/// to which screen stands in the screen's line (forms/screens.h).
namespace help {

using forms::HelpFile;
using forms::HelpTopic;

/// The text that stands for a book while its window is the last one opened: "menu", "jin", "syo"; empty for
/// the others.
QString bunyaOf(HelpFile file);

/// What the rule of help drives: at most one window per book.
class HelpWindows {
  public:
    virtual ~HelpWindows() = default;
    virtual void closeAll(HelpFile file) = 0;
    virtual void showTopic(HelpFile file, int number) = 0;
    virtual void showStartPage(HelpFile file) = 0;
};

/// Opens the book `target` at a topic, or at its start page without one. When another book was opened last,
/// the four others are closed first. `bunya` is the book last opened and is brought up to date; the current
/// directory becomes `programDir`.
void help_bunya(QString& bunya, const QString& programDir, HelpFile target, std::optional<int> topic,
                HelpWindows& windows);

/// Closes every book, opened or not; the exit of the program does so.
void closeEveryHelp(HelpWindows& windows);

/// A page of a book. Number 0 is the start page.
struct HelpPage {
    HelpFile file = HelpFile::Mhelp;
    int number = 0;
    QString title;
    QString html;
    QString text;  ///< what the reader sees, without marks
};
/// All pages under a folder whose files are named <bunya>_<number>.html, book by book, by number.
std::vector<HelpPage> loadHelpPages(const QString& folder);
const HelpPage* findPage(const std::vector<HelpPage>& pages, HelpFile file, int number);

/// The page names in links between pages: "syo_7001.html".
QString pageName(HelpFile file, int number);
std::optional<std::pair<HelpFile, int>> pageOfName(const QString& name);

/// Where a word stands in a text, as (position, length) in the text. Width of characters, case, and hiragana
/// against katakana make no difference: ﾎﾞﾀﾝ finds ボタン and ぼたん.
std::vector<std::pair<int, int>> findWord(const QString& text, const QString& word);
/// The words of a search box, split at blanks of either width.
QStringList searchWords(const QString& input);
/// True when each word stands in the page's title or text.
bool pageHolds(const HelpPage& page, const QStringList& words);

}  // namespace help
