#include "help/frmHelp.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QTimer>

#include "forms/global_record.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

static void loadResources() {
    Q_INIT_RESOURCE(help);
}

namespace help {

namespace {

const QString kFolder = QStringLiteral(":/help");

QString titleOfBook(HelpFile file) {
    switch (file) {
        case HelpFile::Mhelp:
            return QStringLiteral("メニュー画面");
        case HelpFile::Jhelp:
            return QStringLiteral("基本事項");
        default:
            return QStringLiteral("賞与配分");
    }
}

/// Pages come out of memory, so that back and forward are the browser's own.
class PageBrowser : public QTextBrowser {
  public:
    explicit PageBrowser(const std::vector<HelpPage>& pages) : pages_(pages) { setOpenLinks(false); }

  protected:
    QVariant loadResource(int type, const QUrl& name) override {
        if (type == QTextDocument::HtmlResource) {
            const auto place = pageOfName(name.fileName());
            if (const HelpPage* page = place ? findPage(pages_, place->first, place->second) : nullptr)
                return page->html;
        }
        return QTextBrowser::loadResource(type, name);
    }

  private:
    const std::vector<HelpPage>& pages_;
};

QColor mixed(const QColor& a, const QColor& b, double partOfB) {
    const auto mix = [partOfB](int x, int y) { return int(x + (y - x) * partOfB); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

/// The pages' style sheet with the colours of the current palette.
QString pageStyle(const QPalette& palette) {
    QFile file(kFolder + QStringLiteral("/help.css"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QString css = QString::fromUtf8(file.readAll());
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const QColor accent = widgets::accentColor();
    const QColor amber(0xD9, 0x8A, 0x1F);
    const std::pair<const char*, QColor> roles[] = {
        {"{text}", text},
        {"{muted}", mixed(text, base, 0.3)},
        {"{accent}", accent},
        {"{panel}", mixed(base, text, 0.06)},
        {"{line}", mixed(base, text, 0.18)},
        {"{note}", mixed(base, accent, 0.14)},
        {"{warn}", mixed(base, amber, 0.18)},
    };
    for (const auto& [role, color] : roles) css.replace(QLatin1String(role), color.name());
    return css;
}

constexpr int kFileRole = Qt::UserRole;
constexpr int kNumberRole = Qt::UserRole + 1;

}  // namespace

frmHelp::frmHelp(HelpFile file, const std::vector<HelpPage>& pages, OtherBook otherBook)
    : QWidget(nullptr, Qt::Window), file_(file), pages_(pages), otherBook_(std::move(otherBook)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("ひなた堂ミント ヘルプ － ") + titleOfBook(file));
    // Help is company to the program's windows: it neither keeps the program alive nor ends it.
    setAttribute(Qt::WA_QuitOnClose, false);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(buildContents());
    splitter->addWidget(buildReader());
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    widgets::columnOf(this)->addWidget(splitter);

    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        search_->setFocus();
        search_->selectAll();
    });
    fillContents();
    applyStyle();
    const QFontMetrics metrics = fontMetrics();
    resize(QSize(metrics.height() * 58, metrics.height() * 38).boundedTo(screen()->availableSize() * 9 / 10));
}

QWidget* frmHelp::buildContents() {
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(widgets::kGrid);
    auto* label = new QLabel(QStringLiteral("ことばで探す(&S)"), side);
    search_ = new QLineEdit(side);
    search_->setObjectName(QStringLiteral("search"));
    search_->setPlaceholderText(QStringLiteral("例：端数処理"));
    search_->setClearButtonEnabled(true);
    label->setBuddy(search_);
    contents_ = new QListWidget(side);
    contents_->setObjectName(QStringLiteral("contents"));
    contents_->setAccessibleName(QStringLiteral("ページの一覧"));
    contents_->setWordWrap(true);
    contents_->setSpacing(widgets::kGrid / 4);
    column->addWidget(label);
    column->addWidget(search_);
    column->addWidget(contents_, 1);
    side->setMinimumWidth(fontMetrics().height() * 14);
    connect(search_, &QLineEdit::textChanged, this, [this] {
        fillContents();
        highlight();
    });
    connect(search_, &QLineEdit::returnPressed, this, [this] {
        for (int row = 0; row < contents_->count(); ++row)
            if (contents_->item(row)->flags() & Qt::ItemIsSelectable) return openItem(contents_->item(row));
    });
    connect(contents_, &QListWidget::itemClicked, this, &frmHelp::openItem);
    connect(contents_, &QListWidget::itemActivated, this, &frmHelp::openItem);
    return side;
}

QWidget* frmHelp::buildReader() {
    auto* reader = new QWidget;
    auto* column = new QVBoxLayout(reader);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(widgets::kGrid);
    browser_ = new PageBrowser(pages_);
    browser_->setObjectName(QStringLiteral("page"));
    browser_->setAccessibleName(QStringLiteral("ヘルプの本文"));

    auto* back =
        addTool(QStringLiteral("back"), QStringLiteral("← 戻る"), QStringLiteral("前に見たページ（Alt+←）"));
    auto* forward = addTool(QStringLiteral("forward"), QStringLiteral("進む →"),
                            QStringLiteral("次に見たページ（Alt+→）"));
    auto* smaller = addTool(QStringLiteral("smaller"), QStringLiteral("文字 －"),
                            QStringLiteral("文字を小さく（Ctrl+-）"));
    auto* larger = addTool(QStringLiteral("larger"), QStringLiteral("文字 ＋"),
                           QStringLiteral("文字を大きく（Ctrl++）"));
    smaller->setShortcut(QKeySequence::ZoomOut);
    larger->setShortcut(QKeySequence::ZoomIn);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(back, &QAbstractButton::clicked, browser_, &QTextBrowser::backward);
    connect(forward, &QAbstractButton::clicked, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    connect(smaller, &QAbstractButton::clicked, this, [this] { resizeText(-1); });
    connect(larger, &QAbstractButton::clicked, this, [this] { resizeText(1); });
    connect(browser_, &QTextBrowser::anchorClicked, this, &frmHelp::openLink);
    connect(browser_, &QTextBrowser::sourceChanged, this, &frmHelp::sourceChanged);

    column->addLayout(widgets::buttonRow({back, forward}, {smaller, larger}));
    column->addWidget(browser_, 1);
    return reader;
}

QAbstractButton* frmHelp::addTool(const QString& name, const QString& text, const QString& hint) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(hint);
    return button;
}

void frmHelp::showPage(int number) {
    const HelpPage* page = findPage(pages_, file_, number);
    browser_->setSource(QUrl(pageName(file_, page ? number : 0)));
}

void frmHelp::setSearch(const QString& words) {
    search_->setText(words);
}

void frmHelp::sourceChanged(const QUrl& url) {
    if (const auto place = pageOfName(url.fileName())) number_ = place->second;
    markCurrent();
    highlight();
}

/// The list holds every page that the search leaves, the own book first.
void frmHelp::fillContents() {
    const QSignalBlocker quiet(contents_);
    contents_->clear();
    const QStringList words = searchWords(search_->text());
    std::vector<HelpFile> books = {file_};
    for (HelpFile file : {HelpFile::Mhelp, HelpFile::Jhelp, HelpFile::Shelp})
        if (file != file_) books.push_back(file);
    for (HelpFile book : books) {
        auto* heading = new QListWidgetItem(titleOfBook(book), contents_);
        heading->setFlags(Qt::ItemIsEnabled);
        QFont bold = contents_->font();
        bold.setBold(true);
        heading->setFont(bold);
        heading->setForeground(widgets::accentColor());
        const int before = contents_->count();
        for (const HelpPage& page : pages_) {
            if (page.file != book || !pageHolds(page, words)) continue;
            auto* item = new QListWidgetItem(QStringLiteral("　") + page.title, contents_);
            item->setData(kFileRole, int(page.file));
            item->setData(kNumberRole, page.number);
        }
        if (contents_->count() == before) delete heading;
    }
    if (contents_->count() == 0) {
        auto* none = new QListWidgetItem(
            QStringLiteral("見つかりませんでした。\n短いことばで試してください。"), contents_);
        none->setFlags(Qt::NoItemFlags);
    }
    markCurrent();
}

void frmHelp::markCurrent() {
    const QSignalBlocker quiet(contents_);
    contents_->setCurrentItem(nullptr);
    for (int row = 0; row < contents_->count(); ++row) {
        const QListWidgetItem* item = contents_->item(row);
        if (item->data(kNumberRole).isValid() && item->data(kFileRole).toInt() == int(file_) &&
            item->data(kNumberRole).toInt() == number_)
            contents_->setCurrentRow(row);
    }
}

void frmHelp::openItem(QListWidgetItem* item) {
    if (!item->data(kNumberRole).isValid()) return;
    const auto file = HelpFile(item->data(kFileRole).toInt());
    openLink(QUrl(pageName(file, item->data(kNumberRole).toInt())));
}

void frmHelp::openLink(const QUrl& url) {
    const auto place = pageOfName(url.fileName());
    if (!place) return;
    if (place->first == file_) return showPage(place->second);
    // The other book's window closes this one; not while one of its own events is being handled.
    QTimer::singleShot(0, this, [this, place] { otherBook_(place->first, place->second, search_->text()); });
}

void frmHelp::highlight() {
    QList<QTextEdit::ExtraSelection> marks;
    const QString text = browser_->document()->toPlainText();
    for (const QString& word : searchWords(search_->text()))
        for (const auto& [position, length] : findWord(text, word)) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(browser_->document());
            mark.cursor.setPosition(position);
            mark.cursor.setPosition(position + length, QTextCursor::KeepAnchor);
            mark.format.setBackground(mixed(palette().color(QPalette::Base), widgets::accentColor(), 0.45));
            marks.push_back(mark);
        }
    browser_->setExtraSelections(marks);
    if (marks.isEmpty()) return;
    QTextCursor first = marks.front().cursor;
    for (const auto& mark : marks)
        if (mark.cursor < first) first = mark.cursor;
    first.clearSelection();
    browser_->setTextCursor(first);
}

void frmHelp::applyStyle() {
    const QScopedValueRollback busy(styling_, true);
    browser_->document()->setDefaultStyleSheet(pageStyle(palette()));
    browser_->document()->setDocumentMargin(2 * widgets::kGrid);
    if (!browser_->source().isEmpty()) browser_->reload();
    highlight();
}

void frmHelp::resizeText(int steps) {
    steps > 0 ? browser_->zoomIn(steps) : browser_->zoomOut(-steps);
}

void frmHelp::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || !browser_ || styling_) return;
    fillContents();
    applyStyle();
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

HelpShelf::HelpShelf(forms::GlobalRecord& global) : global_(global) {
    loadResources();
    pages_ = loadHelpPages(kFolder);
}

HelpShelf::~HelpShelf() {
    for (auto& [file, window] : windows_) delete window;
}

void HelpShelf::helpOn(std::optional<HelpTopic> topic) {
    if (!topic) return open(HelpFile::Mhelp);
    help_bunya(global_.help_bunya, global_.app_dir, topic->file, topic->number, *this);
}

void HelpShelf::open(HelpFile file) {
    help_bunya(global_.help_bunya, global_.app_dir, file, std::nullopt, *this);
}

frmHelp* HelpShelf::window(HelpFile file) const {
    const auto found = windows_.find(file);
    return found != windows_.end() && found->second && found->second->isVisible() ? found->second.data()
                                                                                  : nullptr;
}

void HelpShelf::closeAll(HelpFile file) {
    const auto found = windows_.find(file);
    if (found == windows_.end() || !found->second) return;
    if (found->second->isVisible()) lastPlace_ = found->second->geometry();
    found->second->hide();
    found->second->deleteLater();
    windows_.erase(found);
}

void HelpShelf::showTopic(HelpFile file, int number) {
    bring(file).showPage(number);
}

/// The book's window in front; a new one takes the place that the last one had.
frmHelp& HelpShelf::bring(HelpFile file) {
    QPointer<frmHelp>& window = windows_[file];
    if (!window) {
        window = new frmHelp(file, pages_, [this](HelpFile other, int number, const QString& search) {
            openFromOther(other, number, search);
        });
        if (lastPlace_.isValid()) window->setGeometry(lastPlace_);
    }
    window->show();
    window->raise();
    window->activateWindow();
    return *window;
}

void HelpShelf::openFromOther(HelpFile file, int number, const QString& search) {
    help_bunya(global_.help_bunya, global_.app_dir, file, number, *this);
    windows_[file]->setSearch(search);
}

}  // namespace help
