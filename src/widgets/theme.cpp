#include "widgets/theme.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QIcon>
#include <QLabel>
#include <QLibraryInfo>
#include <QPalette>
#include <QPushButton>
#include <QStyle>
#include <QTranslator>
#include <algorithm>
#include <array>

#include "widgets/mint_style.h"

// In the global namespace, as the macro demands.
static void initIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace widgets {
namespace {

/// Text colours keep 4.5 : 1 or more against the surfaces they stand on, the series of a chart 3 : 1. So does
/// `disabled`: what is locked is still read. That it cannot be changed is said by its flat ground.
struct Colours {
    QRgb window, surface, stripe, text, muted, disabled, button, line, strongLine;
    QRgb accent, onAccent, tint, onTint, danger, link, amber, changed;
    std::array<QRgb, 4> series;
};

constexpr Colours kLight{0xfff5f3ef, 0xffffffff, 0xfffaf9f6,
                         0xff26241f, 0xff68645b, 0xff706b61,
                         0xfffdfcfa, 0xffd3cec4, 0xff8f897d,
                         0xff137a64, 0xffffffff, 0xffd3ece4,
                         0xff12372e, 0xffb3261e, 0xff0f6a8b,
                         0xff9a6400, 0xfffdf0cc, {0xff137a64, 0xffd17d00, 0xff3b6fb5, 0xff8e4a9c}};
constexpr Colours kDark{0xff232320, 0xff2c2c29, 0xff31312d,
                        0xffeceae4, 0xffaca89d, 0xffa19d93,
                        0xff373733, 0xff4b4a45, 0xff8d897f,
                        0xff3cc0a0, 0xff06231c, 0xff215347,
                        0xffe6f7f2, 0xffff8f86, 0xff7cc7e6,
                        0xffe5b04c, 0xff4d4220, {0xff3cc0a0, 0xffe5b04c, 0xff7cabea, 0xffcf96dd}};

Colours current = kLight;

QPalette paletteOf(const Colours& c) {
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, QRgb colour) { palette.setColor(role, QColor(colour)); };
    set(QPalette::Window, c.window);
    set(QPalette::WindowText, c.text);
    set(QPalette::Base, c.surface);
    set(QPalette::AlternateBase, c.stripe);
    set(QPalette::Text, c.text);
    set(QPalette::PlaceholderText, c.muted);
    set(QPalette::Button, c.button);
    set(QPalette::ButtonText, c.text);
    set(QPalette::BrightText, c.onAccent);
    set(QPalette::ToolTipBase, c.surface);
    set(QPalette::ToolTipText, c.text);
    set(QPalette::Light, c.surface);
    set(QPalette::Midlight, c.stripe);
    set(QPalette::Mid, c.line);
    set(QPalette::Dark, c.strongLine);
    set(QPalette::Shadow, 0xff000000);
    set(QPalette::Highlight, c.accent);
    set(QPalette::HighlightedText, c.onAccent);
    set(QPalette::Link, c.link);
    set(QPalette::LinkVisited, c.link);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(c.disabled));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(c.window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(c.line));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, QColor(c.text));
    return palette;
}

/// Only what a palette cannot say: the roles of labels, the header of tables, the quiet selection of lists.
QString sheetOf(const Colours& c, const QFont& font) {
    static const QString sheet = QStringLiteral(R"(
QLabel[mintTone="title"] { font-size: %1pt; font-weight: 600; color: @text; }
QLabel[mintTone="heading"] { font-weight: 600; color: @text; }
QLabel[mintTone="muted"] { color: @muted; }
QLabel[mintTone="warning"] { color: @danger; font-weight: 600; }
QAbstractItemView { selection-background-color: @tint; selection-color: @onTint; outline: 0; }
QAbstractItemView:disabled { color: @disabled; }
QHeaderView { background: @window; border: 0; }
QHeaderView::section { background: @window; color: @muted; font-weight: 600; padding: 5px 7px; border: 0;
    border-bottom: 1px solid @line; border-right: 1px solid @line; }
QGroupBox { font-weight: 600; margin-top: 0.7em; padding-top: 0.7em; border: 1px solid @line; border-radius: 6px; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 10px; padding: 0 4px;
    color: @text; }
widgets--Card { background: @surface; border: 1px solid @line; border-radius: 8px; }
QScrollBar { background: transparent; border: 0; margin: 0; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: @line; border-radius: 4px; margin: 2px; }
QScrollBar::handle:hover { background: @strong; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QStatusBar { background: @window; border-top: 1px solid @line; color: @muted; }
QStatusBar::item { border: 0; }
QToolTip { background: @surface; color: @text; border: 1px solid @line; padding: 3px 6px; }
)");
    QString text = sheet.arg(font.pointSizeF() * 1.4, 0, 'f', 1);
    const std::pair<const char*, QRgb> names[] = {
        {"@onTint", c.onTint},     {"@tint", c.tint},        {"@text", c.text}, {"@muted", c.muted},
        {"@disabled", c.disabled}, {"@danger", c.danger},    {"@line", c.line}, {"@surface", c.surface},
        {"@window", c.window},     {"@strong", c.strongLine}};
    for (const auto& [name, colour] : names) text.replace(QLatin1String(name), QColor(colour).name());
    return text;
}

/// A program that carries its fonts (fonts/ beside it) brings them where the machine has none of ours.
QStringList shippedFamilies() {
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/fonts"));
    for (const QString& file : folder.entryList(QDir::Files))
        QFontDatabase::addApplicationFont(folder.filePath(file));
    return QFontDatabase::families();
}

/// The first of our families that is installed, the others behind it for characters that it lacks.
QFont interfaceFont(const QFont& platform) {
    QStringList families{QStringLiteral("Yu Gothic UI"), QStringLiteral("Meiryo UI"),
                         QStringLiteral("Noto Sans CJK JP"), QStringLiteral("Noto Sans JP")};
    QStringList installed = QFontDatabase::families();
    if (std::none_of(families.begin(), families.end(),
                     [&](const QString& family) { return installed.contains(family); }))
        installed = shippedFamilies();
    std::stable_partition(families.begin(), families.end(),
                          [&](const QString& f) { return installed.contains(f); });
    QFont font(platform);
    font.setFamilies(families);
    font.setPointSizeF(std::max(10.0, platform.pointSizeF()));  // a larger font of the user's is respected
    return font;
}

/// Of every window, in the sizes that desktops ask for.
QIcon windowIcon() {
    initIcons();
    QIcon icon;
    for (const int side : {16, 32, 48, 256}) icon.addFile(QStringLiteral(":/icons/mint_%1.png").arg(side));
    return icon;
}

void installTranslator(QApplication& app) {
    static const QString name = QStringLiteral("qtbase_ja");
    if (app.findChild<QTranslator*>(name)) return;
    auto* translator = new QTranslator(&app);
    translator->setObjectName(name);
    const QString shipped = QCoreApplication::applicationDirPath() + QStringLiteral("/translations");
    if (translator->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        translator->load(name, shipped))
        app.installTranslator(translator);
}

void setProperty(QWidget* widget, const char* property, const QString& value) {
    if (widget->property(property).toString() == value) return;
    widget->setProperty(property, value);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}

ChartColors chartColorsOf(const Colours& c) {
    ChartColors colors{QColor(c.surface), QColor(c.text), QColor(c.muted), QColor(c.line), {}};
    for (const QRgb series : c.series) colors.series << QColor(series);
    return colors;
}

}  // namespace

void applyTheme(QApplication& app, Scheme scheme) {
    static const bool platformIsDark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    static const QFont platformFont = QApplication::font();
    current = scheme == Scheme::Dark || (scheme == Scheme::System && platformIsDark) ? kDark : kLight;
    const QFont font = interfaceFont(platformFont);
    app.setStyle(new MintStyle);
    QApplication::setPalette(paletteOf(current));
    QApplication::setFont(font);
    app.setStyleSheet(sheetOf(current, font));
    QApplication::setWindowIcon(windowIcon());
    installTranslator(app);
}

void setPrimary(QPushButton* button) {
    setProperty(button, kRoleProperty, QStringLiteral("primary"));
}

void setDanger(QPushButton* button) {
    setProperty(button, kRoleProperty, QStringLiteral("danger"));
}

void setTone(QLabel* label, Tone tone) {
    static const char* const names[] = {"", "muted", "heading", "title", "warning"};
    setProperty(label, kToneProperty, QString::fromLatin1(names[static_cast<int>(tone)]));
}

QColor accentColor() {
    return QColor(current.accent);
}
QColor onAccentColor() {
    return QColor(current.onAccent);
}
QColor dangerColor() {
    return QColor(current.danger);
}

QColor warningColor() {
    return QColor(current.amber);
}
QColor changedColor() {
    return QColor(current.changed);
}

ChartColors chartColors() {
    return chartColorsOf(current);
}
ChartColors paperChartColors() {
    return chartColorsOf(kLight);
}

void setFaulty(QWidget* control, bool faulty) {
    control->setProperty(kFaultyProperty, faulty);
    control->update();
}

bool isFaulty(const QWidget* control) {
    return control->property(kFaultyProperty).toBool();
}

}  // namespace widgets
