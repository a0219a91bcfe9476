#pragma once
#include <QColor>
#include <QList>

class QApplication;
class QLabel;
class QPushButton;
class QWidget;

/// The one visual language of the program: Fusion style, a light and a dark palette with mint as the accent,
/// the Japanese interface font, an 8-pixel grid. Set once at start; screens only name roles.
namespace widgets {

enum class Scheme { System, Light, Dark };
/// Installs style, palette, style sheet, font and the Japanese texts of standard buttons. May be called again
/// to change the scheme; System follows the lightness of the platform's own windows.
void applyTheme(QApplication& app, Scheme scheme = Scheme::System);

inline constexpr int kGrid = 8;

/// Lengths of the screens are told in twips: 15 to a logical pixel.
constexpr int twips(int n) {
    return n / 15;
}

void setPrimary(QPushButton* button);  ///< the main action of the screen; one per screen
void setDanger(QPushButton* button);   ///< deletes something; stands apart
enum class Tone { Normal, Muted, Heading, Title, Warning };
void setTone(QLabel* label, Tone tone);  ///< Warning is the red of "この配分基準に対応する社員はいません。"
/// A field whose content was refused is framed in the red of warnings until it is mended.
void setFaulty(QWidget* control, bool faulty);
bool isFaulty(const QWidget* control);
/// Colours of the installed scheme: the fill of the main action and the focus ring; text on it; the red of
/// warnings.
QColor accentColor();
QColor onAccentColor();
QColor dangerColor();
QColor warningColor();  ///< the amber of a warning sign
QColor changedColor();  ///< the ground of a cell that was typed over and is not stored yet

/// What a chart is drawn in: the ground, its writing, its lines, and a colour for each series.
struct ChartColors {
    QColor ground, text, muted, line;
    QList<QColor> series;
};
ChartColors chartColors();       ///< of the installed scheme
ChartColors paperChartColors();  ///< on paper and in saved pictures: light whatever the scheme is

}  // namespace widgets
