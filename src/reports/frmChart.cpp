#include "reports/frmChart.h"

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSaveFile>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "forms/box.h"
#include "reports/ui_chart_view.h"
#include "reports/ui_save_dialog.h"
#include "widgets/layout.h"

namespace reports {
namespace {

constexpr QSize kWindow{920, 680};
constexpr QSize kPicture{1600, 1000};

}  // namespace

frmChart::frmChart(std::vector<Chart> charts, const QString& subject, QWidget* parent)
    : Form(QStringLiteral("frmChart"), QStringLiteral("グラフ"), parent), charts_(std::move(charts)) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* title = make<QLabel>(QStringLiteral("lblTitle"), QStringLiteral("グラフ"));
    auto* whose = make<QLabel>(QStringLiteral("lblSubject"), subject);
    tabs_ = make<QTabWidget>(QStringLiteral("tabCharts"));
    tabs_->setDocumentMode(true);
    tabs_->setAccessibleName(QStringLiteral("グラフの種類"));
    for (const Chart& chart : charts_)
        tabs_->addTab(page(chart), QStringLiteral("%1(&%2)").arg(chart.name).arg(tabs_->count() + 1));
    told_ = make<QLabel>(QStringLiteral("lblPoint"));
    told_->setWordWrap(true);
    told_->setMinimumHeight(2 * fontMetrics().lineSpacing());
    auto* save = make<QPushButton>(QStringLiteral("cmdSave"), QStringLiteral("画像で保存(&S)"));
    auto* close = make<QPushButton>(QStringLiteral("cmdClose"), QStringLiteral("閉じる(&C)"));
    widgets::setPrimary(save);
    setCancelButton(close);
    connect(save, &QPushButton::clicked, this, &frmChart::saveWithDialog);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(tabs_, &QTabWidget::currentChanged, this, [this, save] {
        tell({});
        save->setEnabled(itemCount(inSight()) > 0);
        // A tab chosen by its key is to be read; arrows on the tabs themselves go on to the next tab.
        if (!tabs_->tabBar()->hasFocus()) tabs_->currentWidget()->setFocus();
    });
    save->setEnabled(itemCount(inSight()) > 0);
    tell({});

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, whose));
    column->addWidget(tabs_, 1);
    column->addWidget(told_);
    column->addLayout(widgets::buttonRow({}, {close, save}));
    resize(kWindow);
    tabs_->currentWidget()->setFocus();
}

/// The chart, or what to do where there is nothing to show.
QWidget* frmChart::page(const Chart& chart) {
    if (itemCount(chart) > 0) {
        auto* view = new ChartView(chart, this);
        connect(view, &ChartView::pointed, this, &frmChart::tell);
        return view;
    }
    auto* empty = new QLabel(chart.empty, this);
    empty->setAlignment(Qt::AlignCenter);
    empty->setWordWrap(true);
    empty->setFocusPolicy(Qt::StrongFocus);
    widgets::setTone(empty, widgets::Tone::Muted);
    return empty;
}

const Chart& frmChart::inSight() const {
    return charts_.at(static_cast<std::size_t>(tabs_->currentIndex()));
}

void frmChart::tell(const QString& text) {
    const bool nothing = text.isEmpty();
    widgets::setTone(told_, nothing ? widgets::Tone::Muted : widgets::Tone::Normal);
    if (!nothing)
        told_->setText(text);
    else
        told_->setText(
            itemCount(inSight()) == 0
                ? QString()
                : QStringLiteral("グラフにマウスを合わせるか、矢印キーで動くと、内容がここに出ます。"));
}

bool frmChart::savePicture(const QString& path) {
    QImage image(kPicture, QImage::Format_RGB32);
    image.fill(widgets::paperChartColors().ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintChart(painter, image.rect(), inSight());
    painter.end();
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit()) return true;
    forms::tell(this, QStringLiteral("画像を保存できません。\n%1\n%2").arg(path, file.errorString()),
                windowTitle(), forms::BoxIcon::Critical);
    return false;
}

void frmChart::saveWithDialog() {
    const QString path = askWhereToSave(
        this, {QStringLiteral("画像で保存"), QStringLiteral("画像 (*.png)"), QStringLiteral("png")},
        inSight().title);
    if (!path.isEmpty() && savePicture(path))
        tell(QStringLiteral("保存しました: %1").arg(QDir::toNativeSeparators(path)));
}

}  // namespace reports
