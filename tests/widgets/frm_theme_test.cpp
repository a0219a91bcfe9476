#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "widgets/option_row.h"
#include "widgets/record_bar.h"
#include "widgets/theme.h"

namespace {

using namespace widgets;
using namespace Qt::StringLiterals;

constexpr double kLegible = 4.5;

double luminance(const QColor& colour) {
    const auto part = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

/// The strongest contrast between the ground at the edge and what is drawn on it.
double drawnContrast(QWidget& widget, const QRect& part) {
    const QImage picture = widget.grab(part).toImage();
    const QColor ground = picture.pixelColor(part.width() / 2, 1);
    double most = 1;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            most = std::max(most, contrast(picture.pixelColor(x, y), ground));
    return most;
}

QColor ofSheet(const QString& property) {
    const QRegularExpression named(u"[^-]%1: (#[0-9a-f]+)"_s.arg(property));
    return QColor(named.match(qApp->styleSheet()).captured(1));
}

TEST(Theme, EveryTextIsLegibleOnItsGroundInBothPalettes) {
    for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) {
        applyTheme(*qApp, scheme);
        const QPalette p = QApplication::palette();
        using P = QPalette;
        const auto of = [&p](P::ColorRole role) { return p.color(P::Active, role); };
        const auto disabled = [&p](P::ColorRole role) { return p.color(P::Disabled, role); };
        const QColor grounds[] = {of(P::Window), of(P::Base), of(P::AlternateBase)};
        for (const QColor& ground : grounds)
            for (const QColor& text :
                 {of(P::WindowText), of(P::Text), of(P::PlaceholderText), disabled(P::WindowText),
                  disabled(P::Text), disabled(P::ButtonText), of(P::Link), dangerColor()})
                EXPECT_GE(contrast(text, ground), kLegible)
                    << text.name().toStdString() << ground.name().toStdString();
        const std::tuple<const char*, QColor, QColor> pairs[] = {
            {"button", of(P::ButtonText), of(P::Button)},
            {"dangerous button", dangerColor(), of(P::Button)},
            {"main button, message sign", onAccentColor(), accentColor()},
            {"warning sign", onAccentColor(), warningColor()},
            {"refusal sign", onAccentColor(), dangerColor()},
            {"marked text", of(P::HighlightedText), of(P::Highlight)},
            {"marked text, disabled", disabled(P::HighlightedText), disabled(P::Highlight)},
            {"chosen line", ofSheet(u"selection-color"_s), ofSheet(u"selection-background-color"_s)},
            {"changed cell", of(P::Text), changedColor()},
            {"tool tip", of(P::ToolTipText), of(P::ToolTipBase)}};
        for (const auto& [what, text, ground] : pairs) EXPECT_GE(contrast(text, ground), kLegible) << what;

        OptionRow row(0, {u"男"_s, u"女"_s, u"他"_s}, nullptr);
        row.setCode(u"2"_s);
        row.setLocked(true);
        QLineEdit notEntered(u"見本"_s);
        setNotEntered(&notEntered, true);
        QPushButton off(u"印刷"_s);
        off.setEnabled(false);
        for (QWidget* drawn : std::initializer_list<QWidget*>{&row, &notEntered, &off}) {
            drawn->resize(drawn->sizeHint());
            EXPECT_GE(drawnContrast(*drawn, drawn->rect().adjusted(4, 4, -4, -4)), kLegible)
                << drawn->metaObject()->className();
        }
    }
    applyTheme(*qApp, Scheme::Light);
}

}  // namespace
