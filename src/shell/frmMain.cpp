#include "shell/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QSessionManager>
#include <QStatusBar>
#include <QStyle>
#include <cstdlib>

#include "forms/box.h"
#include "forms/global_record.h"
#include "help/frmHelp.h"
#include "widgets/form.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace shell {

namespace {

using widgets::kGrid;
using widgets::twips;

constexpr int kNew = 0;
constexpr int kExit = 9;

struct FileEntry {
    const char* caption;  ///< none: a separator
    const char* screen;   ///< none: dealt with by the window itself
};
constexpr FileEntry kFileMenu[] = {
    {"新規作成(&N)...", "frmKaisyaShinki"},
    {"会社指定(&O)...", "frmDBSentaku"},
    {},
    {"ﾊﾟｽﾜｰﾄﾞの設定(&P)...", "frmPassword"},
    {"ﾊﾞｯｸｱｯﾌﾟ(&B)...", "frmBackup"},
    {"最適化(&S)...", "frmSaiteki"},
    {},
    {"会社削除(&D)...", "frmKaisyaSakujo"},
    {},
    {"ひなた堂ミントの終了(&E)", nullptr},
};
constexpr const char* kHelpMenu[] = {"ﾒﾆｭｰ画面ﾄﾋﾟｯｸの検索(&M)...", "基本事項ﾄﾋﾟｯｸの検索(&J)...",
                                     "賞与配分ﾄﾋﾟｯｸの検索(&S)...", "ﾊﾞｰｼﾞｮﾝ情報(&A)..."};

/// The window's pointer while an entry works.
class Hourglass {
  public:
    explicit Hourglass(QWidget* window) : window_(window) { window_->setCursor(Qt::WaitCursor); }
    ~Hourglass() { window_->unsetCursor(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    QWidget* window_;
};

/// A panel of the status bar: text that does not fit ends in dots and is told in full by a tool tip.
class Panel : public QLabel {
  public:
    explicit Panel(QWidget* parent) : QLabel(parent) {
        setTextFormat(Qt::PlainText);
        setContentsMargins(kGrid, kGrid / 2, kGrid, kGrid / 2);
    }
    QSize minimumSizeHint() const override { return {8 * kGrid, QLabel::minimumSizeHint().height()}; }

  protected:
    void paintEvent(QPaintEvent*) override {
        const QRect room = contentsRect();
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room.width());
        setToolTip(shown == text() ? QString() : text());
        QPainter painter(this);
        style()->drawItemText(&painter, room, Qt::AlignVCenter | Qt::AlignLeft, palette(), isEnabled(), shown,
                              foregroundRole());
    }
};

}  // namespace

frmMain::frmMain(forms::House& house, help::HelpShelf& help) : house_(house), help_(help) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("ひなた堂ミント"));
    setMinimumSize(twips(11520), twips(8040));
    buildMenus();
    buildStatusBar();
    setCentralWidget(buildArea());
    Command1_->hide();
    resize(twips(12000), twips(8600));
    widgets::center_form(this);
    house_.global.panelsChanged = [this] { showPanels(); };
    showPanels();
    const auto sessionEnds = [this](QSessionManager& session) {
        // Where nothing may be asked the process just ends: what is not committed is taken back.
        if (session.allowsInteraction() && !exitProgram()) session.cancel();
    };
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, sessionEnds, Qt::DirectConnection);
}

frmMain::~frmMain() {
    house_.global.panelsChanged = {};
}

void frmMain::addEntry(QMenu* menu, const QString& array, int index, const QString& caption) {
    QAction* action = caption.isEmpty() ? menu->addSeparator() : menu->addAction(caption);
    action->setObjectName(array + u'_' + QString::number(index));
    action->setMenuRole(QAction::NoRole);
}

void frmMain::buildMenus() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("ﾌｧｲﾙ(&F)"));
    file->setObjectName(QStringLiteral("mnuFile"));
    int index = 0;
    for (const FileEntry& entry : kFileMenu) {
        addEntry(file, QStringLiteral("mnuFileNo"), index, QString::fromUtf8(entry.caption));
        QAction* action = file->actions().back();
        action->setEnabled(!entry.screen || house_.screens.has(QString::fromUtf8(entry.screen)));
        connect(action, &QAction::triggered, this, [this, index] { mnuFileNo_Click(index); });
        ++index;
    }
    QMenu* help = menuBar()->addMenu(QStringLiteral("ﾍﾙﾌﾟ(&H)"));
    help->setObjectName(QStringLiteral("mnuHelp"));
    index = 0;
    for (const char* caption : kHelpMenu) {
        addEntry(help, QStringLiteral("mnuHelpNo"), index, QString::fromUtf8(caption));
        connect(help->actions().back(), &QAction::triggered, this, [this, index] { mnuHelpNo_Click(index); });
        ++index;
    }
}

void frmMain::buildStatusBar() {
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    statusBar()->setSizeGripEnabled(false);
    for (size_t i = 0; i < panels_.size(); ++i) {
        panels_[i] = new Panel(statusBar());
        panels_[i]->setObjectName(QStringLiteral("Panels_%1").arg(i + 1));
        statusBar()->addWidget(panels_[i], i == 2 ? 1 : 2);
    }
    panels_[1]->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);  // the run's date is never cut
}

/// The area behind the menus: MENUの表示 at the right, and in the middle what to do next.
QWidget* frmMain::buildArea() {
    auto* area = new QWidget(this);
    Command1_ = new QPushButton(QStringLiteral("MENUの表示"), area);
    Command1_->setObjectName(QStringLiteral("Command1"));
    widgets::setPrimary(Command1_);
    auto* card = new widgets::Card(area);
    card->setMinimumWidth(56 * kGrid);
    areaTitle_ = new QLabel(card);
    areaTitle_->setTextFormat(Qt::PlainText);
    areaTitle_->setWordWrap(true);
    widgets::setTone(areaTitle_, widgets::Tone::Title);
    areaText_ = new QLabel(card);
    areaText_->setTextFormat(Qt::PlainText);
    areaText_->setWordWrap(true);
    widgets::setTone(areaText_, widgets::Tone::Muted);
    open_ = new QPushButton(QStringLiteral("会社を開く(&O)"), card);
    open_->setObjectName(QStringLiteral("StartOpen"));
    open_->setEnabled(house_.screens.has(QStringLiteral("frmDBSentaku")));
    widgets::setPrimary(open_);
    card->body()->setSpacing(2 * kGrid);
    card->body()->addWidget(areaTitle_);
    card->body()->addWidget(areaText_);
    make_ = new QPushButton(QStringLiteral("新しい会社を作る(&W)..."), card);
    make_->setObjectName(QStringLiteral("StartNew"));
    make_->setEnabled(house_.screens.has(QString::fromUtf8(kFileMenu[kNew].screen)));
    auto* ways = new QHBoxLayout;
    ways->addWidget(open_);
    ways->addWidget(make_);
    ways->addStretch(1);
    card->body()->addLayout(ways);
    place_ = new QLabel(card);
    place_->setTextFormat(Qt::PlainText);
    place_->setWordWrap(true);
    widgets::setTone(place_, widgets::Tone::Muted);
    elsewhere_ = new QPushButton(QStringLiteral("変更(&L)..."), card);
    elsewhere_->setObjectName(QStringLiteral("StartPlace"));
    elsewhere_->setAccessibleName(QStringLiteral("データの場所を変更"));
    auto* place = new QHBoxLayout;
    place->addWidget(place_, 1);
    place->addWidget(elsewhere_);
    card->body()->addLayout(place);

    auto* top = new QHBoxLayout;
    top->addStretch();
    top->addWidget(Command1_);
    auto* middle = new QHBoxLayout;
    middle->addStretch(1);
    middle->addWidget(card, 3);
    middle->addStretch(1);
    auto* column = widgets::columnOf(area);
    column->addLayout(top);
    column->addStretch(1);
    column->addLayout(middle);
    column->addStretch(2);
    connect(open_, &QPushButton::clicked, this, [this] { mnuFileNo_Click(1); });
    connect(make_, &QPushButton::clicked, this, [this] { mnuFileNo_Click(kNew); });
    connect(elsewhere_, &QPushButton::clicked, this, [this] { choosePlace(); });
    connect(Command1_, &QPushButton::clicked, this, [this] { openScreen(QStringLiteral("frmMenu000")); });
    for (QPushButton* button : {Command1_, open_, make_, elsewhere_})
        button->setAutoDefault(true);  // Enter presses it
    open_->setFocus();
    return area;
}

void frmMain::showPanels() {
    const forms::Panels& panels = house_.global.panels;
    panels_[0]->setText(panels.company);
    panels_[1]->setText(panels.run);
    panels_[2]->setText(panels.folder);
    const bool companyOpen = house_.global.companyOpen();
    areaTitle_->setText(companyOpen ? panels.company : windowTitle());
    areaText_->setText(companyOpen ? QStringLiteral("この会社を開いています。メニューを閉じたときは、右上の"
                                                    "［MENUの表示］を押すと作業を続けられます。")
                                   : QStringLiteral("賞与の配分を始めるには、処理する会社を開きます。はじめて"
                                                    "のときは、新しい会社を作ります。"));
    for (QPushButton* way : {open_, make_}) way->setVisible(!companyOpen);
    place_->setText(QStringLiteral("データの場所： ") + QDir::toNativeSeparators(house_.global.dataDir()));
    place_->setVisible(!companyOpen);
    // A folder that is carried about as a whole keeps its companies.
    elsewhere_->setVisible(!companyOpen &&
                           QDir(house_.global.app_dir) != QDir(QCoreApplication::applicationDirPath()));
}

void frmMain::openScreen(const QString& name) {
    const QPointer<QDialog> screen(house_.screens.create(name, house_, this));
    if (!screen) return;
    const Hourglass pointer(this);
    screen->exec();
    delete screen.data();
    // Control is back: the way on has the focus, not a button that was hidden meanwhile.
    (open_->isVisible() ? open_ : Command1_)->setFocus();
}

void frmMain::mnuFileNo_Click(int index) {
    const Hourglass pointer(this);
    if (index == 1) return chooseCompany();
    if (index == kExit) {
        exitProgram();
        return;
    }
    openScreen(QString::fromUtf8(kFileMenu[index].screen));
}

/// One company at a time: the open one is closed before another is chosen, and stays closed when none is
/// chosen then.
void frmMain::chooseCompany() {
    forms::GlobalRecord& global = house_.global;
    if (global.companyOpen()) {
        if (!forms::ask(this,
                        QStringLiteral("『") + global.panels.company +
                            QStringLiteral("』を閉じて、別の会社を指定しますか？"),
                        QStringLiteral("データ指定の確認")))
            return;
        global.closeCompany();
        global.setCompanyPanel(forms::kNoCompanyPrompt);
        Command1_->hide();
    }
    openScreen(QStringLiteral("frmDBSentaku"));
}

void frmMain::choosePlace() {
    forms::GlobalRecord& global = house_.global;
    const QString folder = QFileDialog::getExistingDirectory(
        this, QStringLiteral("会社のデータを置くフォルダ（この中に Data が作られます）"), global.app_dir);
    if (folder.isEmpty()) return;
    try {
        company::chooseProgramFolder(folder);
    } catch (const store::Error& error) {
        forms::tell(this, error.text(), QStringLiteral("データの場所"), forms::BoxIcon::Warning);
        return;
    }
    global.app_dir = folder;
    QDir::setCurrent(folder);
    showPanels();
}

void frmMain::mnuHelpNo_Click(int index) {
    constexpr help::HelpFile kBooks[] = {help::HelpFile::Mhelp, help::HelpFile::Jhelp, help::HelpFile::Shelp};
    if (index < 3)
        help_.open(kBooks[index]);
    else
        openScreen(QStringLiteral("frmAbout"));
}

bool frmMain::exitProgram() {
    if (!forms::ask(this, QStringLiteral("終了しますか？"), QStringLiteral("終了の確認"))) return false;
    help::closeEveryHelp(help_);
    if (house_.global.companyOpen()) house_.global.closeCompany();
    QDir::setCurrent(house_.global.app_dir);
    // With a screen still up (the desktop ends the session) nothing may run on: the screen's company is gone.
    if (house_.endProcess || QApplication::activeModalWidget())
        forms::endProcess(house_);
    else
        QCoreApplication::exit(EXIT_SUCCESS);
    return true;
}

/// The close box never closes the window: it asks, and a Yes ends the process. A close that does not come
/// from the user asks too and is let through.
void frmMain::closeEvent(QCloseEvent* event) {
    event->setAccepted(!event->spontaneous());
    mnuFileNo_Click(kExit);
}

bool frmMain::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && house_.global.panels.company.isEmpty())
        house_.global.setCompanyPanel(forms::kNoCompanyPrompt);
    return QMainWindow::event(event);
}

}  // namespace shell
