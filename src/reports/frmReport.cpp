#include "reports/frmReport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "forms/box.h"
#include "forms/guard.h"
#include "reports/ui_chart_picture.h"
#include "reports/ui_page_view.h"
#include "reports/ui_save_dialog.h"
#include "widgets/theme.h"

namespace reports {

namespace {

constexpr std::array kPercents{50, 75, 100, 125, 150, 200};
constexpr int kFitWidth = 0;  // index and data of the two first entries of the zoom list
constexpr int kFitPage = -1;
constexpr int kPdfResolution = 600;
constexpr int kProgressAfterMs = 500;
constexpr QSize kWindow{920, 820};
constexpr int kWidestBar = 1100;  ///< beside it "グラフを付ける" still has to fit

}  // namespace

namespace {

Report withOrigin(Report report, const ListTitle& whose) {
    report.setOrigin(originLine(whose));
    return report;
}

}  // namespace

frmReport::frmReport(Report report, const ListTitle& whose, QWidget* parent)
    : Form(QStringLiteral("frmReport"), report.title(), parent),
      painter_(withOrigin(std::move(report), whose)),
      fileStem_(fileStem(whose)) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    view_ = make<PageView>(QStringLiteral("PageView"), painter_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, widgets::kGrid, 0, 0);
    buildToolbar();
    layout->addWidget(view_, 1);
    connectKeys();
    resize(kWindow);
    showPageCount();
    showPage(1);
    view_->setFocus();
}

void frmReport::buildToolbar() {
    first_ = make<QPushButton>(QStringLiteral("cmdFirst"), tr("先頭(&F)"));
    previous_ = make<QPushButton>(QStringLiteral("cmdPrevious"), tr("前へ(&B)"));
    auto* caption = make<QLabel>(QStringLiteral("lblPage"), tr("ページ(&G)"));
    pageField_ = make<QSpinBox>(QStringLiteral("txtPage"));
    pageField_->setKeyboardTracking(false);
    pageField_->setAccessibleName(tr("ページ番号"));
    caption->setBuddy(pageField_);
    pages_ = make<QLabel>(QStringLiteral("lblPages"), QString());
    next_ = make<QPushButton>(QStringLiteral("cmdNext"), tr("次へ(&N)"));
    last_ = make<QPushButton>(QStringLiteral("cmdLast"), tr("最終(&L)"));
    auto* zoomCaption = make<QLabel>(QStringLiteral("lblZoom"), tr("倍率(&Z)"));
    zoom_ = make<QComboBox>(QStringLiteral("cboZoom"));
    zoom_->setAccessibleName(tr("表示の倍率"));
    zoomCaption->setBuddy(zoom_);
    zoom_->addItem(tr("幅に合わせる"), kFitWidth);
    zoom_->addItem(tr("ページ全体"), kFitPage);
    for (const int percent : kPercents) zoom_->addItem(QStringLiteral("%1 %").arg(percent), percent);
    withCharts_ = make<QCheckBox>(QStringLiteral("chkCharts"), tr("グラフを付ける(&R)"));
    withCharts_->hide();
    auto* pdf = make<QPushButton>(QStringLiteral("cmdPdf"), tr("PDF 保存(&S)"));
    auto* print = make<QPushButton>(QStringLiteral("cmdPrint"), tr("印刷(&P)"));
    auto* close = make<QPushButton>(QStringLiteral("cmdClose"), tr("閉じる(&C)"));
    widgets::setPrimary(print);
    setCancelButton(close);
    setTabOrder(close, view_);

    auto* moves = new QHBoxLayout;
    for (QWidget* widget :
         std::initializer_list<QWidget*>{first_, previous_, caption, pageField_, pages_, next_, last_})
        moves->addWidget(widget);
    moves->addStretch(1);
    auto* actions = new QHBoxLayout;
    actions->addStretch(1);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{zoomCaption, zoom_, withCharts_, pdf, print, close})
        actions->addWidget(widget);
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(widgets::kGrid, 0, widgets::kGrid, 0);
    for (QHBoxLayout* row : {moves, actions}) {
        row->setSpacing(widgets::kGrid);
        bar->addLayout(row);
    }
    bar->setSpacing(widgets::kGrid);
    // With a large font the two halves stand under one another.
    if (bar->minimumSize().width() > kWidestBar) bar->setDirection(QBoxLayout::TopToBottom);
    static_cast<QVBoxLayout*>(layout())->addLayout(bar);

    connect(first_, &QPushButton::clicked, this, [this] { showPage(1); });
    connect(previous_, &QPushButton::clicked, this, [this] { showPage(page_ - 1); });
    connect(next_, &QPushButton::clicked, this, [this] { showPage(page_ + 1); });
    connect(last_, &QPushButton::clicked, this, [this] { showPage(pageCount()); });
    connect(pageField_, &QSpinBox::valueChanged, this, &frmReport::showPage);
    connect(view_, &PageView::pageWheeled, this, [this](int pages) { showPage(page_ + pages); });
    connect(zoom_, &QComboBox::currentIndexChanged, this, [this] {
        const int value = zoom_->currentData().toInt();
        view_->setZoom(value == kFitWidth  ? PageView::Zoom::FitWidth
                       : value == kFitPage ? PageView::Zoom::FitPage
                                           : PageView::Zoom::Percent,
                       value);
    });
    connect(withCharts_, &QCheckBox::toggled, this, &frmReport::attachCharts);
    connect(pdf, &QPushButton::clicked, this, &frmReport::savePdfWithDialog);
    connect(print, &QPushButton::clicked, this, &frmReport::printWithDialog);
    connect(close, &QPushButton::clicked, this, &frmReport::reject);
}

void frmReport::connectKeys() {
    const auto key = [this](const QKeySequence& sequence, auto action) {
        connect(new QShortcut(sequence, this), &QShortcut::activated, this, action);
    };
    key(Qt::Key_PageDown, [this] { showPage(page_ + 1); });
    key(Qt::Key_PageUp, [this] { showPage(page_ - 1); });
    key(Qt::Key_Home, [this] { showPage(1); });
    key(Qt::Key_End, [this] { showPage(pageCount()); });
    key(Qt::CTRL | Qt::Key_P, [this] { printWithDialog(); });
    key(Qt::CTRL | Qt::Key_S, [this] { savePdfWithDialog(); });
    key(Qt::CTRL | Qt::Key_Plus, [this] { stepZoom(1); });
    // "+" without the shift key, and on a Japanese keyboard.
    key(Qt::CTRL | Qt::Key_Equal, [this] { stepZoom(1); });
    key(Qt::CTRL | Qt::Key_Semicolon, [this] { stepZoom(1); });
    key(Qt::CTRL | Qt::Key_Minus, [this] { stepZoom(-1); });
}

void frmReport::offerCharts(std::function<std::vector<Chart>()> charts) {
    charts_ = std::move(charts);
    withCharts_->show();
}

/// The charts are read when they are wanted for the first time.
void frmReport::attachCharts(bool attach) {
    const bool done = forms::guarded(this, [this, attach] {
        std::vector<ReportPainter::ExtraPage> pages;
        if (attach) pages = chartPages(charts_(), painter_.aspectRatio() < 1);
        painter_.setAppendix(std::move(pages));
    });
    if (!done) {
        const QSignalBlocker quiet(withCharts_);
        withCharts_->setChecked(false);
    }
    showPageCount();
    showPage(attach && done ? pageCount() : page_);
}

void frmReport::showPageCount() {
    const QSignalBlocker quiet(pageField_);
    pageField_->setRange(1, pageCount());
    pages_->setText(tr("全 %1 ページ").arg(pageCount()));
}

void frmReport::showPage(int page) {
    page_ = std::clamp(page, 1, pageCount());
    const QSignalBlocker quiet(pageField_);
    pageField_->setValue(page_);
    view_->showPage(page_);
    first_->setEnabled(page_ > 1);
    previous_->setEnabled(page_ > 1);
    next_->setEnabled(page_ < pageCount());
    last_->setEnabled(page_ < pageCount());
}

void frmReport::setZoom(int percent) {
    const int index = zoom_->findData(std::clamp(percent, kPercents.front(), kPercents.back()));
    if (index >= 0) zoom_->setCurrentIndex(index);
}

/// To the next larger or smaller step from what is seen now.
void frmReport::stepZoom(int direction) {
    const int now = view_->effectivePercent();
    if (direction > 0) {
        const auto larger = std::upper_bound(kPercents.begin(), kPercents.end(), now);
        setZoom(larger == kPercents.end() ? kPercents.back() : *larger);
    } else {
        const auto notSmaller = std::lower_bound(kPercents.begin(), kPercents.end(), now);
        setZoom(notSmaller == kPercents.begin() ? kPercents.front() : *std::prev(notSmaller));
    }
}

bool frmReport::printOn(QPagedPaintDevice& device, int first, int last) {
    QProgressDialog progress(tr("ページを出力しています。"), tr("中止"), 0, last - first + 1, this);
    progress.setWindowTitle(windowTitle());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(kProgressAfterMs);
    const bool done = painter_.print(device, first, last, [&progress](int pages) {
        progress.setValue(pages);
        return !progress.wasCanceled();
    });
    if (!done && !progress.wasCanceled())
        forms::tell(this, tr("ページを出力できません。"), windowTitle(), forms::BoxIcon::Critical);
    return done;
}

bool frmReport::savePdf(const QString& path) {
    QSaveFile file(path);
    const auto fail = [&] {
        forms::tell(this, tr("PDF ファイルを保存できません。\n%1\n%2").arg(path, file.errorString()),
                    windowTitle(), forms::BoxIcon::Critical);
        return false;
    };
    if (!file.open(QIODevice::WriteOnly)) return fail();
    bool done = false;
    {
        QPdfWriter pdf(&file);
        pdf.setTitle(painter_.report().title());
        pdf.setCreator(QStringLiteral("ひなた堂ミント"));
        pdf.setResolution(kPdfResolution);
        painter_.setPaper(pdf);
        done = printOn(pdf, 1, pageCount());
    }
    if (!done) {
        file.cancelWriting();
        return false;
    }
    return file.commit() || fail();
}

void frmReport::savePdfWithDialog() {
    const QString path =
        askWhereToSave(this, {tr("PDF 保存"), tr("PDF ファイル (*.pdf)"), QStringLiteral("pdf")}, fileStem_);
    if (!path.isEmpty() && savePdf(path))
        forms::tell(this, tr("PDF ファイルを保存しました。\n%1").arg(QDir::toNativeSeparators(path)),
                    windowTitle(), forms::BoxIcon::Information);
}

void frmReport::printWithDialog() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(painter_.report().title());
    painter_.setPaper(printer);
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setMinMax(1, pageCount());
    dialog.setFromTo(1, pageCount());
    if (dialog.exec() != QDialog::Accepted) return;
    int first = 1;
    int last = pageCount();
    if (dialog.printRange() == QAbstractPrintDialog::PageRange) {
        first = std::clamp(dialog.fromPage(), 1, pageCount());
        last = std::clamp(dialog.toPage(), first, pageCount());
    } else if (dialog.printRange() == QAbstractPrintDialog::CurrentPage) {
        first = last = page_;
    }
    printOn(printer, first, last);
}

}  // namespace reports
