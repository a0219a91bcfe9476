#include "widgets/mint_style.h"

#include <QAbstractButton>
#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "widgets/theme.h"

namespace widgets {
namespace {

constexpr qreal kRadius = 5;

/// A box drawn on whole pixels: filled, with a border of `width`.
void drawBox(QPainter* painter, const QRect& rect, const QColor& fill, const QColor& border, qreal width = 1,
             qreal radius = kRadius) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(border.alpha() == 0 ? QPen(Qt::NoPen) : QPen(border, width));
    painter->setBrush(fill);
    const qreal inset = border.alpha() == 0 ? 0 : width / 2;
    painter->drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter->restore();
}

bool has(const QStyleOption* option, QStyle::StateFlag flag) {
    return option->state & flag;
}

QColor mix(const QColor& a, const QColor& b, qreal share) {
    return QColor::fromRgbF(float(a.redF() + (b.redF() - a.redF()) * share),
                            float(a.greenF() + (b.greenF() - a.greenF()) * share),
                            float(a.blueF() + (b.blueF() - a.blueF()) * share));
}

QColor borderOf(const QStyleOption* option) {
    const QPalette& palette = option->palette;
    return has(option, QStyle::State_Enabled)
               ? palette.color(QPalette::Mid)
               : mix(palette.color(QPalette::Mid), palette.color(QPalette::Window), 0.5);
}

bool isTrue(const QWidget* widget, const char* property) {
    return widget && widget->property(property).toBool();
}

void drawField(const QStyleOption* option, QPainter* painter, const QWidget* widget, bool readOnly) {
    const bool enabled = has(option, QStyle::State_Enabled);
    QColor fill = option->palette.color(enabled && !readOnly ? QPalette::Base : QPalette::Window);
    if (isTrue(widget, kNotEnteredProperty)) fill = QColor(kNotEnteredFill);
    if (isTrue(widget, kFaultyProperty))
        drawBox(painter, option->rect, fill, dangerColor(), 2);
    else if (enabled && has(option, QStyle::State_HasFocus))
        drawBox(painter, option->rect, fill, accentColor(), 2);
    else
        drawBox(painter, option->rect, fill, borderOf(option));
}

void drawButton(const QStyleOption* option, QPainter* painter, const QString& role) {
    const QPalette& palette = option->palette;
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool primary = role == u"primary" && enabled;
    QColor fill = primary ? accentColor() : palette.color(enabled ? QPalette::Button : QPalette::Window);
    const QColor towards = palette.color(primary ? QPalette::Shadow : QPalette::ButtonText);
    if (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On))
        fill = mix(fill, towards, 0.16);
    else if (enabled && has(option, QStyle::State_MouseOver))
        fill = mix(fill, towards, 0.06);
    QColor border = primary ? fill : borderOf(option);
    if (role == u"danger" && enabled) border = mix(dangerColor(), fill, 0.35);
    drawBox(painter, option->rect, fill, border);
    if (!has(option, QStyle::State_HasFocus) || !enabled) return;
    // The ring stands inside a filled button, on the border of the others.
    const QRect ring = primary ? option->rect.adjusted(2, 2, -2, -2) : option->rect;
    const QColor colour = primary ? onAccentColor() : role == u"danger" ? dangerColor() : accentColor();
    drawBox(painter, ring, Qt::transparent, colour, primary ? 1.5 : 2, primary ? kRadius - 2 : kRadius);
}

void drawIndicator(const QStyleOption* option, QPainter* painter, bool round) {
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool on = has(option, QStyle::State_On);
    // What a locked option says is read like its text.
    const QColor accent =
        enabled ? accentColor() : option->palette.color(QPalette::Disabled, QPalette::WindowText);
    const QRect box = option->rect;
    const qreal radius = round ? box.height() / 2.0 : 3;
    const bool ring = on || (enabled && has(option, QStyle::State_HasFocus));
    const QColor fill = on ? accent : option->palette.color(enabled ? QPalette::Base : QPalette::Window);
    const QColor idle = enabled ? option->palette.color(QPalette::Dark) : borderOf(option);
    drawBox(painter, box, fill, ring ? accent : idle, ring && !on ? 2 : 1, radius);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QColor mark = enabled ? onAccentColor() : option->palette.color(QPalette::Window);
    const qreal side = box.height();
    if (on && round) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(mark);
        painter->drawEllipse(QRectF(box).center(), side * 0.19, side * 0.19);
    } else if (on) {
        painter->setPen(QPen(mark, side / 8.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF corner = box.topLeft();
        const QPointF tick[] = {corner + QPointF(side * 0.25, side * 0.52),
                                corner + QPointF(side * 0.43, side * 0.70),
                                corner + QPointF(side * 0.76, side * 0.33)};
        painter->drawPolyline(tick, 3);
    } else if (has(option, QStyle::State_NoChange)) {
        painter->fillRect(box.adjusted(4, box.height() / 2 - 1, -4, -box.height() / 2 + 1), accent);
    }
    painter->restore();
}

void drawChevron(const QStyleOption* option, QPainter* painter, const QRect& rect, int down) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QColor ink = option->palette.color(
        has(option, QStyle::State_Enabled) ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText);
    const qreal arm = std::clamp(rect.height() / 7.0, 3.0, 5.5);
    painter->setPen(QPen(ink, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF middle = QRectF(rect).center();
    const QPointF points[] = {middle + QPointF(-arm, -down * arm / 2), middle + QPointF(0, down * arm / 2),
                              middle + QPointF(arm, -down * arm / 2)};
    painter->drawPolyline(points, 3);
    painter->restore();
}

/// The sign of a message box: a disc with one character.
QIcon sign(QChar character, const QColor& colour) {
    QIcon icon;
    for (const int side : {32, 48, 64, 96}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(QRectF(1, 1, side - 2, side - 2));
        QFont font = QApplication::font();
        font.setPixelSize(side * 5 / 8);
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(onAccentColor());
        painter.drawText(picture.rect(), Qt::AlignCenter, character);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

QString roleOf(const QWidget* widget) {
    return widget ? widget->property(kRoleProperty).toString() : QString();
}

}  // namespace

MintStyle::MintStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void MintStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
        case PE_PanelLineEdit: {
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            if (frame && frame->lineWidth <= 0) break;  // inside a combo or spin box
            drawField(option, painter, widget, has(option, State_ReadOnly));
            return;
        }
        case PE_FrameLineEdit:
            return;  // the panel has its border already
        case PE_PanelButtonCommand:
            drawButton(option, painter, roleOf(widget));
            return;
        case PE_FrameFocusRect:
            if (qobject_cast<const QAbstractButton*>(widget)) return;  // they show it as a ring of their own
            if (has(option, State_Selected)) return;                   // a chosen line is seen without one
            break;
        case PE_IndicatorRadioButton:
        case PE_IndicatorCheckBox:
            drawIndicator(option, painter, element == PE_IndicatorRadioButton);
            return;
        case PE_Frame:
            if (has(option, State_HasFocus)) {
                drawBox(painter, option->rect, Qt::transparent, accentColor(), 2);
                return;
            }
            drawBox(painter, option->rect, Qt::transparent, borderOf(option));
            return;
        case PE_FrameGroupBox:
            drawBox(painter, option->rect, Qt::transparent, borderOf(option));
            return;
        default:
            break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void MintStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    if (element != CE_PushButtonLabel) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    auto label = *qstyleoption_cast<const QStyleOptionButton*>(option);
    const QString role = roleOf(widget);
    if (has(option, State_Enabled) && role == u"primary")
        label.palette.setColor(QPalette::ButtonText, onAccentColor());
    if (has(option, State_Enabled) && role == u"danger")
        label.palette.setColor(QPalette::ButtonText, dangerColor());
    QProxyStyle::drawControl(element, &label, painter, widget);
}

void MintStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    const bool combo = control == CC_ComboBox;
    if (!combo && control != CC_SpinBox) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const bool locked = isTrue(widget, kLockedProperty);
    drawField(option, painter, widget, locked);
    if (locked) return;
    const auto part = [&](SubControl sub) { return subControlRect(control, option, sub, widget); };
    if (combo) {
        drawChevron(option, painter, part(SC_ComboBoxArrow), 1);
    } else {
        drawChevron(option, painter, part(SC_SpinBoxUp), -1);
        drawChevron(option, painter, part(SC_SpinBoxDown), 1);
    }
}

int MintStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight: {
            const int height = option   ? option->fontMetrics.height()
                               : widget ? widget->fontMetrics().height()
                                        : 16;
            return std::max(14, height * 4 / 5);
        }
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        case PM_DefaultFrameWidth:
            return 2;
        case PM_FocusFrameHMargin:
            return 6;  // beside the text of list lines and cells
        case PM_MessageBoxIconSize:
            return 36;
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin:
            return widget && widget->isWindow() ? 2 * kGrid : kGrid + kGrid / 2;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int MintStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returnData) const {
    if (hint == SH_UnderlineShortcut) return 1;
    if (hint == SH_ComboBox_Popup) return 0;  // a list under the field, not over it
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

QRect MintStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const QRect told = QProxyStyle::subElementRect(element, option, widget);
    return element == SE_LineEditContents ? told.adjusted(3, 0, -3, 0) : told;
}

QIcon MintStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
        case SP_MessageBoxInformation:
            return sign(u'i', accentColor());
        case SP_MessageBoxQuestion:
            return sign(u'?', accentColor());
        case SP_MessageBoxWarning:
            return sign(u'!', warningColor());
        case SP_MessageBoxCritical:
            return sign(u'×', dangerColor());
        default:
            return QProxyStyle::standardIcon(icon, option, widget);
    }
}

QSize MintStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    const QSize told = QProxyStyle::sizeFromContents(type, option, size, widget);
    const int field = option ? option->fontMetrics.height() + 2 * kGrid - 4 : 0;
    switch (type) {
        case CT_PushButton: {
            const int width = std::max(told.width() + 2 * kGrid, option->fontMetrics.height() * 5);
            return {width, std::max(told.height(), field)};
        }
        case CT_ItemViewItem:
            return {told.width(), std::max(told.height(), option->fontMetrics.height() + kGrid - 2)};
        case CT_LineEdit:
        case CT_ComboBox:
        case CT_SpinBox:
            return {told.width(), std::max(told.height(), field)};
        default:
            return told;
    }
}

}  // namespace widgets
