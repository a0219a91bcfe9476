#include "shell/frmSplash1.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QThread>
#include <QWindow>

#include "widgets/form.h"
#include "widgets/theme.h"

namespace shell {

namespace {

using widgets::kGrid;

/// A mint leaf that stands on its stem at `foot`, `height` high, turned by `angle` degrees.
void drawLeaf(QPainter& painter, QPointF foot, double height, double angle, const QColor& color) {
    const double half = height * 0.3;
    QPainterPath leaf;
    leaf.cubicTo({-half * 1.3, -height * 0.25}, {-half, -height * 0.75}, {0, -height});
    leaf.cubicTo({half, -height * 0.75}, {half * 1.3, -height * 0.25}, {0, 0});
    painter.save();
    painter.translate(foot);
    painter.rotate(angle);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(leaf);
    painter.setPen(QPen(QColor(255, 255, 255, 110), height / 60));
    painter.drawLine(QPointF(0, 0), QPointF(0, -height * 0.86));
    for (double at : {0.25, 0.45, 0.65}) {
        const double reach = half * (0.75 - 0.5 * std::abs(at - 0.3));
        painter.drawLine(QPointF(0, -height * at), QPointF(-reach, -height * (at + 0.13)));
        painter.drawLine(QPointF(0, -height * at), QPointF(reach, -height * (at + 0.13)));
    }
    painter.restore();
}

QLabel* label(QWidget* parent, const char* name, const QString& text, double size, bool bold) {
    auto* made = new QLabel(text, parent);
    made->setObjectName(QString::fromUtf8(name));
    QFont font = made->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    made->setFont(font);
    return made;
}

}  // namespace

frmSplash1::frmSplash1(std::chrono::milliseconds wait)
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::SplashScreen), wait_(wait) {
    setObjectName(QStringLiteral("frmSplash1"));
    setWindowTitle(QStringLiteral("ひなた堂ミント"));
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* name = label(this, "Label2", QStringLiteral("ひなた堂ミント"), 2.6, true);
    auto* product = label(this, "lblProductName", QStringLiteral("賞与配分"), 1.6, false);
    auto* forWord = label(this, "Label1", QStringLiteral("for"), 1.0, false);
    auto* platform = label(this, "Label3", QStringLiteral("Windows"), 1.0, true);
    auto* last = new QHBoxLayout;
    last->addWidget(forWord);
    last->addWidget(platform);
    last->addStretch();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(5 * kGrid, 6 * kGrid, 28 * kGrid, 5 * kGrid);
    column->setSpacing(kGrid);
    column->addStretch();
    column->addWidget(name);
    column->addWidget(product);
    column->addSpacing(3 * kGrid);
    column->addLayout(last);
    column->addStretch();
    resize(sizeHint().expandedTo({66 * kGrid, 36 * kGrid}));
    widgets::center_form(this);
}

void frmSplash1::showPainted() {
    show();
    QElapsedTimer timer;
    timer.start();
    // The window system tells when there is something to paint on; the user's input waits.
    do {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50);
    } while (!(windowHandle() && windowHandle()->isExposed()) && timer.elapsed() < 500);
    repaint();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 20);
}

void frmSplash1::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = widgets::accentColor();
    const QColor base = palette().color(QPalette::Base);
    painter.fillRect(rect(), base);
    QColor tint = accent;
    tint.setAlpha(36);
    QLinearGradient light(rect().topRight(), rect().bottomLeft());
    light.setColorAt(0, tint);
    light.setColorAt(0.8, QColor(accent.red(), accent.green(), accent.blue(), 0));
    painter.fillRect(rect(), light);

    // A sun behind three leaves: hinata, the sunny spot, and mint.
    const double unit = height() / 10.0;
    const QPointF ground(width() - 4.6 * unit, height() - 1.6 * unit);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xF5, 0xC6, 0x5B, 150));
    painter.drawEllipse(ground + QPointF(0, -4.4 * unit), 2.6 * unit, 2.6 * unit);
    drawLeaf(painter, ground, 4.6 * unit, -52, accent.lighter(125));
    drawLeaf(painter, ground, 4.6 * unit, 52, accent.lighter(112));
    drawLeaf(painter, ground, 5.8 * unit, 0, accent);

    painter.setBrush(accent);
    painter.setPen(Qt::NoPen);
    painter.drawRect(QRectF(0, 0, kGrid * 0.75, height()));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void frmSplash1::closeEvent(QCloseEvent* event) {
    setCursor(Qt::WaitCursor);
    QThread::msleep(static_cast<unsigned long>(wait_.count()));
    unsetCursor();
    QWidget::closeEvent(event);
}

void frmSplash1::keyPressEvent(QKeyEvent*) {
    close();
}

void frmSplash1::mousePressEvent(QMouseEvent*) {
    close();
}

}  // namespace shell
