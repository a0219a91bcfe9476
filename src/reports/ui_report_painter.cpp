#include "reports/ui_report_painter.h"

#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>

namespace reports {

namespace {

constexpr int kPadding = 70;  // between a control's edge and its text
constexpr double kSmallestText =
    0.75;  // a text is narrowed to this share of its size, then cut with an ellipsis

// Paper is white whatever the scheme of the screens is.
const QColor kInk(0x1a, 0x1f, 0x1d);
const QColor kMutedInk(0x5c, 0x66, 0x62);
const QColor kStrongRule(0x33, 0x3d, 0x39);
const QColor kLightRule(0xc9, 0xd2, 0xce);

struct TextLook {
    int size = 0;  // twips; 20 to a point
    bool bold = false;
    QColor ink;
};

constexpr Style kStyles[] = {Style::Title, Style::Subtitle, Style::Notice, Style::Heading,
                             Style::Body,  Style::Total,    Style::Footer};

TextLook textLook(Style style) {
    switch (style) {
        case Style::Title:
            return {340, true, kInk};
        case Style::Subtitle:
            return {220, false, kInk};
        case Style::Heading:
            return {180, true, kInk};
        case Style::Total:
            return {190, true, kInk};
        case Style::Footer:
            return {170, false, kMutedInk};
        case Style::Notice:
        case Style::Body:
            break;
    }
    return {190, false, kInk};
}

QFont fontOf(const TextLook& look) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(look.size);
    font.setBold(look.bold);
    // Shaping takes other glyphs for digits beside Latin letters; a PDF file cannot tell which characters
    // those were, and its text loses them when it is searched or copied.
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

void paintRule(QPainter& painter, const Control& control, const QRectF& box) {
    const bool strong = control.style == Style::Heading;
    painter.fillRect(QRectF(box.left(), box.top(), box.width(), strong ? 16 : 8),
                     strong ? kStrongRule : kLightRule);
}

/// A text on its one line: what would break the line or show as an empty box leaves a blank.
QString onOneLine(QString text) {
    text.remove(u'\r');
    for (QChar& c : text) {
        const QChar::Category category = c.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            c = u' ';
    }
    return text;
}

/// An amount must never lose a digit: it is narrowed as far as it takes, where a text may be cut.
bool mayBeCut(const Control& control) {
    return control.format != Format::Grouped;
}

}  // namespace

ReportPainter::Look::Look(Style style)
    : font(fontOf(textLook(style))), metrics(font), ink(textLook(style).ink) {}

ReportPainter::ReportPainter(Report report) : report_(std::move(report)), pagination_(report_) {
    for (const Style style : kStyles) looks_.emplace_back(style);
}

double ReportPainter::aspectRatio() const {
    const Paper paper = report_.design().paper;
    return double(paperWidth(paper)) / paperHeight(paper);
}

void ReportPainter::paintText(QPainter& painter, const Control& control, const QRectF& box,
                              const QString& content) const {
    if (content.isEmpty()) return;
    const Look& look = looks_[static_cast<std::size_t>(control.style)];
    QString text = onOneLine(content);
    QFont font = look.font;
    const double width = look.metrics.horizontalAdvance(text);
    if (width > box.width()) {
        double share = box.width() / width;
        if (mayBeCut(control)) share = std::max(share, kSmallestText);
        // One unit less, so that rounded advances still fit.
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * share) - 1));
        if (mayBeCut(control)) text = QFontMetricsF(font).elidedText(text, Qt::ElideRight, box.width());
    }
    const Qt::Alignment align = control.align == Align::Left     ? Qt::AlignLeft
                                : control.align == Align::Center ? Qt::AlignHCenter
                                                                 : Qt::AlignRight;
    painter.setFont(font);
    painter.setPen(look.ink);
    painter.drawText(box, static_cast<int>(align | Qt::AlignVCenter) | Qt::TextSingleLine, text);
}

void ReportPainter::paintBand(QPainter& painter, Section section, int top, int row, int page,
                              bool firstOnPage) const {
    const Design& design = report_.design();
    const int left = (paperWidth(design.paper) - design.width) / 2;
    for (const Control& control : design.band(section).controls) {
        if (!report_.isVisible(control)) continue;
        // Nothing leaves the design's width, whatever was set at run time.
        const int width = std::min(control.width, design.width - control.left);
        const QRectF box(left + control.left, top + control.top, width, control.height);
        if (control.kind == ControlKind::Line) {
            paintRule(painter, control, box);
            continue;
        }
        const QString text = report_.textOf(control, row, page);
        if (control.hideRepeated && !firstOnPage && text == report_.textOf(control, row - 1, page)) continue;
        paintText(painter, control, box.adjusted(kPadding, 0, -kPadding, 0), text);
    }
}

void ReportPainter::paint(QPainter& painter, const QRectF& target, int number) const {
    const Paper paper = report_.design().paper;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(target.topLeft());
    painter.scale(target.width() / paperWidth(paper), target.height() / paperHeight(paper));

    const int own = pagination_.pageCount();
    if (number <= own)
        paintOwnPage(painter, number);
    else
        paintExtraPage(painter, static_cast<std::size_t>(number - own - 1));
    const int footer = paperHeight(paper) - kVerticalMargin - report_.bandHeight(Section::Section3);
    paintBand(painter, Section::Section3, footer, 0, number, true);
    painter.restore();
}

void ReportPainter::paintOwnPage(QPainter& painter, int number) const {
    const Pagination::Page page = pagination_.page(number);
    int top = kVerticalMargin;
    const auto band = [&](Section section, int row, bool first) {
        paintBand(painter, section, top, row, number, first);
        top += report_.bandHeight(section);
    };
    if (page.reportHeader) band(Section::Section4, 0, true);
    band(Section::Section2, 0, true);
    for (int i = 0; i < page.rowCount; ++i) band(Section::Section1, page.firstRow + i, i == 0);
    if (page.reportFooter && report_.rowCount() > 0) band(Section::Section5, 0, true);
}

void ReportPainter::paintExtraPage(QPainter& painter, std::size_t number) const {
    const Design& design = report_.design();
    const int height =
        paperHeight(design.paper) - 2 * kVerticalMargin - report_.bandHeight(Section::Section3);
    appendix_[number](painter, QRectF((paperWidth(design.paper) - design.width) / 2.0, kVerticalMargin,
                                      design.width, height));
}

void ReportPainter::setPaper(QPagedPaintDevice& device) const {
    const bool portrait = report_.design().paper == Paper::A4Portrait;
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                     portrait ? QPageLayout::Portrait : QPageLayout::Landscape, QMarginsF()));
}

bool ReportPainter::print(QPagedPaintDevice& device, int first, int last, const Progress& progress) const {
    // The bands carry their own margins: the page is addressed from the corner of the paper.
    QPageLayout layout = device.pageLayout();
    layout.setMode(QPageLayout::FullPageMode);
    device.setPageLayout(layout);
    QPainter painter;
    if (!painter.begin(&device)) return false;
    const QSizeF room(device.width(), device.height());
    const QSizeF paper = QSizeF(aspectRatio(), 1).scaled(room, Qt::KeepAspectRatio);
    const QRectF paperRect(QPointF((room.width() - paper.width()) / 2, (room.height() - paper.height()) / 2),
                           paper);
    for (int number = first; number <= last; ++number) {
        if (number > first && !device.newPage()) return false;
        paint(painter, paperRect, number);
        if (progress && !progress(number - first + 1)) return false;
    }
    return painter.end();
}

}  // namespace reports
